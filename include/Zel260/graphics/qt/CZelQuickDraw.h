// Double-buffered painting for a window, by hooking it: each paint first draws the
// whole picture into a memory buffer of the window's size (background, then the
// window's own painting or, for a CZelView, its OnDraw), and only then copies the
// buffer to the screen. A CZelView draws into the buffer inside its paint; any
// other window can only paint itself outside a paint of its own, so its picture
// is made right after the paint was asked for and shown by the paint that follows.
//
//   CZelQuickDraw* quick = new CZelQuickDraw;   // lives as long as the window
//   quick->Install(listWnd);
//   quick->StopWindowUpdate();                  // bulk changes: no painting at all
//   ...
//   quick->ContinueWindowUpdate(TRUE);          // one repaint with the new state
//
// The background is the system's window colour unless SetCustomBkColor chose one;
// the top GetExcludeFromTop() pixel rows (a header's place) are left unfilled.
#pragma once

#include <Zel260/controls/qt/CZelSubclassWnd.h>
#include <Zel260/platform/CDC.h>
#include <Zel260/platform/CGeometry.h>
#include <Zel260/platform/CObject.h>

#include <memory>

class CZelView;

class CZelQuickDraw : public CObject, public CZelSubclassWnd {
    DECLARE_DYNCREATE(CZelQuickDraw)

public:
    CZelQuickDraw();
    ~CZelQuickDraw() override;

    // Hooks `wnd`; 0 when a window is installed already or `wnd` has no window.
    virtual int Install(CWnd* wnd);
    virtual void Uninstall();
    // Paints nothing (the window keeps its last picture) until ContinueWindowUpdate.
    virtual void StopWindowUpdate();
    // Ends a stop and repaints the window (`erase`: background included).
    virtual void ContinueWindowUpdate(int erase);
    BOOL IsWindowUpdateStopped() const { return m_stopped; }
    // The memory device of the buffer, made on demand; null at a zero size.
    virtual CDC* GetCompDC(CWnd* wnd);
    // A colour reference, or 0xFFFFFFFF to go back to the system's window colour.
    virtual void SetCustomBkColor(const unsigned long& colour);
    virtual void LoadSystemColors();
    COLORREF GetBkColor() const { return m_bkColour; }
    virtual void SetExcludeFromTop(unsigned int pixels);
    virtual unsigned int GetExcludeFromTop() const;
    // The buffer's size; a negative size is refused, the present one changes nothing.
    virtual void SetSize(const SIZE& size);
    CSize GetSize() const { return CSize(m_width, m_height); }
    // Fills the buffer below the excluded rows with the background (white by
    // PatBlt WHITENESS). 0 at a zero size.
    virtual int EraseBkgnd(CWnd* wnd);
    // Copies the buffer to the window (`target` paints on the window).
    void Draw(CDC& target);
    // How many paints reached the screen, and how many a stop swallowed.
    int GetPaintCount() const { return m_paints; }
    int GetSkippedPaintCount() const { return m_skipped; }

protected:
    virtual void Clean();
    virtual int Initialize(CWnd* wnd);
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;
    void OnDestroyWindow() override;

private:
    struct Buffer;
    void paint();
    void renderWindow();
    bool m_fresh = false;    // the buffer holds a picture not yet shown
    bool m_complete = false; // the buffer holds a whole picture of the window
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    CWnd* m_wnd = nullptr;
    CZelView* m_view = nullptr;
    BOOL m_stopped = FALSE;
    std::unique_ptr<Buffer> m_buffer;
    int m_width = 0;
    int m_height = 0;
    CRect m_rect;
    unsigned int m_excludeFromTop = 0;
    COLORREF m_bkColour = 0xFFFFFF;
    BOOL m_customColour = FALSE;
    bool m_rendering = false;
    int m_paints = 0;
    int m_skipped = 0;
};
