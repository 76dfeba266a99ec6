# discover_suites(target ring [launcher]): a test `ring.Suite` for each suite of a GoogleTest program,
# listed after the program is linked. A process for each suite keeps suites apart and costs far less
# than one for each case. Only running goes through the launcher: listing needs no display.
function(discover_suites target ring)
  set(suites ${CMAKE_CURRENT_BINARY_DIR}/${target}_suites.cmake)
  add_custom_command(TARGET ${target} POST_BUILD BYPRODUCTS ${suites} VERBATIM
    COMMAND ${CMAKE_COMMAND} -D PROGRAM=$<TARGET_FILE:${target}> -D RING=${ring}
            -D LAUNCHER=${ARGN} -D OUTPUT=${suites} -P ${PROJECT_SOURCE_DIR}/cmake/ListSuites.cmake)
  set(include ${CMAKE_CURRENT_BINARY_DIR}/${target}_tests.cmake)
  file(WRITE ${include} "if(EXISTS [[${suites}]])\n  include([[${suites}]])\n"
                        "else()\n  add_test(${ring}.IsNotBuilt false)\nendif()\n")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES ${include})
endfunction()
