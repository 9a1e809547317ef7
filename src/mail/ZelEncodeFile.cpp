#include <Zel260/mail/ZelEncodeFile.h>

#include "mail/Base64FileReader.h"

#include <new>
#include <string>

CString ZelEncodeBase64(CString& fileName)
{
    try {
        zelmail::Base64FileReader reader;
        if (!reader.Open(fileName))
            return CString();
        std::string text;
        // Room for the line end a sender adds to a body, so that it doesn't copy
        // the whole text to make it.
        text.reserve(reader.EncodedLength() + 2);
        if (!reader.AppendTo(text))
            return CString();
        return CString(std::move(text));
    } catch (const std::bad_alloc&) {
        return CString();
    }
}
