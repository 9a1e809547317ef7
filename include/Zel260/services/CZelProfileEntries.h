// The library's settings: reading and writing integers, texts and lists of integers
// in an initialisation file, and the names of every key the library uses.
//
// Three families differ in the file they reach: the library's own profile
// (ZelGetProfilePath(), see <Zel260/services/ZelProfilePath.h>), any file given by
// its path, and the host application's own settings (CWinApp). Each read or write is
// one pass over the file, so callers read at the start of a view or dialog and write
// when it ends.
//
// Integers are written by "%d" and read by the platform's rule (GetPrivateProfileInt):
// a stored -1 reads back as 0xFFFFFFFF, so compare an unsigned result with (UINT)-1.
// Texts are read through a buffer of 4096 bytes: a longer value comes back cut to
// 4095 bytes (the writer doesn't guard against it). A list of integers is stored as
// each number followed by ";" ("1;2;3;"; an empty list is ""). Missing files,
// sections and keys give the default; nothing is reported. Writes return non-zero on
// success, zero with the last error set on failure (for example ERROR_PATH_NOT_FOUND
// when the file's folder doesn't exist). The library's own profile is the exception:
// when its folder is the user's configuration folder and that folder doesn't exist
// yet, a write creates it.
//
// Reading a list: each item up to its ";" is converted by atoi (text that is no
// number gives 0, numbers beyond the int range give INT_MIN or INT_MAX); text behind
// the last ";" is dropped, so "1;2" reads as {1}. An empty item (";1;" or "1;;2;"),
// which no writer produces but a hand edit can, is skipped: ";1;" reads as {1}.
#pragma once

#include <Zel260/platform/CString.h>

#include <vector>

class CWinApp;

class CZelProfileEntries {
public:
    CZelProfileEntries() = default;
    CZelProfileEntries(const CZelProfileEntries&) = delete;
    CZelProfileEntries& operator=(const CZelProfileEntries&) = delete;

    // The library's own profile, at ZelGetProfilePath().
    static unsigned int ReadZelProfileInt(const char* section, const char* entry, int defaultValue);
    static int WriteZelProfileInt(const char* section, const char* entry, int value);
    // A null defaultValue counts as "".
    static CString ReadZelProfileString(const char* section, const char* entry, const char* defaultValue);
    // A null value deletes the entry, a null entry the section.
    static int WriteZelProfileString(const char* section, const char* entry, const char* value);
    // Replaces `values` with the list (empty when missing).
    static void ReadZelProfileIntVector(const char* section, const char* entry, std::vector<int>& values);
    static int WriteZelProfileIntVector(const char* section, const char* entry, const std::vector<int>& values);

    // Any file, by its path (a bare file name is taken from the configuration folder).
    static unsigned int ReadProfileInt(const char* path, const char* section, const char* entry, int defaultValue);
    static int WriteProfileInt(const char* path, const char* section, const char* entry, int value);
    static CString ReadProfileString(const char* path, const char* section, const char* entry,
                                     const char* defaultValue);
    static int WriteProfileStringA(const char* path, const char* section, const char* entry, const char* value);
    static void ReadProfileIntVector(const char* path, const char* section, const char* entry,
                                     std::vector<int>& values);
    static int WriteProfileIntVector(const char* path, const char* section, const char* entry,
                                     const std::vector<int>& values);

    // The host application's settings, through CWinApp::GetProfileString and
    // CWinApp::WriteProfileString.
    static void ReadProfileIntVector(CWinApp& app, const char* section, const char* entry, std::vector<int>& values);
    static int WriteProfileIntVector(CWinApp& app, const char* section, const char* entry,
                                     const std::vector<int>& values);

    // The list text of `values` ("1;2;3;") and the list of a text, by the rules above.
    static CString IntVectorToString(const std::vector<int>& values);
    static void IntVectorFromString(const char* text, std::vector<int>& values);

    // Names of the library's sections and keys. Views name their own sections.
    // Time format and leap seconds.
    static const char* TimeSection(); // "CZelTime"
    static const char* TimeEntryFormatNumber(); // "Time Format (###)"
    static const char* TimeEntryFormatString(); // "Time Format (str)"
    static const char* LeapSecondsSection(); // "LeapSeconds"
    static const char* LeapSecondsEntry(); // "KnownLeapSeconds"
    // Recent documents: prefix of the keys "Doc_1", "Doc_2"....
    static const char* LastDocumentsEntry(); // "Doc_"
    // Find dialog of the list views.
    static const char* ListViewFindDialogSearchFromBeginning(); // "SearchFromBeginning"
    static const char* ListViewFindDialogMatchWord(); // "MatchWord"
    static const char* ListViewFindDialogMatchCase(); // "MatchCase"
    static const char* ListViewFindDialogSearchAll(); // "SearchAll"
    static const char* ListViewFindDialogSearchString(); // "SearchString"
    // Save As dialog of the list views.
    static const char* ListViewSaveAsDlgIncludeHeader(); // "IncludeHeader"
    static const char* ListViewSaveAsDlgSaveWhat(); // "SaveWhat"
    // Report view.
    static const char* ReportViewColWidth(); // "ColWidth"
    static const char* ReportViewColOrder(); // "ColOrder"
    static const char* ReportViewSortState(); // "SortState"
    // Splitter view.
    static const char* SplitterViewColSize(); // "ColSize"
    static const char* SplitterViewRowSize(); // "RowSize"
    static const char* SplitterViewWidthOriginalCur(); // "WidthOriginalCur"
    static const char* SplitterViewWidthOriginalMin(); // "WidthOriginalMin"
    static const char* SplitterViewCollapsed(); // "Collapsed"
    // Managed message boxes: the section of each message is the prefix and the message's name.
    static const char* MessageBoxDialogSettings(); // "@ZelMessageBox/"
    static const char* MessageBoxDoNotPromptInFuture(); // "DoNotPromptInFuture"
    static const char* MessageBoxDefaultValue(); // "defaultvalue"
    // Unit settings.
    static const char* UnitSettingsDistanceSection(); // "CZelUnitSettingsDistance"
    static const char* UnitSettingsDistanceEntryFormatNumber(); // "UnitDistance Format (###)"
    static const char* UnitSettingsDistanceEntryFormatString(); // "UnitDistance Format (str)"
    static const char* UnitSettingsAngleSection(); // "CZelUnitSettingsAngle"
    static const char* UnitSettingsAngleLatLonSection(); // "CZelUnitSettingsAngleLatLon"
    static const char* UnitSettingsAngleEntryFormatNumber(); // "UnitAngle Format (###)"
    static const char* UnitSettingsAngleEntryFormatString(); // "UnitAngle Format (str)"
    // File selection dialog.
    static const char* SelectFilenameEntryWindowWidth(); // "Window Width"
    static const char* SelectFilenameEntryWindowHeight(); // "Window Height"
    static const char* SelectFilenameEntryLastFolder(); // "Last Folder"
    static const char* SelectFilenameEntryFileType(); // "FileType"
    // Folder content view.
    static const char* FolderContentViewColWidth(); // "FCV_ColWidth"
    static const char* FolderContentViewSortState(); // "FCV_SortState"
    static const char* FolderContentViewViewStyle(); // "FCV_ViewStyle"
};
