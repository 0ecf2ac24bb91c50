# The command line: the programs `vexel`, `vexel-print`, `vexel-import` and `vexel-serve`, on nothing of
# the libraries but what they export.

file(GLOB host_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/apps/vexel/*.cpp")
if(NOT host_sources)
  return()
endif()

find_package(CLI11 2.1 REQUIRED)

# What several programs have, as objects: vexel_cli all of them, vexel_render those that draw a page.
function(vexel_add_shared target)
  list(TRANSFORM ARGN PREPEND "${PROJECT_SOURCE_DIR}/apps/vexel/")
  list(TRANSFORM ARGN APPEND ".cpp")
  set(host_sources "${host_sources}")
  list(REMOVE_ITEM host_sources ${ARGN})
  set(host_sources "${host_sources}" PARENT_SCOPE)
  add_library(${target} OBJECT ${ARGN})
  target_include_directories(${target} PUBLIC
    "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/apps/vexel" "${VEXEL_INCLUDE_DIR}")
  target_link_libraries(${target} PRIVATE vexel_options vexel_quick_build CLI11::CLI11)
endfunction()
vexel_add_shared(vexel_cli arguments host memory program)
vexel_add_shared(vexel_render other_program render)

find_library(VEXEL_GD_ARCHIVE NAMES libgd.a)
mark_as_advanced(VEXEL_GD_ARCHIVE)

# A program of the command line, in the folder of all programs.
function(vexel_add_program target name)
  add_executable(${target} ${ARGN})
  set_target_properties(${target} PROPERTIES OUTPUT_NAME ${name})
  target_link_libraries(${target} PRIVATE vexel_options vexel_cli CLI11::CLI11)
  # Shared, gd brings some fifty libraries for formats that no page has; to load them takes longer than
  # to draw one. Its archive brings the dozen functions that are called. (It is not
  # position-independent on Debian, so that the shared library cannot have it.)
  if(VEXEL_GD_ARCHIVE AND CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT VEXEL_SANITIZE)
    target_sources(${target} PRIVATE
      $<TARGET_OBJECTS:vexel_objects> $<TARGET_OBJECTS:vexel_kit_objects>)
    target_link_libraries(${target} PRIVATE "${VEXEL_GD_ARCHIVE}" m)
    target_link_options(${target} PRIVATE
      -static-libstdc++ -static-libgcc LINKER:--gc-sections)
  else()
    target_link_libraries(${target} PRIVATE vexel_kit)
    set_target_properties(${target} PROPERTIES
      INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
  endif()
endfunction()

vexel_add_program(vexel_host vexel ${host_sources})
target_link_libraries(vexel_host PRIVATE vexel_render)

# Files of areas are read by a library that brings a hundred others.
pkg_check_modules(gdal QUIET IMPORTED_TARGET gdal>=3.6)
if(gdal_FOUND)
  file(GLOB import_sources CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/apps/import/*.cpp" "${PROJECT_SOURCE_DIR}/apps/import/topology/*.cpp")
  list(REMOVE_ITEM import_sources "${PROJECT_SOURCE_DIR}/apps/import/main.cpp")
  add_library(vexel_import_objects OBJECT ${import_sources})
  target_include_directories(vexel_import_objects PUBLIC
    "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/apps/import" "${PROJECT_SOURCE_DIR}/apps/vexel"
    "${VEXEL_INCLUDE_DIR}")
  target_link_libraries(vexel_import_objects PRIVATE vexel_options PUBLIC PkgConfig::gdal)
  vexel_add_program(vexel_import vexel-import "${PROJECT_SOURCE_DIR}/apps/import/main.cpp")
  target_link_libraries(vexel_import PRIVATE vexel_import_objects)
else()
  message(STATUS "GDAL is not installed: no vexel-import")
endif()

# The viewer: the server's headers are large, and only one source includes them.
find_package(Boost 1.74 QUIET)
find_package(ZLIB QUIET)
find_package(Threads QUIET)
if(Boost_FOUND AND ZLIB_FOUND AND Threads_FOUND)
  file(GLOB serve_sources CONFIGURE_DEPENDS
    "${PROJECT_SOURCE_DIR}/apps/serve/*.cpp" "${PROJECT_SOURCE_DIR}/apps/serve/pages/*.cpp")
  list(REMOVE_ITEM serve_sources "${PROJECT_SOURCE_DIR}/apps/serve/main.cpp")
  add_library(vexel_serve_objects OBJECT ${serve_sources})
  target_include_directories(vexel_serve_objects PUBLIC
    "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/apps/vexel" "${VEXEL_INCLUDE_DIR}")
  target_link_libraries(vexel_serve_objects
    PRIVATE vexel_options Boost::headers PUBLIC ZLIB::ZLIB Threads::Threads)
  # Input of zlib's is const only by request.
  target_compile_definitions(vexel_serve_objects PRIVATE ZLIB_CONST)
  if(VEXEL_SANITIZE MATCHES "thread")
    # Asio's fences stand where its mutexes order the same accesses.
    target_compile_options(vexel_serve_objects PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-tsan>)
  endif()
  vexel_add_program(vexel_serve vexel-serve "${PROJECT_SOURCE_DIR}/apps/serve/main.cpp")
  target_link_libraries(vexel_serve PRIVATE vexel_serve_objects)
else()
  message(STATUS "Boost or zlib is not installed: no vexel-serve")
endif()

# PNG and PDF take libraries that `vexel` can do without, and that a machine need not have.
pkg_check_modules(print_libraries QUIET IMPORTED_TARGET pangocairo>=1.50 cairo-pdf>=1.16 libpng>=1.6 zlib)
if(NOT print_libraries_FOUND)
  message(STATUS "Pango, Cairo or libpng is not installed: no vexel-print")
  return()
endif()
file(GLOB print_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/apps/print/*.cpp")
list(REMOVE_ITEM print_sources "${PROJECT_SOURCE_DIR}/apps/print/main.cpp")
add_library(vexel_print_objects OBJECT ${print_sources})
target_include_directories(vexel_print_objects PUBLIC
  "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/apps/print" "${VEXEL_INCLUDE_DIR}")
target_link_libraries(vexel_print_objects PRIVATE vexel_options PUBLIC PkgConfig::print_libraries)
vexel_add_program(vexel_print vexel-print "${PROJECT_SOURCE_DIR}/apps/print/main.cpp")
target_link_libraries(vexel_print PRIVATE vexel_render vexel_print_objects)
