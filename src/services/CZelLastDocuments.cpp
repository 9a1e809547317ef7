#include <Zel260/services/CZelLastDocuments.h>
#include <Zel260/services/CZelLastDocMenu.h>
#include <Zel260/services/CZelProfileEntries.h>
#include <Zel260/services/ZelProfilePath.h>
#include <Zel260/platform/CWinApp.h>
#include <Zel260/resources/ZelServicesResourceIds.h>

#include <Zel260/frame/ZelModule.h>

#include "platform/ProgramName.h"

#include <string>

#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr unsigned char kStoredLineFeed = 0xB0;

bool isContinuation(unsigned char c) { return (c & 0xC0) == 0x80; }

// The length of the well-formed UTF-8 character that starts at s[i], or 0.
size_t utf8Length(const std::string& s, size_t i)
{
    unsigned char c = static_cast<unsigned char>(s[i]);
    size_t n = c >= 0xF0 && c <= 0xF4 ? 4 : c >= 0xE0 ? 3 : c >= 0xC2 && c < 0xE0 ? 2 : 0;
    if (c >= 0xF5 || n == 0 || i + n > s.size())
        return 0;
    for (size_t k = 1; k < n; ++k)
        if (!isContinuation(static_cast<unsigned char>(s[i + k])))
            return 0;
    return n;
}

// Whether the byte at `i` belongs to a well-formed UTF-8 character before it.
bool insideCharacter(const std::string& s, size_t i)
{
    for (size_t back = 1; back <= 3 && back <= i; ++back) {
        unsigned char c = static_cast<unsigned char>(s[i - back]);
        if (!isContinuation(c))
            return utf8Length(s, i - back) > back;
    }
    return false;
}

// A document name as one line of the file.
CString toStored(const char* document)
{
    std::string s(document);
    for (char& ch : s) {
        unsigned char c = static_cast<unsigned char>(ch);
        if (c == '\n')
            ch = static_cast<char>(kStoredLineFeed);
        else if (c < 32)
            ch = ' ';
    }
    return CString(std::move(s));
}

CString fromStored(const CString& stored)
{
    std::string s = stored.str();
    for (size_t i = 0; i < s.size(); ++i)
        if (static_cast<unsigned char>(s[i]) == kStoredLineFeed && !insideCharacter(s, i))
            s[i] = '\n';
    return CString(std::move(s));
}

CString nameOf(const CString& value)
{
    int brk = value.Find(CZelLastDocuments::BreakChar);
    return value.Left(brk); // Left(-1) is "": a value without a break names nothing
}

} // namespace

CZelLastDocuments::CZelLastDocuments(const char* iniFile, unsigned int entries)
    : m_entries(entries ? entries : 4),
      m_entry(CZelProfileEntries::LastDocumentsEntry()),
      m_menuPrompt(ZelLoadLibraryString(IDS_ZEL_LASTDOC_EMPTY)),
      m_promptPrefix(ZelLoadLibraryString(IDS_ZEL_LASTDOC_PROMPT_PREFIX))
{
    IniFile(iniFile);
}

CZelLastDocuments::~CZelLastDocuments() = default;

void CZelLastDocuments::IniFile(const char* path) { m_iniFile = path && path[0] ? path : ZelGetProfilePath(); }

void CZelLastDocuments::Section(const char* section) { m_section = section; }

void CZelLastDocuments::Entry(const char* prefix) { m_entry = prefix; }

void CZelLastDocuments::SetMenuPrompt(const char* prompt) { m_menuPrompt = prompt; }

void CZelLastDocuments::SetMenuPromptPrefix(const char* prefix) { m_promptPrefix = prefix; }

void CZelLastDocuments::SetMenuPromptSuffix(const char* suffix) { m_promptSuffix = suffix; }

CString CZelLastDocuments::GetProfileString(unsigned int position)
{
    if (m_section.IsEmpty()) {
        const char* app = AfxGetAppName();
        m_section = app && app[0] ? CString(app) : zelplatform::ProgramName();
    }
    CString key;
    key.Format("%s%u", m_entry.GetString(), position);
    return CZelProfileEntries::ReadProfileString(m_iniFile, m_section, key, "");
}

BOOL CZelLastDocuments::WriteProfileString(unsigned int position, const char* text)
{
    if (m_section.IsEmpty())
        GetProfileString(position); // settles the section
    CString key;
    key.Format("%s%u", m_entry.GetString(), position);
    return CZelProfileEntries::WriteProfileStringA(m_iniFile, m_section, key, text);
}

