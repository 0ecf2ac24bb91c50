# libvexel.so. The objects are built once and go into the shared library and straight into tests,
# benchmarks and fuzz targets, which thereby reach what the library hides.

include(VexelPublicHeaders)

set(VEXEL_ROOMS platform messages brindle map data legend render)

find_package(PkgConfig REQUIRED)
pkg_check_modules(gd REQUIRED IMPORTED_TARGET gdlib>=2.3)

list(TRANSFORM VEXEL_ROOMS REPLACE "(.+)" "${PROJECT_SOURCE_DIR}/src/\\1/*.cpp"
  OUTPUT_VARIABLE room_globs)
file(GLOB library_sources CONFIGURE_DEPENDS ${room_globs} "${PROJECT_SOURCE_DIR}/src/*.cpp")

add_library(vexel_objects OBJECT ${library_sources})
set_target_properties(vexel_objects PROPERTIES
  POSITION_INDEPENDENT_CODE ON
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON)
# Nobody replaces a function of ours at load time, so calls between them may be inlined.
target_compile_options(vexel_objects PRIVATE -fno-semantic-interposition)
target_include_directories(vexel_objects PUBLIC
  "${PROJECT_SOURCE_DIR}/src" "${VEXEL_INCLUDE_DIR}")
target_link_libraries(vexel_objects PRIVATE vexel_options PkgConfig::gd)

add_library(vexel SHARED)
add_library(vexel::vexel ALIAS vexel)
# Before 1.0 each minor version may change the interface, so it is a library of its own at run time,
# as it is a package of its own for find_package (SameMinorVersion): a program never starts with
# another one than it was compiled for.
set_target_properties(vexel PROPERTIES
  VERSION ${PROJECT_VERSION}
  SOVERSION ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR}
  LINKER_LANGUAGE CXX)
target_compile_features(vexel INTERFACE cxx_std_20)
vexel_add_public_headers(vexel "${PROJECT_SOURCE_DIR}/src" ${VEXEL_PUBLIC_HEADERS})
configure_file("${PROJECT_SOURCE_DIR}/cmake/version.h.in" "${VEXEL_INCLUDE_DIR}/vexel/version.h" @ONLY)
target_sources(vexel PUBLIC FILE_SET HEADERS FILES "${VEXEL_INCLUDE_DIR}/vexel/version.h")
target_link_libraries(vexel PRIVATE vexel_objects)
if(NOT VEXEL_SANITIZE)
  # A function declared and not defined shows here, not in a host. (clang++ leaves its sanitizers'
  # own symbols to the program.)
  target_link_options(vexel PRIVATE LINKER:--no-undefined)
endif()
