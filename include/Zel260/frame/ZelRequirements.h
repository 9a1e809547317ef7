// The check of the platform's versions that a host runs at start.
//
// The interface, the order, the results and the texts are those of the Windows
// library, which checked five system DLLs. On Linux each of them is stood in for by
// the shared library that does its job for Zel260, and the version is read from that
// library's real file name (see <Zel260/platform/FileVersionInfo.h>):
//
//   Windows file   Linux file             what it stands for           required
//   ComCtl32.Dll   libQt6Widgets.so.6     the controls                 6.4
//   Shell32.Dll    libQt6Gui.so.6         desktop, icons, shell        6.4
//   ShFolder.Dll   libQt6Core.so.6        standard folders             (readable)
//   Shlwapi.Dll    libQt6Core.so.6        path and string helpers      6.4
//   Mfc80.Dll      libQt6Widgets.so.6     the application framework    6.0
//
// Qt 6.4 is the release the library is built and tested against; the framework
// check asks for major version 6, as the Windows check asked for MFC's major 8.
// The texts keep the Windows names, since hosts show and match them.
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/FileVersionInfo.h>
#include <Zel260/platform/Win32Types.h>

// The first requirement that failed.
enum eZelRequirements {
    eZelRequirementsMet = 0,
    eZelRequirementComCtl32 = 1,
    eZelRequirementShell32 = 2,
    eZelRequirementShlwapi = 4,
    eZelRequirementMfc = 8,
};

// Runs the checks in the order ComCtl32, Shell32 (with its ShFolder fallback),
// Shlwapi, Mfc and stops at the first failure: `result` names it, `text` says why,
// and the result is FALSE. When all pass, `result` is 0, `text` empty, TRUE.
BOOL ZelCheckAllRequirements(eZelRequirements& result, CString& text);

// One check each; nonzero when it passes. `text` is emptied once a version is there
// to compare, and on failure holds "<Name>.Dll V<found> found.\n\nRequired is
// version V<required> or higher." or, when the file can't be read,
// "<Name>.dll: " and the system's error text.
BOOL ZelCheckComCtl32Version(CString& text);
// Passes on a new enough Shell32; otherwise gives the result of the ShFolder check.
BOOL ZelCheckShell32Version(CString& text);
// Passes when Shell32 and ShFolder are both readable and Shell32's major version is
// at least the required major; fails with the Shell32 text and the major, 0.
BOOL ZelCheckShFolderVersion(CString& text);
BOOL ZelCheckShlwapiVersion(CString& text);
BOOL ZelCheckMfcVersion(CString& text);

// Reads a file's fixed version record. `info` is zeroed, *error set to 0 and
// *errorText emptied first (either pointer may be null). On failure FALSE, with the
// Win32 error number in *error and the system's text for it, cut at 260
// characters, in *errorText.
BOOL ZelLoadFixedFileInfo(tagVS_FIXEDFILEINFO& info, const char* file, DWORD* error = nullptr,
                          CString* errorText = nullptr);

// The same for the five checked files, read once per process. Later calls return the
// cached record, or on failure a zeroed record and the cached error number; only
// the first failing call delivers the error text, later ones give an empty text.
BOOL ZelLoadComCtl32FixedFileInfo(tagVS_FIXEDFILEINFO& info, DWORD* error = nullptr, CString* errorText = nullptr);
BOOL ZelLoadShell32FixedFileInfo(tagVS_FIXEDFILEINFO& info, DWORD* error = nullptr, CString* errorText = nullptr);
BOOL ZelLoadShFolderFixedFileInfo(tagVS_FIXEDFILEINFO& info, DWORD* error = nullptr, CString* errorText = nullptr);
BOOL ZelLoadShlwapiFixedFileInfo(tagVS_FIXEDFILEINFO& info, DWORD* error = nullptr, CString* errorText = nullptr);
BOOL ZelLoadMfcFixedFileInfo(tagVS_FIXEDFILEINFO& info, DWORD* error = nullptr, CString* errorText = nullptr);
