# zelconv format: the exact text of CZelFormat for a number in a unit.
zelconv_test(NAME format.decimal ARGS format 12.5 --unit 11 EXPECT "^ 12\\.500000\n$")
zelconv_test(NAME format.decimal_precision ARGS format 12.5 --unit 11 --precision 3 EXPECT "^ 12\\.500\n$")
zelconv_test(NAME format.decimal_trim ARGS format 12.5 --unit 11 --trim-trailing EXPECT "^ 12\\.5\n$")
zelconv_test(NAME format.decimal_negative ARGS format -0.25 --unit 22 --precision 2 EXPECT "^-0\\.25\n$")
zelconv_test(NAME format.precision_zero_is_six ARGS format 1 --unit 18 --precision 0 EXPECT "^ 1\\.000000\n$")
zelconv_test(NAME format.dms ARGS format 45.3015 --unit 12 --precision 5 EXPECT "^  45° 30' 15\\.00000\"\n$")
zelconv_test(NAME format.dms_negative ARGS format -45.3015 --unit 12 --precision 7 EXPECT "^- 45° 30' 15\\.00\"\n$")
zelconv_test(NAME format.dms_carry ARGS format 10.595999 --unit 12 EXPECT "^  11° 00' 00\\.0\"\n$")
zelconv_test(NAME format.dms_no_symbols ARGS format 5.0105 --unit 12 --precision 7 --no-symbols EXPECT "^   5 01 05\\.00\n$")
zelconv_test(NAME format.dms_trim_leading ARGS format 0.0005 --unit 12 --trim-leading EXPECT "^  5\\.0\"\n$")
zelconv_test(NAME format.gon ARGS format 123.4567 --unit 15 EXPECT "^ 123g 45c 67\\.0cc\n$")
zelconv_test(NAME format.sec_only ARGS format 1.0105 --unit 12 --sec-only --precision 1 EXPECT "^ 3665\\.0\n$")
zelconv_test(NAME format.template_decimal ARGS format 2.5 --unit 11 --precision 2
             --template "x%[%.*f %U%]%[%degOrG%]%?" EXPECT "^x2\\.50 dec\n$")
zelconv_test(NAME format.template_dms ARGS format 2.3015 --unit 12
             --template "x%[%.*f %U%]%[%degOrG%minOrC%secOrCC%]%?" EXPECT "^x   2°30'15\\.0\"\n$")
zelconv_test(NAME format.template_unsafe ARGS format 1.5 --unit 11 --template "%s %n %f"
             EXPECT "^%s %n 1\\.500000\n$")
zelconv_test(NAME format.absurd_precision_no_text ARGS format 1 --unit 11 --precision 2147483647 EXPECT "^\\.0\n$")
zelconv_test(NAME format.help ARGS format --help EXPECT "--template T")
zelconv_test(NAME format.needs_unit ARGS format 1.5 FAIL)
zelconv_test(NAME format.rejects_text ARGS format abc --unit 11 FAIL)
zelconv_test(NAME format.rejects_unknown_option ARGS format 1 --unit 11 --bogus FAIL)
zelconv_test(NAME demo.every_unit ARGS demo
             EXPECT "    12  DMS +123° 27' 24\\.4408\".*    16  packed gon.*    23  international foot +4050\\.4193 fti\n")
