#include <Zel260/platform/ResourceModule.h>
#include <Zel260/resources/ZelValuesResourceIds.h>

namespace {

const CZelStringTableRegistrar registrar{
    {IDS_ZEL_DEGREE_SYMBOL, "\xC2\xB0"},
    {IDS_ZEL_HEMISPHERE_NORTH, "N"},
    {IDS_ZEL_HEMISPHERE_SOUTH, "S"},
    {IDS_ZEL_HEMISPHERE_EAST, "E"},
    {IDS_ZEL_HEMISPHERE_WEST, "W"},
    {IDS_ZEL_UNIT_DEGREE, "Degree [ dec ]"},
    {IDS_ZEL_UNIT_DMS, "DMS [ dms ]"},
    {IDS_ZEL_UNIT_DECIMAL_DMS, "Decimal DMS [ dms ]"},
    {IDS_ZEL_UNIT_GRAD, "Grad [ grad ]"},
    {IDS_ZEL_UNIT_GON, "Gon [ gon ]"},
    {IDS_ZEL_UNIT_DECIMAL_GON, "Decimal Gon [ gon ]"},
    {IDS_ZEL_UNIT_REVOLUTION, "Revolution [ rev ]"},
    {IDS_ZEL_UNIT_RADIAN, "Radians [ rad ]"},
    {IDS_ZEL_UNIT_METRE, "Metres [ m ]"},
    {IDS_ZEL_UNIT_US_SURVEY_FOOT, "US Survey feet [ fts ]"},
    {IDS_ZEL_UNIT_INTERNATIONAL_FOOT, "International feet [ fti ]"},
};

} // namespace
