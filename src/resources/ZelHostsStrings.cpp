// The texts of dialogs and views in the library's string table.
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/resources/ZelHostsResourceIds.h>

namespace {

const CZelStringTableRegistrar registrar{
    {IDS_ZEL_PRINTING_TITLE, "Printing"},
    {IDS_ZEL_PRINTING_PAGE, "Printing page %d ..."},
};

} // namespace
