# The calendar against ERFA (liberfa-dev), when it is installed.
find_library(ZEL260_ERFA erfa)
find_path(ZEL260_ERFA_INCLUDE erfa.h)
if(ZEL260_ERFA AND ZEL260_ERFA_INCLUDE)
  target_link_libraries(${bench_target} PRIVATE ${ZEL260_ERFA})
  target_include_directories(${bench_target} PRIVATE ${ZEL260_ERFA_INCLUDE})
  target_compile_definitions(${bench_target} PRIVATE ZEL260_BENCH_ERFA=1)
endif()
