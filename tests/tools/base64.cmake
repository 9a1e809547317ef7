# zelconv base64: the filter's output, its line rule and its usage errors. CTest ends
# an output without a final line break with one, hence the "\n?".
set(b64_dir ${CMAKE_CURRENT_BINARY_DIR}/base64-input)
file(WRITE ${b64_dir}/man.txt "Man")
file(WRITE ${b64_dir}/m.txt "M")
file(WRITE ${b64_dir}/empty.txt "")
file(WRITE ${b64_dir}/man6.txt "ManManManManManMan")
file(WRITE ${b64_dir}/encoded.txt "TWFu\r\nTWE=")
file(WRITE ${b64_dir}/broken.txt "TWF\nu")

zelconv_test(NAME base64.encode_group ARGS base64 encode STDIN ${b64_dir}/man.txt EXPECT "^TWFu\n?$")
zelconv_test(NAME base64.encode_pads ARGS base64 encode STDIN ${b64_dir}/m.txt EXPECT "^TQ==\n?$")
zelconv_test(NAME base64.encode_empty ARGS base64 encode STDIN ${b64_dir}/empty.txt EXPECT "^$")
# Three full lines with their breaks are 30 characters, so "==" follows the last break.
zelconv_test(NAME base64.encode_lines ARGS base64 encode --line-length 8 STDIN ${b64_dir}/man6.txt
  EXPECT "^TWFuTWFu\r\nTWFuTWFu\r\nTWFuTWFu\r\n==\n?$")
# Padding counts the line breaks: "TQ" fills a line of 2, the break makes it 4.
zelconv_test(NAME base64.encode_padding_counts_breaks ARGS base64 encode --line-length 2 STDIN ${b64_dir}/m.txt
  EXPECT "^TQ\r\n$")
zelconv_test(NAME base64.encode_one_line ARGS base64 encode --line-length=0 STDIN ${b64_dir}/man6.txt
  EXPECT "^TWFuTWFuTWFuTWFuTWFuTWFu\n?$")
zelconv_test(NAME base64.decode ARGS base64 decode STDIN ${b64_dir}/encoded.txt EXPECT "^ManMa\n?$")
zelconv_test(NAME base64.decode_break_inside_group ARGS base64 decode STDIN ${b64_dir}/broken.txt EXPECT "^Ma\n?$")
zelconv_test(NAME base64.help ARGS base64 --help EXPECT "--line-length N.*default 76")
zelconv_test(NAME base64.no_mode ARGS base64 FAIL)
zelconv_test(NAME base64.bad_mode ARGS base64 scramble FAIL)
zelconv_test(NAME base64.bad_line_length ARGS base64 encode --line-length -3 FAIL)
zelconv_test(NAME base64.line_length_for_decode ARGS base64 decode --line-length 4 FAIL)
# --profile is taken by every subcommand; encoding reads no setting from it.
zelconv_test(NAME base64.profile_option ARGS base64 encode --profile ${b64_dir}/none.ini STDIN ${b64_dir}/man.txt
  EXPECT "^TWFu\n?$")
