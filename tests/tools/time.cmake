# zelconv time and leapseconds. Every case runs in a fixed zone and with a settings
# file of its own, so that neither the machine's zone nor the user's settings
# change the output.
set(_time_profile_dir ${CMAKE_CURRENT_BINARY_DIR}/zelconv-time)
file(MAKE_DIRECTORY ${_time_profile_dir})

function(zelconv_time_test name zone)
  zelconv_test(NAME ${name} ${ARGN})
  set_tests_properties(zelconv.${name} PROPERTIES ENVIRONMENT "TZ=${zone}")
endfunction()

zelconv_time_test(time_mjd_to_text UTC
  ARGS time 44244 --from mjd --to text --template 17 --profile ${_time_profile_dir}/a.ini
  EXPECT "^06\\.01\\.1980 00:00:00\n$")
zelconv_time_test(time_text_to_mjd Europe/Zurich
  ARGS time "02/03/2007 13:45:10" --from text --to mjd --template 1 --profile ${_time_profile_dir}/b.ini
  EXPECT "^54161\\.57303240741\n$")
zelconv_time_test(time_text_by_format_to_stamp America/New_York
  ARGS time "2007-03-02 13:45:10" --from text --to stamp --format "%Y-%m-%d %H:%M:%S" --profile ${_time_profile_dir}/c.ini
  EXPECT "^070302\\.134510\n$")
zelconv_time_test(time_stamp_to_text_cut UTC
  ARGS time 070302.134510 --from stamp --to text --template 2 --round 129 --profile ${_time_profile_dir}/d.ini
  EXPECT "^03/02/2007 1:45: PM\n$")
zelconv_time_test(time_gps_to_text Asia/Kolkata
  ARGS time 1930 0 --from gps --to text --format "%Y-%m-%d %H:%M:%S" --profile ${_time_profile_dir}/e.ini
  EXPECT "^2017-01-01 00:00:00\n$")
zelconv_time_test(time_mjd_to_gps UTC
  ARGS time 57755.5 --from mjd --to gps --profile ${_time_profile_dir}/f.ini
  EXPECT "^1930 129600\n$")
zelconv_time_test(time_mjdutc_moves_by_the_zone Asia/Kolkata
  ARGS time 54161.5 --from mjd --to mjdutc --profile ${_time_profile_dir}/g.ini
  EXPECT "^54161\\.729166666664\n$")
zelconv_time_test(time_out_of_range UTC
  ARGS time 10 --from mjd --to text --profile ${_time_profile_dir}/h.ini
  FAIL)
zelconv_time_test(time_bad_field UTC
  ARGS time "2. Mar 2007" --from text --to mjd --template 24 --profile ${_time_profile_dir}/i.ini
  FAIL)
zelconv_time_test(time_unknown_form UTC
  ARGS time 1 --from julian --to mjd --profile ${_time_profile_dir}/j.ini
  FAIL)
zelconv_time_test(time_help UTC
  ARGS time --help
  EXPECT "--from FORM.*--to FORM.*--template N.*--format STRFTIME.*--round N.*--profile FILE")

zelconv_time_test(leapseconds_built_in UTC
  ARGS leapseconds --profile ${_time_profile_dir}/k.ini
  EXPECT "^44239 1980-01-01 0\n44786 1981-07-01 1\n.*\n51179 1999-01-01 13\n53736 2006-01-01 14\n$")
if(EXISTS /usr/share/zoneinfo/leap-seconds.list)
  zelconv_time_test(leapseconds_import UTC
    ARGS leapseconds --import /usr/share/zoneinfo/leap-seconds.list --profile ${_time_profile_dir}/l.ini
    EXPECT "53736 2006-01-01 14\n54832 2009-01-01 15\n56109 2012-07-01 16\n57204 2015-07-01 17\n57754 2017-01-01 18\n$")
endif()
zelconv_time_test(leapseconds_help UTC
  ARGS leapseconds --help
  EXPECT "--import FILE")
