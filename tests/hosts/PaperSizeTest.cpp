// Paper sizes by the printer's paper code.
#include <Zel260/graphics/CZelCDCHelper.h>

#include <gtest/gtest.h>

TEST(PaperSize, CommonCodesAndCustomSizes)
{
    struct Row {
        const char* name;
        short code, widthTenthsMm, lengthTenthsMm;
        BOOL ok;
        double width, height;
    };
    const Row rows[] = {
        {"letter", DMPAPER_LETTER, 0, 0, TRUE, 8.5, 11},
        {"legal", DMPAPER_LEGAL, 0, 0, TRUE, 8.5, 14},
        {"A4", DMPAPER_A4, 0, 0, TRUE, 210 / 25.4, 297 / 25.4},
        {"A3", DMPAPER_A3, 0, 0, TRUE, 297 / 25.4, 420 / 25.4},
        {"A5", DMPAPER_A5, 0, 0, TRUE, 148 / 25.4, 210 / 25.4},
        {"custom in tenths of mm", 0, 2540, 1270, TRUE, 10, 5},
        {"unknown without a size", 999, 0, 0, FALSE, 0, 0},
    };
    for (const Row& r : rows) {
        DEVMODE mode;
        mode.dmPaperSize = r.code;
        mode.dmPaperWidth = r.widthTenthsMm;
        mode.dmPaperLength = r.lengthTenthsMm;
        double w = -1, h = -1;
        EXPECT_EQ(CZelCDCHelper::GetPaperSizeInInches(&mode, w, h), r.ok) << r.name;
        EXPECT_NEAR(w, r.width, 1e-9) << r.name;
        EXPECT_NEAR(h, r.height, 1e-9) << r.name;
    }
    double w = 1, h = 1;
    EXPECT_FALSE(CZelCDCHelper::GetPaperSizeInInches(nullptr, w, h));
    EXPECT_EQ(w, 0);
    EXPECT_TRUE(CZelCDCHelper::CalculatePrintArea(nullptr, 8.5, 11, CRect(), 0).IsRectEmpty());
}
