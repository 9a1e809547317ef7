#include <Zel260/services/CZelProfileEntries.h>
#include <Zel260/services/ZelProfilePath.h>
#include <Zel260/platform/CWinApp.h>
#include <Zel260/platform/Win32Error.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <climits>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

namespace {

using Entries = CZelProfileEntries;

// Every test gets its own configuration folder, so nothing reaches the user's
// ~/.config and parallel test processes never share a profile.
class Profile : public ::testing::Test {
protected:
    void SetUp() override
    {
        if (const char* old = std::getenv("XDG_CONFIG_HOME"))
            m_saved = old, m_hadSaved = true;
        setenv("XDG_CONFIG_HOME", m_dir.path().c_str(), 1);
        ZelSetProfilePath("");
    }
    void TearDown() override
    {
        ZelSetProfilePath("");
        if (m_hadSaved)
            setenv("XDG_CONFIG_HOME", m_saved.c_str(), 1);
        else
            unsetenv("XDG_CONFIG_HOME");
    }
    zeltest::TempDir m_dir;
    std::string m_saved;
    bool m_hadSaved = false;
};

TEST(ProfileIntVector, ReadsTheListFormat)
{
    struct Row {
        const char* text;
        std::vector<int> expected;
    };
    const Row rows[] = {
        {"1;2;3;", {1, 2, 3}},
        {"", {}},
        {"1;2;x;", {1, 2, 0}},    // atoi of no number is 0
        {"1;2", {1}},             // the last item without its ";" is dropped
        {"7", {}},
        {" -5;+7;12abc;", {-5, 7, 12}},
        {"99999999999;-99999999999;", {INT_MAX, INT_MIN}},
        {";1;", {1}},             // hand-edited empty items are stepped over
        {"1;;2;", {1, 2}},
        {";;;", {}},
    };
    for (const auto& r : rows) {
        std::vector<int> values{42};
        Entries::IntVectorFromString(r.text, values);
        EXPECT_EQ(values, r.expected) << '"' << r.text << '"';
    }
    std::vector<int> values{1};
    Entries::IntVectorFromString(nullptr, values);
    EXPECT_TRUE(values.empty());
}

TEST_F(Profile, ListsRoundTripThroughEveryFamily)
{
    const std::vector<int> list{1, -2, INT_MAX, INT_MIN, 0};
    const std::string file = m_dir.file("any.ini");
    CWinApp app("ListApp");
    std::vector<int> back{99};

    ASSERT_TRUE(Entries::WriteProfileIntVector(file.c_str(), "S", "L", list));
    EXPECT_EQ(zeltest::readFile(file), "[S]\nL=1;-2;2147483647;-2147483648;0;\n");
    Entries::ReadProfileIntVector(file.c_str(), "S", "L", back);
    EXPECT_EQ(back, list);

    ASSERT_TRUE(Entries::WriteZelProfileIntVector("S", "L", list));
    Entries::ReadZelProfileIntVector("S", "L", back);
    EXPECT_EQ(back, list);

    ASSERT_TRUE(Entries::WriteProfileIntVector(app, "S", "L", list));
    Entries::ReadProfileIntVector(app, "S", "L", back);
    EXPECT_EQ(back, list);
    EXPECT_TRUE(std::filesystem::exists(m_dir.file("ListApp.INI")));

    // An empty list is an empty value and reads back empty.
    ASSERT_TRUE(Entries::WriteZelProfileIntVector("S", "L", {}));
    Entries::ReadZelProfileIntVector("S", "L", back);
    EXPECT_TRUE(back.empty());
    Entries::ReadZelProfileIntVector("S", "missing", back);
    EXPECT_TRUE(back.empty());
}

TEST_F(Profile, IntegersAndStrings)
{
    EXPECT_EQ(Entries::ReadZelProfileInt("S", "n", 5), 5u);
    ASSERT_TRUE(Entries::WriteZelProfileInt("S", "n", -1));
    EXPECT_EQ(Entries::ReadZelProfileInt("S", "n", 5), static_cast<unsigned>(-1)); // callers compare with -1
    EXPECT_EQ(static_cast<int>(Entries::ReadZelProfileInt("S", "n", 5)), -1);

    EXPECT_EQ(Entries::ReadZelProfileString("S", "t", nullptr), "");
    EXPECT_EQ(Entries::ReadZelProfileString("S", "t", "dflt"), "dflt");
    std::string longText(5000, 'x');
    ASSERT_TRUE(Entries::WriteZelProfileString("S", "t", longText.c_str()));
    EXPECT_EQ(Entries::ReadZelProfileString("S", "t", "").GetLength(), 4095); // cut at reading

    const std::string file = m_dir.file("other.ini");
    ASSERT_TRUE(Entries::WriteProfileInt(file.c_str(), "A", "n", 12));
    ASSERT_TRUE(Entries::WriteProfileStringA(file.c_str(), "A", "s", "text"));
    EXPECT_EQ(Entries::ReadProfileInt(file.c_str(), "a", "N", 0), 12u);
    EXPECT_EQ(Entries::ReadProfileString(file.c_str(), "a", "S", ""), "text");
    EXPECT_EQ(zeltest::readFile(file), "[A]\nn=12\ns=text\n");
}

TEST_F(Profile, NonsenseFilesGiveDefaults)
{
    const std::string garbage("\0\xff\xfe[S\n=;\n[]]\n\n\r\r;;\x01=", 20);
    for (const std::string& content : {std::string(), garbage, std::string("[S]\nL=;1;\nn=x\n")}) {
        ZelSetProfilePath(m_dir.write("bad.ini", content).c_str());
        std::vector<int> values;
        Entries::ReadZelProfileIntVector("S", "L", values);
        EXPECT_LE(values.size(), 1u);
        EXPECT_EQ(Entries::ReadZelProfileString("T", "s", "d"), "d");
        EXPECT_EQ(Entries::ReadZelProfileInt("T", "n", 3), 3u);
    }
}

TEST_F(Profile, DefaultPathAndPrefix)
{
    const std::string folder = m_dir.path() + "/";
    EXPECT_EQ(std::string(ZelGetProfilePath()), folder + "Zel260.INI");

    ZelSetProfilePrefix("A");
    EXPECT_EQ(std::string(ZelGetProfilePath()), folder + "A.Zel260.INI");
    ZelSetProfilePrefix("B"); // replaces, never adds
    EXPECT_EQ(std::string(ZelGetProfilePath()), folder + "B.Zel260.INI");

    ZelSetProfilePath("/elsewhere/x.ini");
    EXPECT_EQ(std::string(ZelGetProfilePath()), "/elsewhere/x.ini");
    ZelSetProfilePrefix("Survey"); // a set path is overwritten too
    EXPECT_EQ(std::string(ZelGetProfilePath()), folder + "Survey.Zel260.INI");

    ZelSetProfilePath("");
    EXPECT_EQ(std::string(ZelGetProfilePath()), folder + "Zel260.INI");
}

TEST_F(Profile, WritesCreateTheConfigFolderButNoOtherFolder)
{
    const std::string config = m_dir.path() + "/not/yet";
    setenv("XDG_CONFIG_HOME", config.c_str(), 1);
    ZelSetProfilePath("");
    ASSERT_TRUE(Entries::WriteZelProfileInt("S", "n", 1));
    EXPECT_EQ(zeltest::readFile(config + "/Zel260.INI"), "[S]\nn=1\n");

    ZelSetProfilePath((m_dir.path() + "/missing/p.ini").c_str());
    EXPECT_FALSE(Entries::WriteZelProfileInt("S", "n", 1));
    EXPECT_EQ(GetLastError(), ERROR_PATH_NOT_FOUND);
    EXPECT_FALSE(Entries::WriteProfileInt((m_dir.path() + "/missing/q.ini").c_str(), "S", "n", 1));
    EXPECT_FALSE(std::filesystem::exists(m_dir.path() + "/missing"));
}

TEST_F(Profile, PrefixGoesInFrontOfTheFileNameNotIntoADottedFolder)
{
    const std::string config = m_dir.path() + "/cfg.d";
    setenv("XDG_CONFIG_HOME", config.c_str(), 1);
    ZelSetProfilePrefix("Survey");
    EXPECT_EQ(std::string(ZelGetProfilePath()), config + "/Survey.Zel260.INI");
}

TEST_F(Profile, ConfigFolderGivenWithTrailingSlashIsCreatedOnFirstWrite)
{
    const std::string config = m_dir.path() + "/cfg/";
    setenv("XDG_CONFIG_HOME", config.c_str(), 1);
    ZelSetProfilePath("");
    EXPECT_EQ(std::string(ZelGetProfilePath()), m_dir.path() + "/cfg/Zel260.INI");
    ASSERT_TRUE(Entries::WriteZelProfileInt("S", "n", 1));
    EXPECT_EQ(zeltest::readFile(config + "Zel260.INI"), "[S]\nn=1\n");
}

TEST_F(Profile, ApplicationSettingsFile)
{
    CWinApp app("Survey Office");
    EXPECT_EQ(AfxGetApp(), &app);
    EXPECT_STREQ(AfxGetAppName(), "Survey Office");
    EXPECT_EQ(app.GetProfileInt("S", "n", 4), 4u);
    ASSERT_TRUE(app.WriteProfileInt("S", "n", 9));
    ASSERT_TRUE(app.WriteProfileString("S", "t", std::string(10000, 'y').c_str()));
    EXPECT_EQ(app.GetProfileInt("S", "n", 4), 9u);
    EXPECT_EQ(app.GetProfileString("S", "t").GetLength(), 10000); // no 4096 limit here
    EXPECT_TRUE(std::filesystem::exists(m_dir.file("Survey Office.INI")));

    const std::string own = m_dir.file("own.ini");
    app.m_pszProfileName = own.c_str();
    ASSERT_TRUE(app.WriteProfileString("S", "t", "v"));
    EXPECT_EQ(zeltest::readFile(own), "[S]\nt=v\n");
}

} // namespace
