# The command line: the program `vexel`, on nothing of the libraries but what they export.

file(GLOB host_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/apps/vexel/*.cpp")
if(NOT host_sources)
  return()
endif()

find_package(CLI11 2.1 REQUIRED)

add_executable(vexel_host ${host_sources})
set_target_properties(vexel_host PROPERTIES OUTPUT_NAME vexel)
target_include_directories(vexel_host PRIVATE "${PROJECT_SOURCE_DIR}" "${VEXEL_INCLUDE_DIR}")
target_link_libraries(vexel_host PRIVATE vexel_options CLI11::CLI11)

# Shared, gd brings some fifty libraries for formats that no page has; to load them takes longer than
# to draw one. Its archive brings the dozen functions that are called. (It is not
# position-independent on Debian, so that the shared library cannot have it.)
find_library(VEXEL_GD_ARCHIVE NAMES libgd.a)
mark_as_advanced(VEXEL_GD_ARCHIVE)
if(VEXEL_GD_ARCHIVE AND CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT VEXEL_SANITIZE)
  target_sources(vexel_host PRIVATE
    $<TARGET_OBJECTS:vexel_objects> $<TARGET_OBJECTS:vexel_kit_objects>)
  target_link_libraries(vexel_host PRIVATE "${VEXEL_GD_ARCHIVE}" m)
  target_link_options(vexel_host PRIVATE -static-libstdc++ -static-libgcc LINKER:--gc-sections)
else()
  target_link_libraries(vexel_host PRIVATE vexel_kit)
  set_target_properties(vexel_host PROPERTIES
    INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
endif()
