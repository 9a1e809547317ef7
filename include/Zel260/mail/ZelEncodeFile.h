// Base64 of a whole file, for mail attachments.
#pragma once

#include <Zel260/platform/CString.h>

// The content of `fileName` in Base64, in lines of 76 characters (same line and
// padding rule as the buffer form of ZelEncodeBase64), read when called. The whole
// encoding is built in memory. Empty when the file can't be opened or read, or when
// memory runs out.
CString ZelEncodeBase64(CString& fileName);
