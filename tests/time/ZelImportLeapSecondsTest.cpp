#include "TimeTestSupport.h"

#include <Zel260/time/CZelTimeHelper.h>
#include <Zel260/time/ZelImportLeapSeconds.h>

#include <TestSupport.h>

#include <fstream>

#if ZEL_HAVE_ERFA
#include <erfa.h>
#endif

using zeltimetest::TimeTest;
using H = CZelTimeHelper;

namespace {

const char Sample[] = "#\tA leap-second list\n"
                      "#$\t 3676924800\n"
                      "2272060800\t10\t# 1 Jan 1972\n"
                      "2524521600\t19\t# 1 Jan 1980\n"
                      "2571782400\t20\t# 1 Jul 1981\n"
                      "3345062400\t33\t# 1 Jan 2006\n"
                      "3439756800\t34\t# 1 Jan 2009\n"
                      "3550089600\t35\t# 1 Jul 2012\n"
                      "3644697600\t36\t# 1 Jul 2015\n"
                      "3692217600\t37\t# 1 Jan 2017\n"
                      "#h\t16edd0f0 3666784f 37db7914 1fd7e4e 36c5a2e0\n";

} // namespace

TEST_F(TimeTest, ImportAddsTheRowsAfterTheBuiltInTable)
{
    zeltest::TempDir dir;
    const std::string path = dir.write("leap-seconds.list", Sample);
    EXPECT_EQ(ZelImportLeapSeconds(path.c_str()), 4);
    struct Row {
        int y, m, count;
    };
    const Row rows[] = {{2008, 12, 14}, {2009, 1, 15}, {2012, 7, 16}, {2015, 7, 17}, {2017, 1, 18}, {2029, 1, 18}};
    for (const auto& r : rows)
        EXPECT_DOUBLE_EQ(H::GetLeapSeconds(CZelTime::Mjd(r.y, r.m, 1, 0, 0, 0), nullptr) * 86400.0, r.count)
            << r.y << "-" << r.m;
    // Again: nothing new. After a restart the rows are still there.
    EXPECT_EQ(ZelImportLeapSeconds(path.c_str()), 0);
    zeltime::ResetLeapSecondTable();
    EXPECT_DOUBLE_EQ(H::GetLeapSeconds(CZelTime::Mjd(2020, 1, 1, 0, 0, 0), nullptr) * 86400.0, 18.0);
}

TEST_F(TimeTest, ImportRejectsAMalformedFileWhole)
{
    zeltest::TempDir dir;
    const char* const bad[] = {
        "",                                           // no entry
        "# only comments\n",                          //
        "3439756800\t34\n3550089600\tx\n",            // not a number
        "3439756800\t34\n3550089601\t35\n",           // not at midnight
        "3550089600\t35\n3439756800\t34\n",           // out of order
        "3439756800\t34 trailing\n",                  // garbage behind the count
        "3439756800\t90\n",                           // count out of range
    };
    for (const char* text : bad) {
        SCOPED_TRACE(text);
        const std::string path = dir.write("bad.list", text);
        EXPECT_EQ(ZelImportLeapSeconds(path.c_str()), 0);
        EXPECT_DOUBLE_EQ(H::GetLeapSeconds(CZelTime::Mjd(2020, 1, 1, 0, 0, 0), nullptr) * 86400.0, 14.0);
    }
    EXPECT_EQ(ZelImportLeapSeconds(dir.file("missing").c_str()), 0);
    EXPECT_EQ(ZelImportLeapSeconds(nullptr), 0);
}

#if ZEL_HAVE_ERFA
TEST_F(TimeTest, ImportedCountsMatchErfa)
{
    const char* system = "/usr/share/zoneinfo/leap-seconds.list";
    zeltest::TempDir dir;
    const std::string path = std::ifstream(system) ? std::string(system) : dir.write("l.list", Sample);
    EXPECT_GT(ZelImportLeapSeconds(path.c_str()), 0);
    // Every 1st of January and July from 1980 to the end of the CTime range.
    for (int y = 1980; y <= 2029; ++y)
        for (int m : {1, 7}) {
            double dat = 0;
            ASSERT_GE(eraDat(y, m, 1, 0.0, &dat), 0);
            EXPECT_DOUBLE_EQ(H::GetLeapSeconds(CZelTime::Mjd(y, m, 1, 0, 0, 0), nullptr) * 86400.0, dat - 19.0)
                << y << "-" << m;
        }
}
#endif
