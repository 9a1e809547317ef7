#include <Zel260/platform/ResourceModule.h>
#include <Zel260/resources/ZelTimeResourceIds.h>

namespace {

const CZelStringTableRegistrar registrar{
    {IDS_ZEL_TIME_INVALID_DATETIME, "Invalid DateTime"},
};

} // namespace
