# libvexel-kit.so: what every host shares. Like the engine's, its objects are built once and go into
# the shared library and straight into programs and tests.

set(VEXEL_KIT_ROOMS request files classes palettes view report)

find_package(nlohmann_json 3.11 REQUIRED)

list(TRANSFORM VEXEL_KIT_ROOMS REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/kit/\\1/*.cpp"
  OUTPUT_VARIABLE kit_globs)
file(GLOB kit_sources CONFIGURE_DEPENDS ${kit_globs})

add_library(vexel_kit_objects OBJECT ${kit_sources})
set_target_properties(vexel_kit_objects PROPERTIES
  POSITION_INDEPENDENT_CODE ON
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON)
file(MAKE_DIRECTORY "${PROJECT_BINARY_DIR}/include")
file(CREATE_LINK "${PROJECT_SOURCE_DIR}/src" "${PROJECT_BINARY_DIR}/include/vexel" SYMBOLIC)
target_include_directories(vexel_kit_objects PUBLIC
  "${PROJECT_SOURCE_DIR}" "${PROJECT_BINARY_DIR}/include" "${PROJECT_SOURCE_DIR}/src")
target_link_libraries(vexel_kit_objects PRIVATE vexel_options nlohmann_json::nlohmann_json)

add_library(vexel_kit SHARED)
add_library(vexel::kit ALIAS vexel_kit)
set_target_properties(vexel_kit PROPERTIES
  OUTPUT_NAME vexel-kit
  EXPORT_NAME kit
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}
  LINKER_LANGUAGE CXX)
target_compile_features(vexel_kit INTERFACE cxx_std_20)
target_link_libraries(vexel_kit PUBLIC vexel PRIVATE vexel_kit_objects)