void CZelLastDocuments::AddDocument(const char* document)
{
    if (m_entries == 0 || !document || !document[0])
        return;
    CString copy = toStored(document);
    if (copy.Find(BreakChar) < 0)
        copy += BreakChar;
    const CString name = nameOf(copy);

    unsigned int position = 1;
    while (position < m_entries) {
        CString entry = GetProfileString(position);
        if (entry.IsEmpty())
            break;
        if (entry.Find(BreakChar) < 0)
            entry += BreakChar;
        if (nameOf(entry) == name)
            break;
        ++position;
    }
    for (unsigned int p = position - 1; p >= 1; --p)
        WriteProfileString(p + 1, GetProfileString(p));
    WriteProfileString(1, copy);
    OnDocumentsChanged();
}

void CZelLastDocuments::RemoveDocument(const char* document, int updateMenus)
{
    if (!document)
        return;
    CString copy = toStored(document);
    if (copy.Find(BreakChar) < 0)
        copy += BreakChar;
    const CString name = nameOf(copy);

    unsigned int found = 0;
    unsigned int last = 0; // the last non-empty position
    for (unsigned int p = 1; p <= m_entries; ++p) {
        CString entry = GetProfileString(p);
        if (entry.IsEmpty())
            break;
        last = p;
        if (!found) {
            if (entry.Find(BreakChar) < 0)
                entry += BreakChar;
            if (nameOf(entry) == name)
                found = p;
        }
    }
    if (!found)
        return;
    for (unsigned int p = found; p < last; ++p)
        WriteProfileString(p, GetProfileString(p + 1));
    WriteProfileString(last, m_empty);
    if (updateMenus)
        OnDocumentsChanged();
}

void CZelLastDocuments::RemoveAllDocuments()
{
    for (unsigned int p = 1; p <= m_entries; ++p) {
        if (GetProfileString(p).IsEmpty())
            break;
        WriteProfileString(p, m_empty);
    }
    OnDocumentsChanged();
}

std::vector<CString>& CZelLastDocuments::GetAllDocuments()
{
    m_documents.clear();
    for (unsigned int p = 1; p <= m_entries; ++p) {
        CString entry = GetProfileString(p);
        if (entry.IsEmpty())
            break;
        m_documents.push_back(nameOf(fromStored(entry)));
    }
    return m_documents;
}

std::vector<CString>& CZelLastDocuments::CheckAllDocuments()
{
    std::vector<CString> documents = GetAllDocuments();
    bool removed = false;
    for (const CString& document : documents)
        if (!document.IsEmpty() && !DocumentExists(document)) {
            RemoveDocument(document, FALSE);
            removed = true;
        }
    if (removed)
        OnDocumentsChanged();
    return GetAllDocuments();
}

CString& CZelLastDocuments::GetDocument(unsigned int index)
{
    GetAllDocuments();
    if (index < m_documents.size())
        return m_documents[index];
    m_empty.Empty();
    return m_empty;
}

CString& CZelLastDocuments::GetCurrentDocument(UINT commandId)
{
    for (unsigned int i = 0; i < m_items.size(); ++i) {
        CString& document = GetCurrentDocument(i, commandId);
        if (!document.IsEmpty())
            return document;
    }
    m_empty.Empty();
    return m_empty;
}

CString& CZelLastDocuments::GetCurrentDocument(unsigned int itemIndex, UINT commandId)
{
    if (itemIndex < m_items.size()) {
        const auto& ids = m_items[itemIndex].m_menuIds;
        for (size_t k = 0; k < ids.size(); ++k)
            if (ids[k] == commandId)
                return GetDocument(static_cast<unsigned int>(k));
    }
    m_empty.Empty();
    return m_empty;
}

BOOL CZelLastDocuments::DocumentExists(const char* document)
{
    struct stat st;
    return ::stat(document, &st) == 0;
}

void CZelLastDocuments::OnDocumentsChanged()
{
    if (m_refreshMenus)
        ModifyMenu();
}

// ---- menus ------------------------------------------------------------------

