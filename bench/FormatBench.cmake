# Angle text against GeographicLib's DMS, when it is installed.
find_library(ZEL260_GEOGRAPHICLIB NAMES GeographicLib Geographic)
find_path(ZEL260_GEOGRAPHICLIB_INCLUDE GeographicLib/DMS.hpp)
if(ZEL260_GEOGRAPHICLIB AND ZEL260_GEOGRAPHICLIB_INCLUDE)
  target_link_libraries(${bench_target} PRIVATE ${ZEL260_GEOGRAPHICLIB})
  target_include_directories(${bench_target} PRIVATE ${ZEL260_GEOGRAPHICLIB_INCLUDE})
  target_compile_definitions(${bench_target} PRIVATE ZEL260_BENCH_GEOGRAPHICLIB=1)
endif()
