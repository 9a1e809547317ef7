#include "ZelRequirementsDetail.h"

#include <Zel260/platform/Win32Error.h>

#include <cstring>

namespace zel_detail {
namespace {

constexpr char kComCtl32File[] = "libQt6Widgets.so.6";
constexpr char kShell32File[] = "libQt6Gui.so.6";
constexpr char kShFolderFile[] = "libQt6Core.so.6";
constexpr char kShlwapiFile[] = "libQt6Core.so.6";
constexpr char kMfcFile[] = "libQt6Widgets.so.6";

constexpr int kQtMajor = 6;
constexpr int kQtMinor = 4;
constexpr int kFrameworkMajor = 6;

constexpr char kShell32Format[] = "Shell32.Dll V%d.%d found.\n\nRequired is version V%d.%d or higher.";

int majorOf(const tagVS_FIXEDFILEINFO& i) { return HIWORD(i.dwProductVersionMS); }
int minorOf(const tagVS_FIXEDFILEINFO& i) { return LOWORD(i.dwProductVersionMS); }

enum class Outcome { Unreadable, TooOld, Passed };

// The rule shared by every check but the ShFolder fallback.
Outcome compareVersion(FixedFileInfoReader read, const char* unreadable, const char* format, int major, int minor,
                       CString& text)
{
    tagVS_FIXEDFILEINFO info;
    CString errorText;
    if (!read(info, nullptr, &errorText)) {
        text = CString(unreadable) + errorText;
        return Outcome::Unreadable;
    }
    text.Empty();
    int found = majorOf(info);
    if (found > major || (found == major && minorOf(info) >= minor))
        return Outcome::Passed;
    text.Format(format, found, minorOf(info), major, minor);
    return Outcome::TooOld;
}

BOOL checkVersion(FixedFileInfoReader read, const char* unreadable, const char* format, int major, int minor,
                  CString& text)
{
    return compareVersion(read, unreadable, format, major, minor, text) == Outcome::Passed;
}

} // namespace

BOOL checkComCtl32(const RequirementReaders& r, CString& text)
{
    return checkVersion(r.comCtl32, "ComCtl32.dll: ",
                        "ComCtl32.Dll V%d.%d found.\n\nRequired is version V%d.%d or higher.", kQtMajor, kQtMinor,
                        text);
}

BOOL checkShell32(const RequirementReaders& r, CString& text)
{
    switch (compareVersion(r.shell32, "Shell32.dll: ", kShell32Format, kQtMajor, kQtMinor, text)) {
    case Outcome::Passed: return TRUE;
    case Outcome::Unreadable: return FALSE;
    case Outcome::TooOld: break;
    }
    // An older Shell32 still passes with ShFolder beside it.
    return checkShFolder(r, text);
}

BOOL checkShFolder(const RequirementReaders& r, CString& text)
{
    tagVS_FIXEDFILEINFO shell32;
    tagVS_FIXEDFILEINFO shFolder;
    CString errorText;
    if (!r.shell32(shell32, nullptr, &errorText)) {
        text = CString("Shell32.dll: ") + errorText;
        return FALSE;
    }
    if (!r.shFolder(shFolder, nullptr, &errorText)) {
        text = CString("ShFolder.dll: ") + errorText;
        return FALSE;
    }
    text.Empty();
    if (majorOf(shell32) >= kQtMajor)
        return TRUE;
    text.Format(kShell32Format, majorOf(shell32), minorOf(shell32), kQtMajor, 0);
    return FALSE;
}

BOOL checkShlwapi(const RequirementReaders& r, CString& text)
{
    return checkVersion(r.shlwapi, "Shlwapi.dll: ",
                        "Shlwapi.Dll V%d.%d found.\n\nRequired is version V%d.%d or higher.", kQtMajor, kQtMinor,
                        text);
}

BOOL checkMfc(const RequirementReaders& r, CString& text)
{
    return checkVersion(r.mfc, "Mfc80.dll: ", "Mfc80.Dll V%d.%d found.\n\nRequired is version V%d.%d or higher.",
                        kFrameworkMajor, 0, text);
}

BOOL checkAll(const RequirementReaders& r, eZelRequirements& result, CString& text)
{
    struct Step {
        BOOL (*check)(const RequirementReaders&, CString&);
        eZelRequirements failure;
    };
    const Step steps[] = {{checkComCtl32, eZelRequirementComCtl32},
                          {checkShell32, eZelRequirementShell32},
                          {checkShlwapi, eZelRequirementShlwapi},
                          {checkMfc, eZelRequirementMfc}};
    for (const Step& s : steps) {
        if (!s.check(r, text)) {
            result = s.failure;
            return FALSE;
        }
    }
    result = eZelRequirementsMet;
    text.Empty();
    return TRUE;
}

BOOL readCached(VersionCache& cache, const char* file, tagVS_FIXEDFILEINFO& info, DWORD* error, CString* errorText)
{
    std::lock_guard lock(cache.m);
    if (!cache.tried) {
        cache.tried = true;
        cache.ok = ZelLoadFixedFileInfo(cache.info, file, &cache.error, errorText);
    } else if (errorText) {
        errorText->Empty();
    }
    if (cache.ok)
        info = cache.info;
    else
        std::memset(&info, 0, sizeof info);
    if (error)
        *error = cache.error;
    return cache.ok;
}

const RequirementReaders& systemReaders()
{
    static const RequirementReaders readers{ZelLoadComCtl32FixedFileInfo, ZelLoadShell32FixedFileInfo,
                                            ZelLoadShFolderFixedFileInfo, ZelLoadShlwapiFixedFileInfo,
                                            ZelLoadMfcFixedFileInfo};
    return readers;
}

} // namespace zel_detail

