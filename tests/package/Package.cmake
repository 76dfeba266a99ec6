# Installs into a folder of the build tree and builds hosts against it. A sanitizer would have to be
# linked into the hosts too.
if(ZEP_SANITIZE)
  return()
endif()
set(package ${CMAKE_CURRENT_BINARY_DIR}/package)
add_test(NAME package.Install
         COMMAND ${CMAKE_COMMAND} --install ${PROJECT_BINARY_DIR} --prefix ${package}/prefix)
set_tests_properties(package.Install PROPERTIES FIXTURES_SETUP package LABELS package)

# package_host(Name folder option...): builds and tests the host of that folder.
function(package_host name folder)
  add_test(NAME package.${name}
           COMMAND ${CMAKE_CTEST_COMMAND}
                   --build-and-test ${CMAKE_CURRENT_SOURCE_DIR}/package/${folder} ${package}/${name}
                   --build-generator ${CMAKE_GENERATOR}
                   --build-options -DCMAKE_PREFIX_PATH=${package}/prefix ${ARGN}
                   --test-command ${CMAKE_CTEST_COMMAND} --output-on-failure --no-tests=error)
  set_tests_properties(package.${name} PROPERTIES
                       FIXTURES_REQUIRED package LABELS package TIMEOUT 600)
endfunction()

set(compiler -DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER})
package_host(Host . ${compiler})
# Here nothing finds Qt Widgets.
package_host(Core core ${compiler} -DCMAKE_DISABLE_FIND_PACKAGE_Qt6Widgets=ON)
package_host(Within within ${compiler} -DZEP_SOURCE=${PROJECT_SOURCE_DIR})
find_program(ZEP_CLANG clang++)
if(ZEP_CLANG AND NOT CMAKE_CXX_COMPILER_ID MATCHES Clang)
  package_host(ClangHost . -DCMAKE_CXX_COMPILER=${ZEP_CLANG})
endif()
