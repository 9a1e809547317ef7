// Base64 of a whole file, for mail attachments.
#pragma once

#include <Zel260/platform/CString.h>

// The content of `fileName` in Base64, in lines of 76 characters (same line and
// padding rule as the buffer form of ZelEncodeBase64). The whole file is read into
// memory. Empty when the file can't be opened or read.
CString ZelEncodeBase64(CString& fileName);