int CZelLastDocuments::CreateLastDocItem(UINT commandId, const UINT* menuIds, CZelLastDocMenu* menu)
{
    CLastDocItem item;
    item.m_commandId = commandId;
    for (const UINT* id = menuIds; id && *id && item.m_menuIds.size() < m_entries; ++id)
        item.m_menuIds.push_back(*id);
    item.m_menu = menu;
    m_items.push_back(std::move(item));
    return static_cast<int>(m_items.size()) - 1;
}

int CZelLastDocuments::CreateLastDocMenu(CZelLastDocMenu& menu, UINT commandId, const UINT* menuIds)
{
    int index = CreateLastDocItem(commandId, menuIds, &menu);
    const auto& ids = m_items[static_cast<size_t>(index)].m_menuIds;
    bool present = menu.GetItemPosition(commandId) >= 0;
    for (UINT id : ids)
        present = present || menu.GetItemPosition(id) >= 0;
    if (!present)
        menu.InsertItem(-1, commandId, m_menuPrompt);
    ModifyLastDocItem(index, menu);
    return index;
}

CString CZelLastDocuments::MenuText(unsigned int position, const char* document) const
{
    CString text;
    text.Format("&%u", position);
    text += CString(' ', m_tab > 0 ? m_tab : 0);
    text += document;
    if (text.GetLength() > m_menuItemLength) {
        // Cut between characters, never inside one.
        int cut = m_menuItemLength > 0 ? m_menuItemLength : 0;
        while (cut > 0 && isContinuation(static_cast<unsigned char>(text.GetAt(cut))))
            --cut;
        text = text.Left(cut) + " ...";
    }
    return text;
}

BOOL CZelLastDocuments::ModifyLastDocItem(int index, CZelLastDocMenu& menu)
{
    if (index < 0 || static_cast<size_t>(index) >= m_items.size())
        return FALSE;
    CLastDocItem& item = m_items[static_cast<size_t>(index)];
    item.m_menu = &menu;
    const std::vector<CString> documents = GetAllDocuments();

    // Where the list stands: the placeholder, else the first document shown.
    int base = menu.GetItemPosition(item.m_commandId);
    for (size_t k = 0; base < 0 && k < item.m_menuIds.size(); ++k)
        base = menu.GetItemPosition(item.m_menuIds[k]);
    bool placeholderIsDocument = false;
    for (UINT id : item.m_menuIds)
        placeholderIsDocument = placeholderIsDocument || id == item.m_commandId;

    for (UINT id : item.m_menuIds)
        m_prompts.erase(id);
    const size_t shown = std::min(documents.size(), item.m_menuIds.size());
    if (shown == 0) {
        for (UINT id : item.m_menuIds)
            if (id != item.m_commandId)
                menu.RemoveItem(id);
        int at = menu.GetItemPosition(item.m_commandId);
        if (at >= 0)
            menu.ModifyItem(at, item.m_commandId, m_menuPrompt);
        else
            menu.InsertItem(base, item.m_commandId, m_menuPrompt);
        menu.EnableItem(item.m_commandId, FALSE);
        return TRUE;
    }
    if (!placeholderIsDocument)
        menu.RemoveItem(item.m_commandId);
    for (size_t k = 0; k < item.m_menuIds.size(); ++k) {
        const UINT id = item.m_menuIds[k];
        if (k >= shown) {
            menu.RemoveItem(id);
            continue;
        }
        CString text = MenuText(static_cast<unsigned int>(k + 1), documents[k]);
        int at = menu.GetItemPosition(id);
        if (at >= 0)
            menu.ModifyItem(at, id, text);
        else
            menu.InsertItem(base < 0 ? -1 : base + static_cast<int>(k), id, text);
        menu.EnableItem(id, TRUE);
        m_prompts[id] = m_promptPrefix + documents[k] + m_promptSuffix;
    }
    return TRUE;
}

void CZelLastDocuments::ModifyMenu()
{
    for (size_t i = 0; i < m_items.size(); ++i)
        if (m_items[i].m_menu)
            ModifyLastDocItem(static_cast<int>(i), *m_items[i].m_menu);
}

void CZelLastDocuments::ModifyMenu(CZelLastDocMenu& menu)
{
    for (size_t i = 0; i < m_items.size(); ++i)
        ModifyLastDocItem(static_cast<int>(i), menu);
}

CString CZelLastDocuments::GetMenuPrompt(UINT commandId) const
{
    auto it = m_prompts.find(commandId);
    return it == m_prompts.end() ? CString() : it->second;
}
