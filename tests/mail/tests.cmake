# The real-server test runs a fixture script that lives beside the tests.
if(core_target)
  target_compile_definitions(${core_target} PRIVATE MAIL_TEST_DIR="${CMAKE_CURRENT_LIST_DIR}")
endif()
