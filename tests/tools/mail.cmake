# zelconv mail: usage errors, a refused connection, and a whole mail through a small
# SMTP server that the check script runs on a free loopback port.
zelconv_test(NAME mail.help ARGS mail --help EXPECT "--attach FILE.*--profile FILE")
# A failing run must match its message and its exit status (zelconv_test's FAIL
# together with EXPECT would invert the match), so these print the status after the
# output and match both.
function(zelconv_mail_failure_test name status regex)
  add_test(NAME zelconv.${name}
    COMMAND sh -c "\"$@\" 2>&1; echo \"exit status $?\"" sh $<TARGET_FILE:zelconv> ${ARGN})
  set_tests_properties(zelconv.${name} PROPERTIES LABELS "core;tools" TIMEOUT 60
    PASS_REGULAR_EXPRESSION "${regex}.*exit status ${status}")
endfunction()

zelconv_mail_failure_test(mail.needs_recipient 2 "mail needs --to ADDR"
  mail --server 127.0.0.1 --from a@site --subject s)
zelconv_mail_failure_test(mail.bad_address 2 "not a valid mail address: \"a b@site\""
  mail --server 127.0.0.1 --from a@site --to "a b@site" --subject s)
zelconv_mail_failure_test(mail.bad_port 2 "--port must be a number"
  mail --server 127.0.0.1 --port 70000 --from a@site --to b@site --subject s)
zelconv_mail_failure_test(mail.missing_attachment 2 "cannot read attachment /nonexistent/x.bin"
  mail --server 127.0.0.1 --from a@site --to b@site --subject s --attach /nonexistent/x.bin)
# Port 1 on loopback: nothing listens there on a build machine.
zelconv_mail_failure_test(mail.connection_refused 1 "mail not sent: 0:Unable to connect to server\\."
  mail --server 127.0.0.1 --port 1 --from a@site --to b@site --subject s)

add_test(NAME zelconv.mail.sends_through_loopback_server
  COMMAND /usr/bin/python3 ${CMAKE_CURRENT_LIST_DIR}/mail_zelconv_check.py $<TARGET_FILE:zelconv>
          ${CMAKE_CURRENT_BINARY_DIR}/zelconv-mail-check)
set_tests_properties(zelconv.mail.sends_through_loopback_server PROPERTIES LABELS "core;tools" TIMEOUT 60
  PASS_REGULAR_EXPRESSION "mail check passed")
zelconv_test(NAME mail.bad_timeout ARGS mail --server 127.0.0.1 --timeout -1 --from a@b.c --to d@e.f --subject s
  FAIL EXPECT "--timeout must be")
