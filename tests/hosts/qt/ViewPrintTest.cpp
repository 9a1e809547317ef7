// A view's print job to a real PDF file, its picture as a bitmap, commands through
// nested views, view timers and the slow double click.
#include <Zel260/frame/ZelMessages.h>
#include <Zel260/hosts/qt/CZelView.h>
#include <Zel260/platform/CBitmap.h>
#include <Zel260/platform/qt/CQtDC.h>
#include <Zel260/platform/qt/QtWindowBackend.h>

#include "TestSupport.h"

#include <QApplication>
#include <QDialog>
#include <QFile>
#include <QPrinter>
#include <QPointer>
#include <QProcess>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

namespace {

class PageView : public CZelView {
public:
    BOOL OnPreparePrinting(CPrintInfo* info) override
    {
        log.push_back("prepare");
        if (pages >= 0)
            info->SetMaxPage(static_cast<UINT>(pages));
        return prepareOk;
    }
    void OnBeginPrinting(CDC*, CPrintInfo* info) override
    {
        log.push_back("begin");
        drawArea = info->m_rectDraw;
    }
    void OnPrint(CDC* dc, CPrintInfo* info) override
    {
        log.push_back("page " + std::to_string(info->m_nCurPage));
        const std::string text = "Survey page " + std::to_string(info->m_nCurPage);
        dc->TextOut(200, 200, text.c_str(), static_cast<int>(text.size()));
        if (closeAtPage == info->m_nCurPage)
            QTimer::singleShot(0, [this] { delete this; });
        if (cancelAtPage == info->m_nCurPage)
            if (QWidget* d = GetPrintingDialog())
                QTimer::singleShot(0, d, [d] { static_cast<QDialog*>(d)->reject(); });
    }
    void OnEndPrinting(CDC*, CPrintInfo*) override { log.push_back("end"); }
    void OnDraw(CDC* dc) override { dc->FillSolidRect(RECT{0, 0, width(), height()}, RGB(255, 0, 0)); }
    BOOL OnCmdMsg(UINT id, int) override
    {
        if (id != handles)
            return FALSE;
        commands.push_back(id);
        return TRUE;
    }
    void OnViewTimer(UINT_PTR id) override { timers.push_back(id); }
    void OnDblClkSlow(WPARAM w, LPARAM l) override { slow.push_back(static_cast<int>(w * 10 + l)); }

    int pages = -1; // -1: leave the count unknown
    BOOL prepareOk = TRUE;
    UINT cancelAtPage = 0;
    UINT closeAtPage = 0;
    UINT handles = 0;
    CRect drawArea;
    std::vector<std::string> log;
    std::vector<UINT> commands;
    std::vector<UINT_PTR> timers;
    std::vector<int> slow;
};

std::string run(const QString& program, const QStringList& args)
{
    QProcess p;
    p.start(program, args);
    if (!p.waitForFinished(20000))
        return {};
    return p.readAllStandardOutput().toStdString();
}

struct Pdf {
    zeltest::TempDir dir;
    QPrinter printer{QPrinter::HighResolution};
    QString path;
    Pdf()
    {
        path = QString::fromStdString(dir.file("view.pdf"));
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(path);
        printer.setPageSize(QPageSize(QPageSize::A4));
    }
    std::string text() const { return run("pdftotext", {"-layout", path, "-"}); }
    std::string info() const { return run("pdfinfo", {path}); }
    int pages() const
    {
        const std::string i = info();
        const std::size_t at = i.find("Pages:");
        return at == std::string::npos ? -1 : std::atoi(i.c_str() + at + 6);
    }
};

} // namespace

TEST(ViewPrint, PagesReachThePdfInOrder)
{
    PageView view;
    view.pages = 2;
    Pdf pdf;
    ASSERT_TRUE(view.OnFilePrint(&view, &pdf.printer));
    EXPECT_EQ(view.log, (std::vector<std::string>{"prepare", "begin", "page 1", "page 2", "end"}));
    EXPECT_GT(view.drawArea.Width(), 0);
    EXPECT_EQ(view.GetPrintingDialog(), nullptr) << "the job's dialog goes with the job";
    const std::string text = pdf.text();
    EXPECT_NE(text.find("Survey page 1"), std::string::npos) << text;
    EXPECT_NE(text.find("Survey page 2"), std::string::npos) << text;
    EXPECT_EQ(pdf.pages(), 2) << pdf.info();
    EXPECT_NE(pdf.info().find("A4"), std::string::npos) << pdf.info();
}

