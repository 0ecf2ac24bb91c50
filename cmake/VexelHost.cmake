# The command line: the program `vexel`, on nothing of the library but what it exports.

file(GLOB host_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/apps/vexel/*.cpp")
if(NOT host_sources)
  return()
endif()

find_package(CLI11 2.1 REQUIRED)
find_package(nlohmann_json 3.11 REQUIRED)

add_executable(vexel_host ${host_sources})
set_target_properties(vexel_host PROPERTIES
  OUTPUT_NAME vexel
  INSTALL_RPATH "$ORIGIN/../${CMAKE_INSTALL_LIBDIR}")
target_compile_definitions(vexel_host PRIVATE VEXEL_VERSION="${PROJECT_VERSION}")
target_link_libraries(vexel_host PRIVATE
  vexel vexel_options CLI11::CLI11 nlohmann_json::nlohmann_json)
