// English texts of the frame.
#include <Zel260/platform/ResourceModule.h>
#include <Zel260/resources/ZelFrameResourceIds.h>

namespace {

const CZelStringTableRegistrar g_frameStrings{
    {IDS_ZEL_BOOLEAN_YES, "Yes"},   {IDS_ZEL_BOOLEAN_NO, "No"}, {IDS_ZEL_BOOLEAN_TRUE, "True"},
    {IDS_ZEL_BOOLEAN_FALSE, "False"}, {IDS_ZEL_BOOLEAN_ON, "On"}, {IDS_ZEL_BOOLEAN_OFF, "Off"},
};

} // namespace
