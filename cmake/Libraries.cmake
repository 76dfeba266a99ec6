# zepcore: everything that needs no window system. zep: panel, context, GLX.
set(zep_core_rooms framework scene appearance objects converters)
set(core_files)
foreach(room IN LISTS zep_core_rooms)
  file(GLOB_RECURSE room_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/${room}/*.cpp
       ${PROJECT_SOURCE_DIR}/${room}/*.h)
  list(APPEND core_files ${room_files})
endforeach()
file(GLOB view_files CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/view/*.cpp ${PROJECT_SOURCE_DIR}/view/*.h)

# The files of view/ that know no window system belong to zepcore.
set(view_core_files ${view_files})
list(FILTER view_core_files INCLUDE REGEX "/view/(Camera|Actor)[A-Za-z]*\\.")
list(REMOVE_ITEM view_files ${view_core_files})

add_library(zepcore ${core_files} ${view_core_files})
add_library(ZEP::Core ALIAS zepcore)
target_include_directories(zepcore PUBLIC
  $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include/zep>
  $<INSTALL_INTERFACE:include/zep>)
target_compile_features(zepcore PUBLIC cxx_std_20)
target_link_libraries(zepcore PUBLIC Qt6::Core Qt6::Gui OpenGL::OpenGL OpenGL::GLU
                      PRIVATE $<BUILD_INTERFACE:zep_options>)
target_precompile_headers(zepcore PRIVATE <QObject> <QString> <QImage> <vector> <memory> <functional>)

add_library(zep ${view_files})
add_library(ZEP::ZEP ALIAS zep)
target_link_libraries(zep PUBLIC zepcore Qt6::Widgets Qt6::PrintSupport
                      PRIVATE $<BUILD_INTERFACE:zep_options> OpenGL::GLX X11::X11)
set_target_properties(zepcore zep PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION 0)
set_target_properties(zepcore PROPERTIES EXPORT_NAME Core)
set_target_properties(zep PROPERTIES EXPORT_NAME ZEP)

# Ninja knows the headers of a target's moc step from its last run only: one that is new to a globbed
# list would not be looked at. The step runs anew when the list has changed.
foreach(library IN ITEMS zepcore zep)
  get_target_property(headers ${library} SOURCES)
  list(FILTER headers INCLUDE REGEX "\\.h$")
  if(NOT "${headers}" STREQUAL "${${library}_HEADERS_SEEN}")
    file(REMOVE ${CMAKE_CURRENT_BINARY_DIR}/${library}_autogen/timestamp)
  endif()
  set(${library}_HEADERS_SEEN "${headers}" CACHE INTERNAL "")
endforeach()
