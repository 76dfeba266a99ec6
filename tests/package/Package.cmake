# Installs into a folder of the build tree and builds a host against it. A sanitizer would have to be
# linked into the host too.
if(ZEP_SANITIZE)
  return()
endif()
set(package ${CMAKE_CURRENT_BINARY_DIR}/package)
add_test(NAME package.Install
         COMMAND ${CMAKE_COMMAND} --install ${PROJECT_BINARY_DIR} --prefix ${package}/prefix)
add_test(NAME package.Host
         COMMAND ${CMAKE_CTEST_COMMAND}
                 --build-and-test ${CMAKE_CURRENT_SOURCE_DIR}/package ${package}/host
                 --build-generator ${CMAKE_GENERATOR}
                 --build-options -DCMAKE_PREFIX_PATH=${package}/prefix
                                 -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}
                 --test-command ${CMAKE_CTEST_COMMAND} --output-on-failure --no-tests=error)
set_tests_properties(package.Install PROPERTIES FIXTURES_SETUP package LABELS package)
set_tests_properties(package.Host PROPERTIES FIXTURES_REQUIRED package LABELS package TIMEOUT 600)
