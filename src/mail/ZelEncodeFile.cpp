#include <Zel260/mail/ZelEncodeFile.h>
#include <Zel260/mail/ZelEncode.h>

#include "mail/MailServices.h"

#include <new>
#include <string>

CString ZelEncodeBase64(CString& fileName)
{
    try {
        zelmail::FileContent content;
        if (!content.Load(fileName))
            return CString();
        return ZelEncodeBase64(content.data(), static_cast<unsigned long>(content.size()), 76);
    } catch (const std::bad_alloc&) {
        return CString();
    }
}
