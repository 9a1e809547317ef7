# zelconv angle and distance: text parsed by the library in one unit, written in another.
zelconv_test(NAME angle.dms_to_decdeg ARGS angle "12 30 15.5" --from dms --to decdeg EXPECT "^ 12\\.504306\n$")
zelconv_test(NAME angle.number ARGS angle "12 30 15.5" --from 12 --to 11 --number EXPECT "^12\\.504305555555556\n$")
zelconv_test(NAME angle.symbols_read_alike ARGS angle "12°30'15.5\"" --from dms --to decdms --number
             EXPECT "^12\\.301550000000001\n$")
zelconv_test(NAME angle.latitude_south ARGS angle "47 30 0 S" --from dms --to dms --lat --precision 2
             EXPECT "^  47° 30' 00\\.00\" S\n$")
zelconv_test(NAME angle.longitude_west ARGS angle -8.25 --from decdeg --to dms --lon EXPECT "^   8° 15' 00\\.0\" W\n$")
zelconv_test(NAME angle.latitude_zero_is_north ARGS angle 0 --from decdeg --to decdeg --lat --precision 1
             EXPECT "^ 0\\.0 N\n$")
zelconv_test(NAME angle.precision_zero_keeps_five_decimals ARGS angle "12 30 15.54" --from dms --to dms --precision 0
             EXPECT "^  12° 30' 15\\.54000\"\n$")
zelconv_test(NAME angle.grad_to_gon ARGS angle 100 --from grad --to gon --precision 3 EXPECT "^ 100g 00c 00\\.000cc\n$")
zelconv_test(NAME angle.limit_at_full_circle ARGS angle 359.9999999 --from decdeg --to dms --precision 1 --limit
             EXPECT "^   0° 00' 00\\.0\"\n$")
zelconv_test(NAME angle.no_limit_at_full_circle ARGS angle 359.9999999 --from decdeg --to dms --precision 1
             EXPECT "^ 360° 00' 00\\.0\"\n$")
zelconv_test(NAME angle.quarter_revolution ARGS angle 0.25 --from rev --to rad --number EXPECT "^1\\.5707963267948966\n$")
zelconv_test(NAME angle.minus_zero_degrees_is_positive ARGS angle "-0 30 0" --from dms --to decdeg --number
             EXPECT "^0\\.5\n$")
zelconv_test(NAME angle.decimal_in_dms_reads_degrees ARGS angle 12.5 --from dms --to decdeg --number EXPECT "^12\n$")
zelconv_test(NAME angle.lower_case_s_no_effect ARGS angle "12 30 0 s" --from dms --to decdeg --number EXPECT "^12\\.5\n$")
zelconv_test(NAME angle.garbage_is_zero ARGS angle "abc" --from dms --to decdeg --number EXPECT "^0\n$")
zelconv_test(NAME angle.unknown_unit ARGS angle 1 --from 99 --to 11 FAIL)
zelconv_test(NAME angle.bad_unit_name ARGS angle 1 --from furlong --to 11 FAIL)
zelconv_test(NAME angle.lat_and_lon ARGS angle 1 --from 11 --to 11 --lat --lon FAIL)
zelconv_test(NAME angle.help ARGS angle --help EXPECT "--lat .*--lon .*--number")
zelconv_test(NAME distance.us_foot ARGS distance 1 --from fts --to m --number EXPECT "^0\\.30480060960121919\n$")
zelconv_test(NAME distance.international_foot ARGS distance 1000 --from m --to 23 EXPECT "^ 3280\\.839895\n$")
zelconv_test(NAME distance.strtod_prefix ARGS distance "12.5 m" --from m --to m EXPECT "^ 12\\.500000\n$")
zelconv_test(NAME distance.unknown_unit ARGS distance 1 --from m --to 19 FAIL)
zelconv_test(NAME distance.help ARGS distance --help EXPECT "--number")
