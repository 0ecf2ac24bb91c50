# `header_check` compiles each header of src/ and kit/ alone, twice included: it must bring what it uses, and
# its guard must hold.

file(GLOB_RECURSE headers CONFIGURE_DEPENDS
  RELATIVE "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}/src/*.h")
file(GLOB_RECURSE kit_headers CONFIGURE_DEPENDS
  RELATIVE "${PROJECT_SOURCE_DIR}" "${PROJECT_SOURCE_DIR}/kit/*.h")
list(APPEND headers ${kit_headers})
if(NOT headers)
  return()
endif()

set(check_sources)
foreach(header IN LISTS headers)
  set(source "${PROJECT_BINARY_DIR}/header_check/${header}.cpp")
  file(CONFIGURE OUTPUT "${source}" CONTENT "#include \"@header@\"\n#include \"@header@\"\n" @ONLY)
  list(APPEND check_sources "${source}")
endforeach()

add_library(header_check OBJECT EXCLUDE_FROM_ALL ${check_sources})
target_include_directories(header_check PRIVATE
  "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}" "${VEXEL_INCLUDE_DIR}")
target_link_libraries(header_check PRIVATE vexel_options PkgConfig::gd)
