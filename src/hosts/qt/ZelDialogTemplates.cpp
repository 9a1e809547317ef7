#include <Zel260/hosts/qt/ZelDialogTemplates.h>

#include <QFontMetrics>
#include <QWidget>

#include <map>
#include <string>
#include <utility>

namespace {

struct Registry {
    std::map<std::pair<HINSTANCE, UINT>, ZelDialogTemplate> byId;
    std::map<std::pair<HINSTANCE, std::string>, UINT> byName;
};

Registry& registry()
{
    static auto* r = new Registry;
    return *r;
}

} // namespace

BOOL ZelRegisterDialogTemplate(HINSTANCE module, UINT id, ZelDialogTemplate tmpl, const char* name)
{
    if (!module || !tmpl.build)
        return FALSE;
    registry().byId[{module, id}] = std::move(tmpl);
    if (name && *name)
        registry().byName[{module, std::string(name)}] = id;
    return TRUE;
}

const ZelDialogTemplate* ZelFindDialogTemplate(HINSTANCE module, UINT id)
{
    auto& m = registry().byId;
    auto it = m.find({module, id});
    return it == m.end() ? nullptr : &it->second;
}

const ZelDialogTemplate* ZelFindDialogTemplate(HINSTANCE module, const char* name)
{
    if (!name)
        return nullptr;
    auto& m = registry().byName;
    auto it = m.find({module, std::string(name)});
    return it == m.end() ? nullptr : ZelFindDialogTemplate(module, it->second);
}

void ZelMapDialogRect(const QWidget* dialog, RECT* rect)
{
    if (!dialog || !rect)
        return;
    const QFontMetrics fm(dialog->font());
    const int baseX = std::max(1, fm.horizontalAdvance("ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz") / 52);
    const int baseY = std::max(1, fm.height());
    rect->left = rect->left * baseX / 4;
    rect->right = rect->right * baseX / 4;
    rect->top = rect->top * baseY / 8;
    rect->bottom = rect->bottom * baseY / 8;
}