using namespace zel_detail;

BOOL ZelLoadFixedFileInfo(tagVS_FIXEDFILEINFO& info, const char* file, DWORD* error, CString* errorText)
{
    std::memset(&info, 0, sizeof info);
    if (error)
        *error = 0;
    if (errorText)
        errorText->Empty();
    tagVS_FIXEDFILEINFO read;
    if (!ZelGetFileVersion(file, read)) {
        DWORD e = GetLastError();
        if (error)
            *error = e;
        if (errorText)
            *errorText = ZelSystemErrorText(e).Left(260);
        return FALSE;
    }
    info = read;
    return TRUE;
}

#define ZEL_CACHED_READER(name, file)                                                                             \
    BOOL ZelLoad##name##FixedFileInfo(tagVS_FIXEDFILEINFO& info, DWORD* error, CString* errorText)                 \
    {                                                                                                              \
        static VersionCache cache;                                                                                 \
        return readCached(cache, file, info, error, errorText);                                                    \
    }
ZEL_CACHED_READER(ComCtl32, kComCtl32File)
ZEL_CACHED_READER(Shell32, kShell32File)
ZEL_CACHED_READER(ShFolder, kShFolderFile)
ZEL_CACHED_READER(Shlwapi, kShlwapiFile)
ZEL_CACHED_READER(Mfc, kMfcFile)
#undef ZEL_CACHED_READER

BOOL ZelCheckAllRequirements(eZelRequirements& result, CString& text) { return checkAll(systemReaders(), result, text); }
BOOL ZelCheckComCtl32Version(CString& text) { return checkComCtl32(systemReaders(), text); }
BOOL ZelCheckShell32Version(CString& text) { return checkShell32(systemReaders(), text); }
BOOL ZelCheckShFolderVersion(CString& text) { return checkShFolder(systemReaders(), text); }
BOOL ZelCheckShlwapiVersion(CString& text) { return checkShlwapi(systemReaders(), text); }
BOOL ZelCheckMfcVersion(CString& text) { return checkMfc(systemReaders(), text); }
