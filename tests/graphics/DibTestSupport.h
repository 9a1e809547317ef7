// Helpers of the graphics tests.
#pragma once

#include <Zel260/graphics/CZelDib.h>

#include <InertDC.h>

#include <vector>

namespace gfxtest {

// A w by h image whose pixel i holds `pixels[i]` (memory order).
inline void make(CZelDib& dib, int w, int h, std::vector<DWORD> pixels)
{
    dib.Create(w, h);
    for (std::size_t i = 0; i < pixels.size(); ++i)
        dib.GetCrBits()[i] = pixels[i];
}

inline DWORD at(const CZelDib& dib, int x, int y)
{
    return dib.GetCrBits()[y * dib.GetWidth() + x];
}

// A device that is nothing but pixels, for the calls that need some device but
// whose behaviour on a real one the widget tests check.
class PixelDC : public zeltest::InertDC {
public:
    PixelDC(int w, int h) : m_w(w), m_h(h), m_px(static_cast<std::size_t>(w) * h, 0) {}
    COLORREF SetPixel(int x, int y, COLORREF c) override
    {
        if (x < 0 || y < 0 || x >= m_w || y >= m_h)
            return CLR_INVALID;
        return m_px[y * m_w + x] = c;
    }
    COLORREF GetPixel(int x, int y) const override
    {
        if (x < 0 || y < 0 || x >= m_w || y >= m_h)
            return CLR_INVALID;
        return m_px[y * m_w + x];
    }

private:
    int m_w, m_h;
    std::vector<COLORREF> m_px;
};

} // namespace gfxtest
