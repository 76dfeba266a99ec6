# Writes OUTPUT: a test for each suite that PROGRAM lists (see DiscoverSuites.cmake).
execute_process(COMMAND ${PROGRAM} --gtest_list_tests OUTPUT_VARIABLE listing
                COMMAND_ERROR_IS_FATAL ANY)
# A suite's line begins at the margin and ends in a dot, perhaps with a comment behind it.
string(REGEX MATCHALL "(^|\n)[^ \n]+\\.( +#[^\n]*)?" suites "${listing}")
set(tests "")
foreach(suite IN LISTS suites)
  string(REGEX REPLACE "^\n?([^ ]*)\\..*$" "\\1" suite "${suite}")
  string(APPEND tests
    "add_test([[${RING}.${suite}]] ${LAUNCHER} [[${PROGRAM}]] [[--gtest_filter=${suite}.*]])\n"
    "set_tests_properties([[${RING}.${suite}]] PROPERTIES LABELS ${RING} TIMEOUT 600)\n")
endforeach()
file(WRITE ${OUTPUT} "${tests}")
