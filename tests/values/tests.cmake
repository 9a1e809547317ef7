# The angle cross-check runs against GeographicLib's DMS when it is installed
# (Debian libgeographiclib-dev; a test-only dependency).
find_library(ZEL260_GEOGRAPHICLIB NAMES GeographicLib Geographic)
find_path(ZEL260_GEOGRAPHICLIB_INCLUDE GeographicLib/DMS.hpp)
if(core_target AND ZEL260_GEOGRAPHICLIB AND ZEL260_GEOGRAPHICLIB_INCLUDE)
  target_link_libraries(${core_target} PRIVATE ${ZEL260_GEOGRAPHICLIB})
  target_include_directories(${core_target} PRIVATE ${ZEL260_GEOGRAPHICLIB_INCLUDE})
  target_compile_definitions(${core_target} PRIVATE ZEL260_HAVE_GEOGRAPHICLIB=1)
endif()
