# The time tests again under zones with daylight saving, west of Greenwich and at a
# half hour, so that every zone-dependent result is checked where it differs.
if(core_target)
  foreach(zone UTC Europe/Zurich America/New_York Asia/Kolkata)
    string(REPLACE "/" "_" suffix ${zone})
    gtest_discover_tests(${core_target} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
      TEST_SUFFIX ".TZ_${suffix}"
      PROPERTIES LABELS core TIMEOUT 300 ENVIRONMENT "TZ=${zone}")
  endforeach()

  # ERFA (liberfa-dev) cross-checks the calendar and the leap seconds; without it
  # those tests are not built at all.
  find_path(ERFA_INCLUDE_DIR erfa.h)
  find_library(ERFA_LIBRARY erfa)
  if(ERFA_INCLUDE_DIR AND ERFA_LIBRARY)
    target_include_directories(${core_target} PRIVATE ${ERFA_INCLUDE_DIR})
    target_link_libraries(${core_target} PRIVATE ${ERFA_LIBRARY})
    target_compile_definitions(${core_target} PRIVATE ZEL_HAVE_ERFA=1)
  else()
    message(STATUS "ERFA not found: the time tests run without their ERFA cross-checks")
  endif()
endif()
