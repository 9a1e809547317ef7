// A print job's state as the printing code of views passes it around: the
// printer's device mode, the pages to print, the page at hand and its drawing
// area, and whether the job is a preview.
#pragma once

#include <Zel260/platform/CGeometry.h>
#include <Zel260/platform/Win32Types.h>

// The part of a printer's device mode that the library reads.
struct DEVMODE {
    short dmOrientation = 1; // 1 portrait, 2 landscape
    short dmPaperSize = 0;   // a DMPAPER_ code, or 0 for a custom size
    short dmPaperLength = 0; // tenths of a millimetre, for custom sizes
    short dmPaperWidth = 0;  // tenths of a millimetre, for custom sizes
};

constexpr short DMORIENT_PORTRAIT = 1;
constexpr short DMORIENT_LANDSCAPE = 2;
constexpr short DMPAPER_LETTER = 1;
constexpr short DMPAPER_LEGAL = 5;
constexpr short DMPAPER_A3 = 8;
constexpr short DMPAPER_A4 = 9;
constexpr short DMPAPER_A5 = 11;

class CPrintInfo {
public:
    CPrintInfo() = default;

    // The printer's mode for this job (never null; A4 portrait until set).
    DEVMODE* GetDevMode() { return &m_devMode; }
    const DEVMODE* GetDevMode() const { return &m_devMode; }
    void SetDevMode(const DEVMODE& mode) { m_devMode = mode; }

    // The document's page range, 1-based; a maximum of 0xFFFF means unknown.
    void SetMinPage(UINT page) { m_minPage = page; }
    void SetMaxPage(UINT page) { m_maxPage = page; }
    UINT GetMinPage() const { return m_minPage; }
    UINT GetMaxPage() const { return m_maxPage; }
    // The pages the user chose, within the document's range.
    UINT GetFromPage() const;
    UINT GetToPage() const;
    void SetPageRange(UINT from, UINT to);

    BOOL m_bPreview = FALSE;        // drawing for a preview, not paper
    BOOL m_bContinuePrinting = TRUE; // cleared by a view to end the job early
    UINT m_nCurPage = 1;            // the page being printed
    CRect m_rectDraw;               // the page's usable area, device pixels

private:
    DEVMODE m_devMode{DMORIENT_PORTRAIT, DMPAPER_A4, 0, 0};
    UINT m_minPage = 1;
    UINT m_maxPage = 0xFFFF;
    UINT m_fromPage = 1;
    UINT m_toPage = 0xFFFF;
};
