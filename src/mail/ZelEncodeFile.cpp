#include <Zel260/mail/ZelEncodeFile.h>

#include "mail/MailServices.h"

#include <new>
#include <string>

CString ZelEncodeBase64(CString& fileName)
{
    try {
        std::string content;
        if (!zelmail::ReadWholeFile(fileName, content))
            return CString();
        return zelmail::EncodeBase64(reinterpret_cast<const unsigned char*>(content.data()), content.size(), 76);
    } catch (const std::bad_alloc&) {
        return CString();
    }
}
