# libvexel-kit.so: what every host shares. Like the engine's, its objects are built once and go into
# the shared library and straight into programs and tests.

set(VEXEL_KIT_ROOMS request files classes palettes view publish report site tables)

set(VEXEL_KIT_PUBLIC_HEADERS
  kit/classes/classes.h
  kit/files/files.h
  kit/files/looks.h
  kit/files/printable.h
  kit/palettes/color.h
  kit/palettes/palettes.h
  kit/publish/compose.h
  kit/publish/drawing.h
  kit/publish/media.h
  kit/publish/pixels.h
  kit/publish/raster.h
  kit/publish/svg.h
  kit/report/csv.h
  kit/report/map_page.h
  kit/report/page_html.h
  kit/report/report.h
  kit/report/summary.h
  kit/report/write_page.h
  kit/request/arguments.h
  kit/request/error.h
  kit/request/hints.h
  kit/request/json_request.h
  kit/request/json_text.h
  kit/request/markup.h
  kit/request/parameters.h
  kit/request/query.h
  kit/request/request.h
  kit/request/values.h
  kit/tables/csv_text.h
  kit/tables/encoding.h
  kit/tables/numbers.h
  kit/tables/table.h
  kit/view/area_finder.h
  kit/view/listener.h
  kit/view/load.h
  kit/view/map_facts.h
  kit/view/page.h
  kit/view/view.h)

find_package(nlohmann_json 3.11 REQUIRED)

list(TRANSFORM VEXEL_KIT_ROOMS REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/kit/\\1/*.cpp"
  OUTPUT_VARIABLE kit_globs)
file(GLOB kit_sources CONFIGURE_DEPENDS ${kit_globs})

add_library(vexel_kit_objects OBJECT ${kit_sources})
set_target_properties(vexel_kit_objects PROPERTIES
  POSITION_INDEPENDENT_CODE ON
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON)
target_compile_options(vexel_kit_objects PRIVATE -fno-semantic-interposition)
# Of the engine it sees what every host sees.
target_include_directories(vexel_kit_objects PUBLIC "${PROJECT_SOURCE_DIR}" "${VEXEL_INCLUDE_DIR}")
target_link_libraries(vexel_kit_objects PRIVATE vexel_options nlohmann_json::nlohmann_json)

add_library(vexel_kit SHARED)
add_library(vexel::kit ALIAS vexel_kit)
set_target_properties(vexel_kit PROPERTIES
  OUTPUT_NAME vexel-kit
  EXPORT_NAME kit
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
  INSTALL_RPATH "$ORIGIN"
  LINKER_LANGUAGE CXX)
target_compile_features(vexel_kit INTERFACE cxx_std_20)
vexel_add_public_headers(vexel_kit "${PROJECT_SOURCE_DIR}" ${VEXEL_KIT_PUBLIC_HEADERS})
target_link_libraries(vexel_kit PUBLIC vexel PRIVATE vexel_kit_objects)
if(NOT VEXEL_SANITIZE)
  target_link_options(vexel_kit PRIVATE LINKER:--no-undefined)
endif()
