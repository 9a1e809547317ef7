#include "frame/ZelRequirementsDetail.h"

#include <Zel260/frame/ZelModule.h>
#include <Zel260/frame/ZelRequirements.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/Win32Error.h>
#include <Zel260/resources/ZelFrameResourceIds.h>

#include <TestSupport.h>
#include <gtest/gtest.h>

#include <unistd.h>

TEST(ZelModule, ResourceHandlesStartAtTheLibraryModule)
{
    EXPECT_EQ(ZelGetZelResourceHandle(), ZelLibraryInstance());
    EXPECT_EQ(AfxGetResourceHandle(), ZelLibraryInstance());
    EXPECT_EQ(ZelLoadLibraryString(IDS_ZEL_BOOLEAN_YES), "Yes");
    EXPECT_EQ(ZelLoadLibraryString(1099), "") << "an id without text";
}

TEST(ZelModule, SavedHandleHoldsOneLevel)
{
    HINSTANCE a = ZelCreateResourceModule("a");
    HINSTANCE b = ZelCreateResourceModule("b");
    ZelSetResourceHandle(a);
    EXPECT_EQ(AfxGetResourceHandle(), a);
    ZelSetResourceHandle(b); // overwrites the saved library module with `a`
    EXPECT_EQ(AfxGetResourceHandle(), b);
    ZelRestoreResourceHandle();
    EXPECT_EQ(AfxGetResourceHandle(), a);
    ZelRestoreResourceHandle(); // nothing saved any more
    EXPECT_EQ(AfxGetResourceHandle(), a);
    AfxSetResourceHandle(ZelLibraryInstance());
    ZelDestroyResourceModule(a);
    ZelDestroyResourceModule(b);
}

TEST(ZelModule, LibraryStringsFollowAReplacedLanguageModule)
{
    zeltest::TempDir dir;
    HINSTANCE german = ZelLoadResourceModule(dir.write("de.txt", "1000=Ja\n").c_str());
    ASSERT_NE(german, nullptr);
    HINSTANCE host = ZelCreateResourceModule("host");
    AfxSetResourceHandle(host);
    ZelSetZelResourceHandle(german);
    EXPECT_EQ(ZelLoadLibraryString(IDS_ZEL_BOOLEAN_YES), "Ja");
    EXPECT_EQ(AfxGetResourceHandle(), host) << "the host's current module is put back";
    ZelSetZelResourceHandle(ZelLibraryInstance());
    AfxSetResourceHandle(ZelLibraryInstance());
    ZelDestroyResourceModule(german);
    ZelDestroyResourceModule(host);
}

