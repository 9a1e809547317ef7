#include <Zel260/services/CZelLastDocMenu.h>
#include <Zel260/services/CZelLastDocuments.h>
#include <Zel260/platform/CWinApp.h>

#include "TestSupport.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {

std::vector<std::string> names(const std::vector<CString>& list)
{
    std::vector<std::string> out;
    for (const auto& s : list)
        out.push_back(s.str());
    return out;
}

using List = std::vector<std::string>;

// A menu as a plain list of items.
class TestMenu : public CZelLastDocMenu {
public:
    struct Item {
        UINT id;
        std::string text;
        bool enabled;
    };
    std::vector<Item> items;

    int GetItemPosition(UINT id) const override
    {
        for (size_t i = 0; i < items.size(); ++i)
            if (items[i].id == id)
                return static_cast<int>(i);
        return -1;
    }
    void InsertItem(int position, UINT id, const char* text) override
    {
        size_t at = position < 0 || static_cast<size_t>(position) > items.size() ? items.size() : position;
        items.insert(items.begin() + static_cast<long>(at), Item{id, text, true});
    }
    void ModifyItem(int position, UINT id, const char* text) override
    {
        items.at(static_cast<size_t>(position)).id = id;
        items.at(static_cast<size_t>(position)).text = text;
    }
    void RemoveItem(UINT id) override
    {
        items.erase(std::remove_if(items.begin(), items.end(), [&](const Item& i) { return i.id == id; }),
                    items.end());
    }
    void EnableItem(UINT id, BOOL enable) override
    {
        for (auto& i : items)
            if (i.id == id)
                i.enabled = enable != FALSE;
    }
    std::vector<std::string> texts() const
    {
        std::vector<std::string> out;
        for (const auto& i : items)
            out.push_back(i.text + (i.enabled ? "" : " (disabled)"));
        return out;
    }
};

class LastDocuments : public ::testing::Test {
protected:
    zeltest::TempDir m_dir;
    std::string m_file = m_dir.file("recent.ini");
};

TEST_F(LastDocuments, AddingMovesAndDrops)
{
    CZelLastDocuments docs(m_file.c_str(), 4);
    docs.Section("Recent");
    for (const char* d : {"a", "b", "c", "d"})
        docs.AddDocument(d);
    EXPECT_EQ(names(docs.GetAllDocuments()), (List{"d", "c", "b", "a"}));

    docs.AddDocument("b"); // stood at 3: moves to 1, the two before it move down, the rest stay
    EXPECT_EQ(names(docs.GetAllDocuments()), (List{"b", "d", "c", "a"}));

    docs.AddDocument("e"); // a full list drops its last
    EXPECT_EQ(names(docs.GetAllDocuments()), (List{"e", "b", "d", "c"}));

    docs.AddDocument("e"); // already first: nothing moves
    docs.AddDocument("");
    docs.AddDocument(nullptr);
    EXPECT_EQ(names(docs.GetAllDocuments()), (List{"e", "b", "d", "c"}));
    EXPECT_EQ(zeltest::readFile(m_file), "[Recent]\nDoc_1=e;\nDoc_2=b;\nDoc_3=d;\nDoc_4=c;\n");
}

TEST_F(LastDocuments, NameBeforeTheBreakIdentifies)
{
    CZelLastDocuments docs(m_file.c_str(), 3);
    docs.Section("S");
    docs.AddDocument("a;y");
    docs.AddDocument("b");
    docs.AddDocument("a;x");
    EXPECT_EQ(names(docs.GetAllDocuments()), (List{"a", "b"}));
    EXPECT_EQ(zeltest::readFile(m_file), "[S]\nDoc_1=a;x\nDoc_2=b;\n");

    docs.RemoveDocument("a;whatever");
    EXPECT_EQ(zeltest::readFile(m_file), "[S]\nDoc_1=b;\nDoc_2=\n");
    docs.RemoveAllDocuments();
    EXPECT_TRUE(docs.GetAllDocuments().empty());
    EXPECT_EQ(zeltest::readFile(m_file), "[S]\nDoc_1=\nDoc_2=\n"); // deleted entries are empty values
}

