#include <Zel260/graphics/CZelToolbarBmp.h>
#include <Zel260/platform/ResourceModule.h>

#include <cstring>

IMPLEMENT_DYNAMIC(CZelToolbarBmp, CObject)

namespace {

// The words of a toolbar resource, or false when it is missing or shorter than
// its own item count says.
bool readToolbar(HINSTANCE module, unsigned int id, std::vector<WORD>& words)
{
    const std::vector<unsigned char>* data = module ? ZelFindResourceData(module, ZEL_RT_TOOLBAR, id) : nullptr;
    if (!data || data->size() < 8)
        return false;
    words.resize(data->size() / 2);
    std::memcpy(words.data(), data->data(), words.size() * 2);
    return words.size() >= 4u + words[3];
}

} // namespace

void CZelToolbarBmp::Clean()
{
    m_resourceLoaded = FALSE;
    m_imageListCreated = FALSE;
    m_ids.clear();
    m_idCount = 0;
    m_buttonCount = 0;
    m_imageSize = CSize();
    m_buttonSize = CSize();
    m_bitmap.DeleteObject();
    m_imageList.DeleteImageList();
}

BOOL CZelToolbarBmp::LoadVectorOfIDs(HINSTANCE module, unsigned int id, std::vector<unsigned int>& ids)
{
    ids.clear();
    std::vector<WORD> words;
    if (!readToolbar(module, id, words))
        return FALSE;
    ids.assign(words.begin() + 4, words.begin() + 4 + words[3]);
    return TRUE;
}

BOOL CZelToolbarBmp::LoadBitmap(HINSTANCE module, unsigned int id)
{
    Clean();
    std::vector<WORD> words;
    if (!readToolbar(module, id, words))
        return FALSE;
    m_ids.assign(words.begin() + 4, words.begin() + 4 + words[3]);
    m_idCount = static_cast<int>(m_ids.size());
    for (unsigned int i : m_ids)
        m_buttonCount += i != 0;
    m_imageSize = CSize(words[1], words[2]);
    m_buttonSize = CSize(words[1] + 7, words[2] + 7);
    m_resourceLoaded = TRUE;
    return m_bitmap.LoadBitmap(module, id) ? TRUE : FALSE;
}

BOOL CZelToolbarBmp::CreateImageList(unsigned int flags, unsigned long maskColour)
{
    if (!m_resourceLoaded || m_imageListCreated ||
        !m_imageList.Create(m_imageSize.cx, m_imageSize.cy, flags, m_idCount, 1))
        return FALSE;
    m_imageListCreated = TRUE;
    if (m_bitmap.GetSafeHandle())
        m_imageList.Add(&m_bitmap, static_cast<COLORREF>(maskColour));
    return TRUE;
}

HICON CZelToolbarBmp::ExtractIcon(int image)
{
    return m_imageListCreated ? m_imageList.ExtractIcon(image) : nullptr;
}

HICON CZelToolbarBmp::ExtractIcon(unsigned int id)
{
    return ExtractIcon(ImageIndex(id));
}

int CZelToolbarBmp::ImageIndex(unsigned int id) const
{
    if (id == 0)
        return -1;
    int index = 0;
    for (unsigned int i : m_ids) {
        if (i == id)
            return index;
        index += i != 0;
    }
    return -1;
}
