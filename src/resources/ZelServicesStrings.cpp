// The application services' texts in the library's string table.
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/resources/ZelServicesResourceIds.h>

namespace {

const CZelStringTableRegistrar registrar{
    {IDS_ZEL_LASTDOC_EMPTY, "(No recent documents)"},
    {IDS_ZEL_LASTDOC_PROMPT_PREFIX, "Open "},
};

} // namespace