TEST(ZelLoadFixedFileInfo, VersionFromALibraryFileName)
{
    zeltest::TempDir dir;
    std::string lib = dir.write("libzeltest.so.3.12.1", "");
    ASSERT_EQ(symlink(lib.c_str(), dir.file("libzeltest.so.3").c_str()), 0);
    tagVS_FIXEDFILEINFO info;
    DWORD error = 99;
    CString text = "stale";
    ASSERT_TRUE(ZelLoadFixedFileInfo(info, dir.file("libzeltest.so.3").c_str(), &error, &text));
    EXPECT_EQ(info.dwProductVersionMS, (3u << 16) | 12u) << "the link leads to the real name";
    EXPECT_EQ(info.dwProductVersionLS, 1u << 16);
    EXPECT_EQ(info.dwSignature, 0xFEEF04BDu);
    EXPECT_EQ(error, 0u);
    EXPECT_TRUE(text.IsEmpty());

    EXPECT_FALSE(ZelLoadFixedFileInfo(info, dir.write("notes.txt", "x").c_str(), &error, &text));
    EXPECT_EQ(error, ERROR_RESOURCE_TYPE_NOT_FOUND);
    EXPECT_FALSE(ZelLoadFixedFileInfo(info, dir.file("missing.so.1").c_str(), &error, &text));
    EXPECT_EQ(error, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(text, ZelSystemErrorText(ERROR_FILE_NOT_FOUND));
    EXPECT_FALSE(text.IsEmpty());
    EXPECT_EQ(info.dwProductVersionMS, 0u) << "zeroed on failure";
    EXPECT_FALSE(ZelLoadFixedFileInfo(info, nullptr));
}

TEST(ZelLoadFixedFileInfo, CacheKeepsResultButDeliversTheErrorTextOnce)
{
    zeltest::TempDir dir;
    std::string missing = dir.file("libgone.so.1");
    zel_detail::VersionCache failing;
    tagVS_FIXEDFILEINFO info;
    DWORD error = 0;
    CString text;
    EXPECT_FALSE(zel_detail::readCached(failing, missing.c_str(), info, &error, &text));
    EXPECT_EQ(error, ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(text.IsEmpty());
    dir.write("libgone.so.1", ""); // appears later: the cache doesn't look again
    EXPECT_FALSE(zel_detail::readCached(failing, missing.c_str(), info, &error, &text));
    EXPECT_EQ(error, ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(text.IsEmpty()) << "only the first failing call has the text";

    zel_detail::VersionCache good;
    std::string lib = dir.write("libkept.so.2.5", "");
    ASSERT_TRUE(zel_detail::readCached(good, lib.c_str(), info, nullptr, nullptr));
    unlink(lib.c_str());
    ASSERT_TRUE(zel_detail::readCached(good, lib.c_str(), info, &error, &text));
    EXPECT_EQ(info.dwProductVersionMS, (2u << 16) | 5u);
}

namespace {

// Versions handed to the checks; a major of -1 makes the file unreadable.
struct Fake {
    int major;
    int minor;
};
Fake g_comCtl32, g_shell32, g_shFolder, g_shlwapi, g_mfc;

BOOL fakeRead(const Fake& f, tagVS_FIXEDFILEINFO& info, DWORD* error, CString* text)
{
    info = {};
    if (f.major < 0) {
        if (error)
            *error = ERROR_FILE_NOT_FOUND;
        if (text)
            *text = "gone";
        return FALSE;
    }
    info.dwProductVersionMS = MAKELONG(static_cast<WORD>(f.minor), static_cast<WORD>(f.major));
    return TRUE;
}

const zel_detail::RequirementReaders kFakes{
    [](tagVS_FIXEDFILEINFO& i, DWORD* e, CString* t) { return fakeRead(g_comCtl32, i, e, t); },
    [](tagVS_FIXEDFILEINFO& i, DWORD* e, CString* t) { return fakeRead(g_shell32, i, e, t); },
    [](tagVS_FIXEDFILEINFO& i, DWORD* e, CString* t) { return fakeRead(g_shFolder, i, e, t); },
    [](tagVS_FIXEDFILEINFO& i, DWORD* e, CString* t) { return fakeRead(g_shlwapi, i, e, t); },
    [](tagVS_FIXEDFILEINFO& i, DWORD* e, CString* t) { return fakeRead(g_mfc, i, e, t); },
};

} // namespace

TEST(ZelCheckAllRequirements, OrderResultsAndTexts)
{
    struct Row {
        const char* name;
        Fake comCtl32, shell32, shFolder, shlwapi, mfc;
        BOOL ok;
        eZelRequirements result;
        const char* text;
    } rows[] = {
        {"all met", {6, 4}, {6, 4}, {6, 4}, {6, 4}, {6, 0}, TRUE, eZelRequirementsMet, ""},
        {"newer major", {7, 0}, {7, 0}, {-1, 0}, {7, 0}, {7, 0}, TRUE, eZelRequirementsMet, ""},
        {"old controls", {6, 3}, {6, 4}, {6, 4}, {6, 4}, {6, 0}, FALSE, eZelRequirementComCtl32,
         "ComCtl32.Dll V6.3 found.\n\nRequired is version V6.4 or higher."},
        {"unreadable controls", {-1, 0}, {6, 4}, {6, 4}, {6, 4}, {6, 0}, FALSE, eZelRequirementComCtl32,
         "ComCtl32.dll: gone"},
        {"old shell rescued by shfolder", {6, 4}, {6, 1}, {1, 0}, {6, 4}, {6, 0}, TRUE, eZelRequirementsMet, ""},
        {"old shell, shfolder missing", {6, 4}, {6, 1}, {-1, 0}, {6, 4}, {6, 0}, FALSE, eZelRequirementShell32,
         "ShFolder.dll: gone"},
        {"shell major too old", {6, 4}, {5, 9}, {6, 4}, {6, 4}, {6, 0}, FALSE, eZelRequirementShell32,
         "Shell32.Dll V5.9 found.\n\nRequired is version V6.0 or higher."},
        {"unreadable shell", {6, 4}, {-1, 0}, {6, 4}, {6, 4}, {6, 0}, FALSE, eZelRequirementShell32,
         "Shell32.dll: gone"},
        {"first failure wins", {6, 4}, {6, 4}, {6, 4}, {5, 0}, {5, 15}, FALSE, eZelRequirementShlwapi,
         "Shlwapi.Dll V5.0 found.\n\nRequired is version V6.4 or higher."},
        {"old framework", {6, 4}, {6, 4}, {6, 4}, {6, 4}, {5, 15}, FALSE, eZelRequirementMfc,
         "Mfc80.Dll V5.15 found.\n\nRequired is version V6.0 or higher."},
    };
    for (const auto& r : rows) {
        g_comCtl32 = r.comCtl32;
        g_shell32 = r.shell32;
        g_shFolder = r.shFolder;
        g_shlwapi = r.shlwapi;
        g_mfc = r.mfc;
        eZelRequirements result = static_cast<eZelRequirements>(99);
        CString text = "stale";
        EXPECT_EQ(zel_detail::checkAll(kFakes, result, text), r.ok) << r.name;
        EXPECT_EQ(result, r.result) << r.name;
        EXPECT_EQ(text, r.text) << r.name;
    }
}

TEST(ZelCheckAllRequirements, ThisSystemMeetsThem)
{
    eZelRequirements result = static_cast<eZelRequirements>(99);
    CString text = "stale";
    EXPECT_TRUE(ZelCheckAllRequirements(result, text)) << text.GetString();
    EXPECT_EQ(result, eZelRequirementsMet);
    EXPECT_TRUE(text.IsEmpty());
    tagVS_FIXEDFILEINFO info;
    ASSERT_TRUE(ZelLoadComCtl32FixedFileInfo(info));
    EXPECT_EQ(HIWORD(info.dwProductVersionMS), 6);
}
