# What every target of this project is compiled with.
add_library(zep_options INTERFACE)
target_compile_options(zep_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -fno-semantic-interposition)
set(checked $<OR:$<CONFIG:Debug>,$<BOOL:${ZEP_SANITIZE}>>)
target_compile_definitions(zep_options INTERFACE QT_NO_KEYWORDS
  $<${checked}:_GLIBCXX_ASSERTIONS> $<${checked}:QT_FORCE_ASSERTS>)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  # Qt's headers reach across translation units in ways clang 14 calls unused.
  target_compile_options(zep_options INTERFACE -Wno-unused-private-field)
endif()
if(CMAKE_UNITY_BUILD AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # Unnamed namespaces of sources that a unit includes count as those of headers.
  add_compile_options(-Wno-subobject-linkage)
endif()
if(ZEP_WERROR)
  target_compile_options(zep_options INTERFACE -Werror)
endif()
if(ZEP_SANITIZE)
  add_compile_options(-fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  add_link_options(-fsanitize=address,undefined)
  # vptr needs run-time type information of Qt's own classes across libraries.
  add_compile_options(-fno-sanitize=vptr)
endif()
if(ZEP_FUZZ)
  # Counts what is reached, in the libraries too: a fuzzer that sees nothing finds little.
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
