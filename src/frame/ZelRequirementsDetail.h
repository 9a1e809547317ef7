// The version checks over replaceable readers, so the rules can be exercised with
// any versions, and the per-file cache behind the five cached readers.
#pragma once

#include <Zel260/frame/ZelRequirements.h>

#include <mutex>

namespace zel_detail {

using FixedFileInfoReader = BOOL (*)(tagVS_FIXEDFILEINFO&, DWORD*, CString*);

struct RequirementReaders {
    FixedFileInfoReader comCtl32;
    FixedFileInfoReader shell32;
    FixedFileInfoReader shFolder;
    FixedFileInfoReader shlwapi;
    FixedFileInfoReader mfc;
};

const RequirementReaders& systemReaders();

BOOL checkComCtl32(const RequirementReaders& r, CString& text);
BOOL checkShell32(const RequirementReaders& r, CString& text);
BOOL checkShFolder(const RequirementReaders& r, CString& text);
BOOL checkShlwapi(const RequirementReaders& r, CString& text);
BOOL checkMfc(const RequirementReaders& r, CString& text);
BOOL checkAll(const RequirementReaders& r, eZelRequirements& result, CString& text);

struct VersionCache {
    std::mutex m;
    bool tried = false;
    BOOL ok = FALSE;
    DWORD error = 0;
    tagVS_FIXEDFILEINFO info{};
};
BOOL readCached(VersionCache& cache, const char* file, tagVS_FIXEDFILEINFO& info, DWORD* error, CString* errorText);

} // namespace zel_detail
