# The threaded search reports to a real window: a QWidget on the benchmark's
# thread, served by the Qt window layer, as in an application.
if(TARGET zel260widgets)
  target_link_libraries(${bench_target} PRIVATE zel260widgets Qt6::Widgets)
  target_compile_definitions(${bench_target} PRIVATE ZEL260_BENCH_QT=1)
endif()