TEST(ViewPrint, UnknownCountRefusalAndCancel)
{
    {
        PageView view; // no page count: one page
        Pdf pdf;
        ASSERT_TRUE(view.OnFilePrint(&view, &pdf.printer));
        EXPECT_EQ(view.log, (std::vector<std::string>{"prepare", "begin", "page 1", "end"}));
    }
    {
        PageView view;
        view.prepareOk = FALSE;
        Pdf pdf;
        EXPECT_FALSE(view.OnFilePrint(&view, &pdf.printer));
        EXPECT_EQ(view.log, std::vector<std::string>{"prepare"});
        EXPECT_FALSE(QFile::exists(pdf.path)) << "nothing was started";
    }
    {
        PageView view;
        view.pages = 5;
        view.cancelAtPage = 2;
        Pdf pdf;
        EXPECT_FALSE(view.OnFilePrint(&view, &pdf.printer)) << "cancelled";
        EXPECT_EQ(view.log, (std::vector<std::string>{"prepare", "begin", "page 1", "page 2", "end"}));
        EXPECT_EQ(pdf.pages(), 2) << "the job ends after the page at hand";
    }
    {
        QPointer<PageView> view = new PageView;
        view->pages = 3;
        view->closeAtPage = 1;
        Pdf pdf;
        EXPECT_FALSE(view->OnFilePrint(view, &pdf.printer)) << "the view was closed while printing";
        EXPECT_TRUE(view.isNull());
    }
}

TEST(ViewPicture, BitmapOfTheClientAreaWithChildren)
{
    PageView view;
    view.resize(40, 30);
    auto* child = new QWidget(&view);
    child->setAutoFillBackground(true);
    QPalette pal = child->palette();
    pal.setColor(QPalette::Window, Qt::blue);
    child->setPalette(pal);
    child->setGeometry(20, 10, 10, 10);
    view.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&view));

    HBITMAP bitmap = view.GetBitmapFromClientRect();
    ASSERT_NE(bitmap, nullptr);
    BITMAP info{};
    ASSERT_NE(GetObject(bitmap, sizeof(info), &info), 0);
    EXPECT_EQ(info.bmWidth, 40);
    EXPECT_EQ(info.bmHeight, 30);
    EXPECT_EQ(ZelBitmapScanLine(bitmap, 5)[5] & 0xFFFFFF, 0xFF0000u) << "the view's own drawing (red)";
    EXPECT_EQ(ZelBitmapScanLine(bitmap, 15)[25] & 0xFFFFFF, 0x0000FFu) << "the child on top (blue)";
    DeleteObject(bitmap);

    CQtDC noPainter(static_cast<QImage*>(nullptr));
    EXPECT_FALSE(view.OnPrintClient(&noPainter));
    PageView hidden;
    hidden.resize(0, 0);
    EXPECT_EQ(hidden.GetBitmapFromClientRect(), nullptr);
}

TEST(ViewCommands, NestedFocusedViewFirstThenOwn)
{
    PageView outer;
    auto* left = new PageView;
    auto* right = new PageView;
    left->setParent(&outer);
    right->setParent(&outer);
    auto* inner = new PageView; // a view inside a nested view: reached through it
    inner->setParent(right);
    left->handles = right->handles = inner->handles = 7;
    outer.handles = 8;
    outer.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&outer));
    inner->setFocus();
    QApplication::processEvents();

    EXPECT_TRUE(outer.HandleCmdMsg(7, 0));
    EXPECT_EQ(inner->commands.size(), 1u) << "the focused branch, innermost first";
    EXPECT_TRUE(left->commands.empty());
    EXPECT_TRUE(outer.HandleCmdMsg(8, 0));
    EXPECT_EQ(outer.commands.size(), 1u);
    EXPECT_FALSE(outer.HandleCmdMsg(9, 0));
}

TEST(ViewTimers, FireUntilKilledAndSlowDoubleClick)
{
    PageView view;
    EXPECT_FALSE(view.SetViewTimer(0, 10));
    EXPECT_FALSE(view.SetViewTimer(3, 0));
    ASSERT_TRUE(view.SetViewTimer(3, 5));
    for (int i = 0; i < 200 && view.timers.size() < 2; ++i)
        QTest::qWait(10);
    ASSERT_GE(view.timers.size(), 2u);
    EXPECT_EQ(view.timers[0], 3u);
    EXPECT_TRUE(view.KillViewTimer(3));
    EXPECT_FALSE(view.KillViewTimer(3));
    const std::size_t fired = view.timers.size();
    QTest::qWait(30);
    EXPECT_EQ(view.timers.size(), fired);

    view.ArmDblClkSlow(TRUE);
    ::SendMessage(view.GetSafeHwnd(), WM_ZEL_DBLCLK_SLOW, 2, 5);
    EXPECT_EQ(view.slow, std::vector<int>{25});
    view.OnActivateView(TRUE, &view, nullptr);
    EXPECT_TRUE(view.IsDblClkSlowArmed());
    view.OnActivateView(FALSE, nullptr, &view);
    EXPECT_FALSE(view.IsDblClkSlowArmed()) << "deactivation disarms";
}
