#include <Zel260/mail/ZelEncodeFile.h>

#include "mail/MailServices.h"

#include <new>
#include <string>

CString ZelEncodeBase64(CString& fileName)
{
    try {
        zelmail::FileContent content;
        if (!content.Load(fileName))
            return CString();
        return zelmail::EncodeBase64(content.data(), content.size(), 76);
    } catch (const std::bad_alloc&) {
        return CString();
    }
}
