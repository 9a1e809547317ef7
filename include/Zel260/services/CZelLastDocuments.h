// The list of recently used documents, kept in a profile file and shown in menus.
//
// The list lives in the file, not in memory: every operation reads and writes the
// keys one by one, so several windows (or processes) with the same file and section
// share one list. The keys are the prefix and the position: "Doc_1" is the newest,
// up to the number of entries. A value is the document's name, ";" (BreakChar) and
// whatever the application put behind it; the part before the ";" identifies the
// document. Control characters can't stand in a one-line value: a line feed is
// stored as the byte 0xB0 and every other byte below 32 as a blank. Deleted
// entries are written as empty values.
//
// Names are UTF-8 here, where a 0xB0 byte is also part of many characters ("°", most
// Cyrillic letters): only a 0xB0 that isn't part of a well-formed UTF-8 character
// turns back into a line feed, and menu texts are cut between characters.
//
// Menus: an item (CreateLastDocItem, CreateLastDocMenu) is a placeholder command id
// and the command ids of the documents, 1 to n. ModifyLastDocItem puts the documents
// where the placeholder (or the first document id) stands in a CZelLastDocMenu: one
// item per document, texts "&1  name" cut at GetMenuItemLength() with " ...".
// With no documents the placeholder stands alone, disabled, with the menu prompt
// ("(No recent documents)" from the string table unless SetMenuPrompt changed it).
#pragma once

#include <Zel260/platform/CString.h>
#include <Zel260/platform/Win32Types.h>

#include <map>
#include <vector>

class CZelLastDocMenu;

class CZelLastDocuments {
public:
    static constexpr char BreakChar = ';';

    // One menu item: the placeholder command, the documents' commands (in the order
    // of the list) and the menu that shows them (may be null until given).
    class CLastDocItem {
    public:
        UINT m_commandId = 0;
        std::vector<UINT> m_menuIds;
        CZelLastDocMenu* m_menu = nullptr;
    };

    // `iniFile` null or empty uses ZelGetProfilePath() (read now); `entries` 0 means 4.
    explicit CZelLastDocuments(const char* iniFile = nullptr, unsigned int entries = 0);
    virtual ~CZelLastDocuments();
    CZelLastDocuments(const CZelLastDocuments&) = delete;
    CZelLastDocuments& operator=(const CZelLastDocuments&) = delete;

    // Storage. An empty section takes the application's name (AfxGetAppName(), or
    // the program's name when there is no application object) at the first access.
    void IniFile(const char* path); // null or empty: ZelGetProfilePath()
    void Section(const char* section);
    void Entry(const char* prefix); // null counts as ""
    const CString& GetIniFile() const { return m_iniFile; }
    const CString& GetSection() const { return m_section; }
    const CString& GetEntry() const { return m_entry; }
    unsigned int GetNumberOfEntries() const { return m_entries; }

    // Puts `document` first. An entry with the same name (part before ";") moves up
    // from where it stood; otherwise every entry moves one place down and the last
    // falls out of a full list. Null or empty: nothing. Refreshes the menus.
    void AddDocument(const char* document);
    // Takes out the entry with the name of `document` (part before ";"); the entries
    // behind it move up one place. Nothing when absent. Refreshes the menus when
    // `updateMenus` is non-zero.
    void RemoveDocument(const char* document, int updateMenus = TRUE);
    // Empties every entry up to the first empty one. Refreshes the menus.
    void RemoveAllDocuments();
    // The names, newest first, up to the first empty entry; line feeds restored,
    // text from the first ";" on cut off. An entry without ";" gives "" (its cut).
    // The list is a member, valid until the next call.
    std::vector<CString>& GetAllDocuments();
    // As GetAllDocuments, after removing every entry whose document doesn't exist
    // (DocumentExists). Refreshes the menus when something was removed.
    std::vector<CString>& CheckAllDocuments();
    // The document at `index` (0 = newest) of GetAllDocuments, or "" behind the end.
    CString& GetDocument(unsigned int index);
    // The document of the menu command `commandId`, searched in every menu item, or
    // the one of item `itemIndex` only; "" when the command shows no document.
    CString& GetCurrentDocument(UINT commandId);
    CString& GetCurrentDocument(unsigned int itemIndex, UINT commandId);

    // Menus. `menuIds` is a zero-ended array of the documents' commands (at most the
    // number of entries are used). Returns the index of the new item.
    int CreateLastDocItem(UINT commandId, const UINT* menuIds, CZelLastDocMenu* menu = nullptr);
    // Makes an item for `menu` and fills the menu at once (the placeholder is
    // appended when the menu doesn't have it yet).
    int CreateLastDocMenu(CZelLastDocMenu& menu, UINT commandId, const UINT* menuIds);
    // Shows the documents of item `index` in `menu` (which becomes the item's
    // menu). FALSE for an index that doesn't exist.
    BOOL ModifyLastDocItem(int index, CZelLastDocMenu& menu);
    // Refreshes every item that has a menu; or every item into `menu`.
    void ModifyMenu();
    void ModifyMenu(CZelLastDocMenu& menu);

    // The text of a document's menu item at `position` (1-based), by the rule above.
    CString MenuText(unsigned int position, const char* document) const;
    void SetMenuItemLength(int length) { m_menuItemLength = length; }
    int GetMenuItemLength() const { return m_menuItemLength; }
    void SetTab(int blanks) { m_tab = blanks; }
    int GetTab() const { return m_tab; }
    // The disabled text of the placeholder while there are no documents.
    void SetMenuPrompt(const char* prompt);
    const CString& GetMenuPrompt() const { return m_menuPrompt; }
    // The status-line prompt of a document's command: prefix, full name, suffix
    // (built at the last menu refresh); "" for other commands.
    CString GetMenuPrompt(UINT commandId) const;
    const CString& GetMenuPromptPrefix() const { return m_promptPrefix; }
    void SetMenuPromptPrefix(const char* prefix);
    const CString& GetMenuPromptSuffix() const { return m_promptSuffix; }
    void SetMenuPromptSuffix(const char* suffix);

protected:
    // One entry by its position (1-based), through the profile.
    CString GetProfileString(unsigned int position);
    BOOL WriteProfileString(unsigned int position, const char* text);
    // Whether a document of the list still exists; the default asks the file system.
    virtual BOOL DocumentExists(const char* document);
    // Called after every change of the list; refreshes the menus while the refresh
    // flag is set.
    virtual void OnDocumentsChanged();

private:
    unsigned int m_entries;
    CString m_iniFile;
    CString m_section;
    CString m_entry;
    BOOL m_refreshMenus = TRUE;
    int m_menuItemLength = 64;
    std::vector<CLastDocItem> m_items;
    std::map<UINT, CString> m_prompts;
    std::vector<CString> m_documents;
    int m_tab = 2;
    CString m_empty;
    CString m_menuPrompt;
    CString m_promptPrefix;
    CString m_promptSuffix;
};
