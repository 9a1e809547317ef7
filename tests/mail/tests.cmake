# The real-server test runs a fixture script that lives beside the tests.
if(core_target)
  target_compile_definitions(${core_target} PRIVATE MAIL_TEST_DIR="${CMAKE_CURRENT_LIST_DIR}")
  # The Date header is UTC whatever the zone of the process. Zurich and Sydney
  # between them have daylight saving time in force in every month.
  foreach(zone Europe/Zurich Australia/Sydney America/New_York Asia/Kolkata)
    string(REPLACE "/" "_" zone_name ${zone})
    add_test(NAME mail.header_date_in_${zone_name} COMMAND ${core_target} --gtest_filter=MailMessage.*:MimeContainer.*)
    set_tests_properties(mail.header_date_in_${zone_name} PROPERTIES LABELS core TIMEOUT 60 ENVIRONMENT "TZ=${zone}")
  endforeach()
endif()
