# bench/: vexel_bench measures within one process; vexel_floor and vexel_cold serve the comparison of
# whole processes and know nothing of the library; vexel_soak draws pages for long.

file(GLOB bench_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/bench/*.cpp")
if(NOT bench_sources)
  return()
endif()

add_executable(vexel_soak bench/soak.cpp)
target_compile_definitions(vexel_soak PRIVATE VEXEL_SAMPLES_DIR="${PROJECT_SOURCE_DIR}/samples")
target_include_directories(vexel_soak PRIVATE "${PROJECT_SOURCE_DIR}/src")
target_link_libraries(vexel_soak PRIVATE vexel_options vexel)

# Whoever only installs a release need not have it.
find_package(benchmark 1.7 QUIET)
if(NOT benchmark_FOUND)
  message(STATUS "Google Benchmark is not installed: no vexel_bench")
  return()
endif()

list(FILTER bench_sources EXCLUDE REGEX "/(floor|cold|soak)\\.cpp$")
if(NOT TARGET vexel_print)
  list(FILTER bench_sources EXCLUDE REGEX "/print_bench\\.cpp$")
endif()
add_executable(vexel_bench ${bench_sources})
target_compile_definitions(vexel_bench PRIVATE
  VEXEL_SAMPLES_DIR="${PROJECT_SOURCE_DIR}/samples"
  VEXEL_BUILD_TYPE="$<CONFIG>")
target_link_libraries(vexel_bench PRIVATE
  vexel_options vexel_objects vexel_kit_objects benchmark::benchmark PkgConfig::gd)

if(TARGET vexel_print)
  target_link_libraries(vexel_bench PRIVATE vexel_print_objects)
endif()

add_executable(vexel_floor bench/floor.cpp bench/flat_page.cpp)
target_link_libraries(vexel_floor PRIVATE vexel_options PkgConfig::gd)

add_executable(vexel_cold bench/cold.cpp)
target_link_libraries(vexel_cold PRIVATE vexel_options)
