#include <Zel260/shell/CZelFindData.h>
#include <Zel260/shell/CZelFileList.h>

#include <cstring>

namespace {

bool before(const FILETIME& a, const FILETIME& b)
{
    if (a.dwHighDateTime != b.dwHighDateTime)
        return a.dwHighDateTime < b.dwHighDateTime;
    return a.dwLowDateTime < b.dwLowDateTime;
}

} // namespace

CZelFindData::CZelFindData() : CZelFindData(nullptr) {}

CZelFindData::CZelFindData(CZelFileList* owner) : WIN32_FIND_DATA(), m_owner(owner)
{
    std::memset(static_cast<WIN32_FIND_DATA*>(this), 0, sizeof(WIN32_FIND_DATA));
}

CZelFindData::CZelFindData(const CZelFindData& other)
    : WIN32_FIND_DATA(other), m_fullFilename(other.m_fullFilename), m_owner(other.m_owner)
{
}

CZelFindData& CZelFindData::operator=(const CZelFindData& other)
{
    if (this != &other) {
        static_cast<WIN32_FIND_DATA&>(*this) = other;
        m_fullFilename = other.m_fullFilename;
        m_owner = other.m_owner;
    }
    return *this;
}

CZelFindData::~CZelFindData() = default;

bool CZelFindData::operator<(const CZelFindData& other) const
{
    int mode = m_owner ? static_cast<int>(m_owner->SortMode()) : 0;
    switch (mode) {
    case CZelFileList::eSortFullFilename:
        return std::strcmp(m_fullFilename, other.m_fullFilename) < 0;
    case CZelFileList::eSortAlternateFilename:
        return std::strncmp(other.cAlternateFileName, cAlternateFileName, sizeof cAlternateFileName) < 0;
    case CZelFileList::eSortCreationTime:
        return before(ftCreationTime, other.ftCreationTime);
    case CZelFileList::eSortLastWriteTime:
        return before(ftLastWriteTime, other.ftLastWriteTime);
    case CZelFileList::eSortLastAccessTime:
        return before(ftLastAccessTime, other.ftLastAccessTime);
    case CZelFileList::eSortSize:
        if (nFileSizeHigh != other.nFileSizeHigh)
            return nFileSizeHigh < other.nFileSizeHigh;
        return nFileSizeLow < other.nFileSizeLow;
    default:
        return std::strncmp(other.cFileName, cFileName, sizeof cFileName) < 0;
    }
}

CZelFindData::operator WIN32_FIND_DATA*() { return this; }

CZelFindData::operator const WIN32_FIND_DATA*() const { return this; }
