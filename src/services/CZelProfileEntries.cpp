#include <Zel260/services/CZelProfileEntries.h>
#include <Zel260/services/ZelProfilePath.h>
#include <Zel260/platform/CWinApp.h>
#include <Zel260/platform/PrivateProfile.h>
#include <Zel260/platform/Win32Error.h>
#include <Zel260/shell/ZelPath.h>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <string>

#include <sys/stat.h>

namespace {

constexpr DWORD kReadBuffer = 4096;

CString readString(const char* path, const char* section, const char* entry, const char* defaultValue)
{
    char buf[kReadBuffer];
    // Up to the first zero byte, as a C string: the list forms give their first name.
    GetPrivateProfileString(section, entry, defaultValue ? defaultValue : "", buf, kReadBuffer, path);
    return CString(buf);
}

// atoi as the library has always had it: leading white space, a sign, digits up to
// the first other character; beyond the int range it gives the nearest bound.
int atoiClamped(const std::string& item)
{
    long long v = std::strtoll(item.c_str(), nullptr, 10);
    return v > INT_MAX ? INT_MAX : v < INT_MIN ? INT_MIN : static_cast<int>(v);
}

// Creates the user's configuration folder (and its parents) when the library's own
// profile is about to go there for the first time.
bool makeConfigFolderFor(const std::string& path)
{
    char folder[4096];
    UINT n = GetWindowsDirectory(folder, sizeof folder);
    if (n == 0 || n >= sizeof folder)
        return false;
    CString drive, directory, base, extension;
    ZelSplitPath(path.c_str(), drive, directory, base, extension);
    CString profileFolder = drive + directory;
    ZelRemoveTrailingBackslash(profileFolder);
    if (profileFolder != folder)
        return false;
    std::string partial;
    for (const char* p = folder; *p; ++p) {
        partial += *p;
        if ((p[1] == '/' || p[1] == 0) && !partial.empty() && partial != "/") {
            if (::mkdir(partial.c_str(), 0700) != 0 && errno != EEXIST)
                return false;
        }
    }
    return true;
}

int writeZel(const char* section, const char* entry, const char* value)
{
    const char* path = ZelGetProfilePath();
    if (WritePrivateProfileString(section, entry, value, path))
        return TRUE;
    if (GetLastError() != ERROR_PATH_NOT_FOUND || !makeConfigFolderFor(path))
        return FALSE;
    return WritePrivateProfileString(section, entry, value, path);
}

} // namespace

CString CZelProfileEntries::IntVectorToString(const std::vector<int>& values)
{
    std::string text;
    text.reserve(values.size() * 4);
    for (int v : values) {
        text += std::to_string(v);
        text += ';';
    }
    return CString(std::move(text));
}

void CZelProfileEntries::IntVectorFromString(const char* text, std::vector<int>& values)
{
    values.clear();
    if (!text)
        return;
    const char* p = text;
    while (*p) {
        const char* semi = std::strchr(p, ';');
        if (!semi)
            break; // an item without its ";" is dropped
        if (semi != p)
            values.push_back(atoiClamped(std::string(p, semi)));
        // An empty item would stop the loop for good; it is stepped over instead.
        p = semi + 1;
    }
}

// ---- the library's own profile ----------------------------------------------

unsigned int CZelProfileEntries::ReadZelProfileInt(const char* section, const char* entry, int defaultValue)
{
    return GetPrivateProfileInt(section, entry, defaultValue, ZelGetProfilePath());
}

int CZelProfileEntries::WriteZelProfileInt(const char* section, const char* entry, int value)
{
    return writeZel(section, entry, std::to_string(value).c_str());
}

CString CZelProfileEntries::ReadZelProfileString(const char* section, const char* entry, const char* defaultValue)
{
    return readString(ZelGetProfilePath(), section, entry, defaultValue);
}

int CZelProfileEntries::WriteZelProfileString(const char* section, const char* entry, const char* value)
{
    return writeZel(section, entry, value);
}

void CZelProfileEntries::ReadZelProfileIntVector(const char* section, const char* entry, std::vector<int>& values)
{
    IntVectorFromString(ReadZelProfileString(section, entry, ""), values);
}

int CZelProfileEntries::WriteZelProfileIntVector(const char* section, const char* entry,
                                                 const std::vector<int>& values)
{
    return writeZel(section, entry, IntVectorToString(values));
}

// ---- any file ---------------------------------------------------------------

unsigned int CZelProfileEntries::ReadProfileInt(const char* path, const char* section, const char* entry,
                                                int defaultValue)
{
    return GetPrivateProfileInt(section, entry, defaultValue, path);
}

int CZelProfileEntries::WriteProfileInt(const char* path, const char* section, const char* entry, int value)
{
    return WritePrivateProfileString(section, entry, std::to_string(value).c_str(), path);
}

CString CZelProfileEntries::ReadProfileString(const char* path, const char* section, const char* entry,
                                              const char* defaultValue)
{
    return readString(path, section, entry, defaultValue);
}

