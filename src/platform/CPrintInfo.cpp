#include <Zel260/platform/CPrintInfo.h>

#include <algorithm>

UINT CPrintInfo::GetFromPage() const { return std::clamp(m_fromPage, m_minPage, std::max(m_minPage, m_maxPage)); }

UINT CPrintInfo::GetToPage() const
{
    return std::clamp(m_toPage, GetFromPage(), std::max(GetFromPage(), m_maxPage));
}

void CPrintInfo::SetPageRange(UINT from, UINT to)
{
    m_fromPage = from;
    m_toPage = to;
}
