// One MIME part of a CZelMailMessageMimeContainer.
#pragma once

#include <Zel260/platform/CString.h>

class CZelMailMessageMimePart {
public:
    virtual ~CZelMailMessageMimePart() = default;
    // The part's content as it goes on the wire.
    virtual CString Body() = 0;
    // The part's header lines, each closed by "\r\n".
    virtual CString Header() = 0;
    virtual const CString& ContentType() = 0;
};
