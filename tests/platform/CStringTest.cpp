#include <Zel260/platform/CString.h>
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/platform/Win32Error.h>

#include <gtest/gtest.h>

#include <cerrno>

TEST(CString, NullAndCountedConstructionAreSafe)
{
    EXPECT_TRUE(CString(static_cast<const char*>(nullptr)).IsEmpty());
    EXPECT_EQ(CString("abcdef", 3), "abc");
    EXPECT_EQ(CString("abc", -4), "");
    EXPECT_EQ(CString('x', 3), "xxx");
    EXPECT_EQ(CString('x', 0), "");
}

TEST(CString, ExtractionClampsLikeMfc)
{
    CString s("Hello");
    EXPECT_EQ(s.Left(-1), "");
    EXPECT_EQ(s.Left(99), "Hello");
    EXPECT_EQ(s.Mid(3), "lo");
    EXPECT_EQ(s.Mid(9), "");
    EXPECT_EQ(s.Mid(-2, 2), "He");
    EXPECT_EQ(s.Right(2), "lo");
    EXPECT_EQ(s.Right(9), "Hello");
    EXPECT_EQ(s.GetAt(7), '\0');
}

TEST(CString, SearchReturnsMinusOneWhenAbsent)
{
    CString s("a.b.c");
    EXPECT_EQ(s.Find('.'), 1);
    EXPECT_EQ(s.Find('.', 2), 3);
    EXPECT_EQ(s.Find('.', 99), -1);
    EXPECT_EQ(s.Find("b.c"), 2);
    EXPECT_EQ(s.Find(""), 0);
    EXPECT_EQ(s.ReverseFind('.'), 3);
    EXPECT_EQ(s.FindOneOf("xc"), 4);
    EXPECT_EQ(s.FindOneOf("xyz"), -1);
}

TEST(CString, EditingReportsCounts)
{
    CString s("a-b-c");
    EXPECT_EQ(s.Replace("-", "--"), 2);
    EXPECT_EQ(s, "a--b--c");
    EXPECT_EQ(s.Replace("", "x"), 0);
    EXPECT_EQ(s.Remove('-'), 4);
    EXPECT_EQ(s.Insert(99, "!"), 4);
    EXPECT_EQ(s, "abc!");
    EXPECT_EQ(s.Delete(1, 99), 1);
    EXPECT_EQ(s, "a");
}

TEST(CString, TrimVariants)
{
    CString s(" \t x y \n");
    EXPECT_EQ(CString(s).Trim(), "x y");
    EXPECT_EQ(CString(s).TrimLeft(), "x y \n");
    EXPECT_EQ(CString("00120").TrimLeft('0'), "120");
    EXPECT_EQ(CString("xyaxy").Trim("xy"), "a");
    EXPECT_EQ(CString("000").TrimRight('0'), "");
}

TEST(CString, FormatGrowsPastSmallBuffer)
{
    CString s;
    s.Format("%0300d", 7);
    EXPECT_EQ(s.GetLength(), 300);
    EXPECT_EQ(s.Right(1), "7");
    s.AppendFormat("%s|%.2f", "x", 1.005);
    EXPECT_EQ(s.Right(6), "x|1.00");
}

TEST(CString, BufferAccessRoundTrip)
{
    CString s;
    char* p = s.GetBuffer(10);
    std::snprintf(p, 11, "abc");
    s.ReleaseBuffer();
    EXPECT_EQ(s, "abc");
    s.GetBufferSetLength(2);
    s.ReleaseBuffer(1);
    EXPECT_EQ(s, "a");
}

TEST(CString, TokenizeSkipsEmptyTokens)
{
    CString s(",a,,b,");
    int pos = 0;
    EXPECT_EQ(s.Tokenize(",", pos), "a");
    EXPECT_EQ(s.Tokenize(",", pos), "b");
    EXPECT_EQ(s.Tokenize(",", pos), "");
    EXPECT_EQ(pos, -1);
}

TEST(CString, ComparisonsWithRawText)
{
    CString a("abc");
    EXPECT_TRUE(a == "abc");
    EXPECT_TRUE("abd" > a);
    EXPECT_EQ(a.CompareNoCase("ABC"), 0);
    EXPECT_GT(a.Compare(nullptr), 0);
}

TEST(ResourceModule, LoadStringFollowsTheCurrentHandle)
{
    HINSTANCE host = ZelCreateResourceModule("host");
    ZelSetResourceString(host, 42, "forty-two");
    HINSTANCE before = AfxGetResourceHandle();
    AfxSetResourceHandle(host);
    CString s;
    EXPECT_TRUE(s.LoadString(42));
    EXPECT_EQ(s, "forty-two");
    EXPECT_FALSE(s.LoadString(43));
    char buf[5];
    EXPECT_EQ(LoadString(host, 42, buf, sizeof buf), 4);
    EXPECT_STREQ(buf, "fort");
    AfxSetResourceHandle(before);
    ZelDestroyResourceModule(host);
}

TEST(Win32Error, ErrnoMapsOntoWin32NumbersAndTexts)
{
    EXPECT_EQ(ZelWin32ErrorFromErrno(ENOENT), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(ZelWin32ErrorFromErrno(ENOTDIR), ERROR_PATH_NOT_FOUND);
    EXPECT_EQ(ZelWin32ErrorFromErrno(EACCES), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ZelWin32ErrorFromErrno(EEXIST), ERROR_ALREADY_EXISTS);
    SetLastError(0);
    ZelSetLastErrorFromErrno(EACCES);
    EXPECT_EQ(GetLastError(), ERROR_ACCESS_DENIED);
    EXPECT_EQ(ZelSystemErrorText(ERROR_FILE_NOT_FOUND), "No such file or directory");
    EXPECT_EQ(ZelSystemErrorText(ERROR_NO_MORE_FILES), "There are no more files.");
    EXPECT_TRUE(ZelSystemErrorText(99999).IsEmpty());
}