int CZelProfileEntries::WriteProfileStringA(const char* path, const char* section, const char* entry,
                                            const char* value)
{
    return WritePrivateProfileString(section, entry, value, path);
}

void CZelProfileEntries::ReadProfileIntVector(const char* path, const char* section, const char* entry,
                                              std::vector<int>& values)
{
    IntVectorFromString(readString(path, section, entry, ""), values);
}

int CZelProfileEntries::WriteProfileIntVector(const char* path, const char* section, const char* entry,
                                              const std::vector<int>& values)
{
    return WritePrivateProfileString(section, entry, IntVectorToString(values), path);
}

// ---- the host application's settings ------------------------------------------

void CZelProfileEntries::ReadProfileIntVector(CWinApp& app, const char* section, const char* entry,
                                              std::vector<int>& values)
{
    IntVectorFromString(app.GetProfileString(section, entry, ""), values);
}

int CZelProfileEntries::WriteProfileIntVector(CWinApp& app, const char* section, const char* entry,
                                              const std::vector<int>& values)
{
    return app.WriteProfileString(section, entry, IntVectorToString(values));
}

// ---- key names ----------------------------------------------------------------

const char* CZelProfileEntries::TimeSection() { return "CZelTime"; }
const char* CZelProfileEntries::TimeEntryFormatNumber() { return "Time Format (###)"; }
const char* CZelProfileEntries::TimeEntryFormatString() { return "Time Format (str)"; }
const char* CZelProfileEntries::LeapSecondsSection() { return "LeapSeconds"; }
const char* CZelProfileEntries::LeapSecondsEntry() { return "KnownLeapSeconds"; }
const char* CZelProfileEntries::LastDocumentsEntry() { return "Doc_"; }
const char* CZelProfileEntries::ListViewFindDialogSearchFromBeginning() { return "SearchFromBeginning"; }
const char* CZelProfileEntries::ListViewFindDialogMatchWord() { return "MatchWord"; }
const char* CZelProfileEntries::ListViewFindDialogMatchCase() { return "MatchCase"; }
const char* CZelProfileEntries::ListViewFindDialogSearchAll() { return "SearchAll"; }
const char* CZelProfileEntries::ListViewFindDialogSearchString() { return "SearchString"; }
const char* CZelProfileEntries::ListViewSaveAsDlgIncludeHeader() { return "IncludeHeader"; }
const char* CZelProfileEntries::ListViewSaveAsDlgSaveWhat() { return "SaveWhat"; }
const char* CZelProfileEntries::ReportViewColWidth() { return "ColWidth"; }
const char* CZelProfileEntries::ReportViewColOrder() { return "ColOrder"; }
const char* CZelProfileEntries::ReportViewSortState() { return "SortState"; }
const char* CZelProfileEntries::SplitterViewColSize() { return "ColSize"; }
const char* CZelProfileEntries::SplitterViewRowSize() { return "RowSize"; }
const char* CZelProfileEntries::SplitterViewWidthOriginalCur() { return "WidthOriginalCur"; }
const char* CZelProfileEntries::SplitterViewWidthOriginalMin() { return "WidthOriginalMin"; }
const char* CZelProfileEntries::SplitterViewCollapsed() { return "Collapsed"; }
const char* CZelProfileEntries::MessageBoxDialogSettings() { return "@ZelMessageBox/"; }
const char* CZelProfileEntries::MessageBoxDoNotPromptInFuture() { return "DoNotPromptInFuture"; }
const char* CZelProfileEntries::MessageBoxDefaultValue() { return "defaultvalue"; }
const char* CZelProfileEntries::UnitSettingsDistanceSection() { return "CZelUnitSettingsDistance"; }
const char* CZelProfileEntries::UnitSettingsDistanceEntryFormatNumber() { return "UnitDistance Format (###)"; }
const char* CZelProfileEntries::UnitSettingsDistanceEntryFormatString() { return "UnitDistance Format (str)"; }
const char* CZelProfileEntries::UnitSettingsAngleSection() { return "CZelUnitSettingsAngle"; }
const char* CZelProfileEntries::UnitSettingsAngleLatLonSection() { return "CZelUnitSettingsAngleLatLon"; }
const char* CZelProfileEntries::UnitSettingsAngleEntryFormatNumber() { return "UnitAngle Format (###)"; }
const char* CZelProfileEntries::UnitSettingsAngleEntryFormatString() { return "UnitAngle Format (str)"; }
const char* CZelProfileEntries::SelectFilenameEntryWindowWidth() { return "Window Width"; }
const char* CZelProfileEntries::SelectFilenameEntryWindowHeight() { return "Window Height"; }
const char* CZelProfileEntries::SelectFilenameEntryLastFolder() { return "Last Folder"; }
const char* CZelProfileEntries::SelectFilenameEntryFileType() { return "FileType"; }
const char* CZelProfileEntries::FolderContentViewColWidth() { return "FCV_ColWidth"; }
const char* CZelProfileEntries::FolderContentViewSortState() { return "FCV_SortState"; }
const char* CZelProfileEntries::FolderContentViewViewStyle() { return "FCV_ViewStyle"; }
