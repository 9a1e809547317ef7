# zelconv find over a small tree that the setup test makes afresh.
set(find_tree ${CMAKE_CURRENT_BINARY_DIR}/find-tree)
add_test(NAME zelconv.find.setup COMMAND sh -c
  "rm -rf '${find_tree}' && mkdir -p '${find_tree}/a/deep' '${find_tree}/b' '${find_tree}/c d' && \
   printf abc > '${find_tree}/top.txt' && printf 1 > '${find_tree}/a/one.txt' && \
   printf 12345 > '${find_tree}/a/deep/two.txt' && printf 12 > '${find_tree}/b/three.TXT' && \
   printf 1234567 > '${find_tree}/b/data.dat' && : > '${find_tree}/c d/é.txt' && \
   ln -s .. '${find_tree}/a/up' && ln -s missing '${find_tree}/b/dangling.txt'")
set_tests_properties(zelconv.find.setup PROPERTIES FIXTURES_SETUP find_tree LABELS "core;tools")

zelconv_test(NAME find.flat ARGS find ${find_tree}/*.txt EXPECT "^[^\n]*find-tree/top.txt\n$")
zelconv_test(NAME find.recursive_by_full_name ARGS find ${find_tree}/*.TXT --recursive --sort fullname
  EXPECT "/a/deep/two.txt\n[^\n]*/a/one.txt\n[^\n]*/b/three.TXT\n[^\n]*/c d/é.txt\n[^\n]*/top.txt\n$")
zelconv_test(NAME find.recursive_by_size ARGS find ${find_tree}/*.txt --recursive --sort size
  EXPECT "é.txt\n[^\n]*one.txt\n[^\n]*three.TXT\n[^\n]*top.txt\n[^\n]*two.txt\n$")
zelconv_test(NAME find.count ARGS find ${find_tree}/*.txt --recursive --count EXPECT "^5\n$")
zelconv_test(NAME find.patterns_equal_but_for_case_count_once ARGS find ${find_tree}/b/*.dat --pattern t* --pattern T* --count
  EXPECT "^2\n$")
zelconv_test(NAME find.missing_folder_fails ARGS find ${find_tree}/none/*.txt FAIL)
zelconv_test(NAME find.bad_sort_fails ARGS find ${find_tree}/*.txt --sort sideways FAIL)
zelconv_test(NAME find.pattern_with_separator_fails ARGS find ${find_tree}/*.txt --pattern a/b FAIL)
zelconv_test(NAME find.help ARGS find --help EXPECT "--recursive.*--pattern P.*--sort MODE.*--count")
set_tests_properties(zelconv.find.flat zelconv.find.recursive_by_full_name zelconv.find.recursive_by_size
  zelconv.find.count zelconv.find.patterns_equal_but_for_case_count_once zelconv.find.missing_folder_fails
  PROPERTIES FIXTURES_REQUIRED find_tree)