TEST_F(LastDocuments, ControlCharactersAndUtf8)
{
    CZelLastDocuments docs(m_file.c_str(), 4);
    docs.Section("S");
    docs.AddDocument("two\nlines");
    docs.AddDocument("tab\there");
    docs.AddDocument("51\xC2\xB0 N/\xD0\xB0.txt"); // "°" and Cyrillic "а" both hold a 0xB0 byte
    EXPECT_EQ(names(docs.GetAllDocuments()), (List{"51\xC2\xB0 N/\xD0\xB0.txt", "tab here", "two\nlines"}));
    EXPECT_NE(zeltest::readFile(m_file).find("Doc_3=two\xB0lines;\n"), std::string::npos);
}

TEST_F(LastDocuments, HandEditedEntries)
{
    m_dir.write("recent.ini", "[S]\nDoc_1=no break\nDoc_2=b;\nDoc_3=\nDoc_4=d;\n");
    CZelLastDocuments docs(m_file.c_str(), 4);
    docs.Section("S");
    // An entry without ";" cuts to nothing; the list ends at the first empty entry.
    EXPECT_EQ(names(docs.GetAllDocuments()), (List{"", "b"}));
    EXPECT_EQ(docs.GetDocument(1), "b");
    EXPECT_EQ(docs.GetDocument(7), "");
}

TEST_F(LastDocuments, SharedThroughTheFileAndDefaults)
{
    CWinApp app("Office");
    CZelLastDocuments one(m_file.c_str());
    CZelLastDocuments two(m_file.c_str());
    EXPECT_EQ(one.GetNumberOfEntries(), 4u);
    one.AddDocument("x");
    EXPECT_EQ(names(two.GetAllDocuments()), (List{"x"}));
    EXPECT_EQ(one.GetSection(), "Office");
    EXPECT_EQ(zeltest::readFile(m_file), "[Office]\nDoc_1=x;\n");
}

TEST_F(LastDocuments, CheckRemovesMissingFiles)
{
    CZelLastDocuments docs(m_file.c_str(), 4);
    docs.Section("S");
    auto kept = m_dir.write("kept.txt", "x");
    docs.AddDocument(kept.c_str());
    docs.AddDocument(m_dir.file("gone.txt").c_str());
    docs.AddDocument(kept.c_str());
    docs.AddDocument(m_dir.file("gone too.txt").c_str());
    EXPECT_EQ(names(docs.CheckAllDocuments()), (List{kept}));
}

TEST_F(LastDocuments, MenuFollowsTheList)
{
    CZelLastDocuments docs(m_file.c_str(), 3);
    docs.Section("S");
    docs.SetMenuItemLength(12);
    TestMenu menu;
    menu.InsertItem(-1, 100, "Open");
    menu.InsertItem(-1, 900, "Recent"); // the placeholder
    menu.InsertItem(-1, 101, "Exit");
    const UINT ids[] = {901, 902, 903, 0};
    int item = docs.CreateLastDocMenu(menu, 900, ids);

    EXPECT_EQ(menu.texts(), (List{"Open", "(No recent documents) (disabled)", "Exit"}));

    docs.AddDocument("short");
    docs.AddDocument("a rather long name");
    EXPECT_EQ(menu.texts(), (List{"Open", "&1  a rather ...", "&2  short", "Exit"}));
    EXPECT_EQ(docs.GetCurrentDocument(902u), "short");
    EXPECT_EQ(docs.GetCurrentDocument(static_cast<unsigned>(item), 901u), "a rather long name");
    EXPECT_EQ(docs.GetCurrentDocument(100u), "");
    EXPECT_EQ(docs.GetMenuPrompt(901u), "Open a rather long name");

    docs.RemoveDocument("a rather long name");
    EXPECT_EQ(menu.texts(), (List{"Open", "&1  short", "Exit"}));
    docs.RemoveAllDocuments();
    EXPECT_EQ(menu.texts(), (List{"Open", "(No recent documents) (disabled)", "Exit"}));
    EXPECT_EQ(docs.GetMenuPrompt(901u), "");
}

TEST_F(LastDocuments, MenuTextRule)
{
    CZelLastDocuments docs(m_file.c_str());
    EXPECT_EQ(docs.MenuText(3, "doc"), "&3  doc");
    docs.SetTab(0);
    docs.SetMenuItemLength(5);
    EXPECT_EQ(docs.MenuText(1, "abcd"), "&1abc ...");
    EXPECT_EQ(docs.MenuText(1, "abc"), "&1abc");
    docs.SetMenuItemLength(4);
    EXPECT_EQ(docs.MenuText(1, "a\xC3\xA4"), "&1a ..."); // never inside a character
}

} // namespace
