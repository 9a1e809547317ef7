// One directory entry found by a file search: the platform's find record plus the
// full name as the search composed it, and the list that owns the record.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

class CZelFileList;

class CZelFindData : public WIN32_FIND_DATA {
public:
    // All fields zero, empty full name, no owner.
    CZelFindData();
    // The same with an owner, whose sort mode orders the record.
    explicit CZelFindData(CZelFileList* owner);
    // Copy the platform record whole, the full name and the owner.
    CZelFindData(const CZelFindData& other);
    CZelFindData& operator=(const CZelFindData& other);
    virtual ~CZelFindData();

    // Ordering by the owner's sort mode, read at the moment of the comparison:
    //   no owner, 0, 1, unknown: file name, descending (strcmp(other, this) < 0);
    //   2 full name ascending; 3 alternate name descending; 4 creation time,
    //   5 last write time, 6 last access time, 7 size: ascending, high word first,
    //   both words unsigned.
    // Names compare byte-wise and case-sensitive. The descending name orders are on
    // purpose: callers rely on them.
    virtual bool operator<(const CZelFindData& other) const;

    // The platform record (this object itself).
    operator WIN32_FIND_DATA*();
    operator const WIN32_FIND_DATA*() const;

    const CString& GetFullFilename() const { return m_fullFilename; }
    void SetFullFilename(const char* name) { m_fullFilename = name; }
    CZelFileList* GetOwner() const { return m_owner; }

private:
    CString m_fullFilename;
    CZelFileList* m_owner;
};
