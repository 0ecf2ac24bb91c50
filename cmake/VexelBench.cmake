# Everything in bench/ as one program, vexel_bench.

file(GLOB bench_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/bench/*.cpp")
if(NOT bench_sources)
  return()
endif()

# Whoever only installs a release need not have it.
find_package(benchmark 1.7 QUIET)
if(NOT benchmark_FOUND)
  message(STATUS "Google Benchmark is not installed: no vexel_bench")
  return()
endif()

add_executable(vexel_bench ${bench_sources})
target_compile_definitions(vexel_bench PRIVATE
  VEXEL_SAMPLES_DIR="${PROJECT_SOURCE_DIR}/samples"
  VEXEL_VERSION="${PROJECT_VERSION}")
# benchmark_main is a static library: it gives way where bench/ has a main of its own.
target_link_libraries(vexel_bench PRIVATE
  vexel_options vexel_objects benchmark::benchmark benchmark::benchmark_main)
