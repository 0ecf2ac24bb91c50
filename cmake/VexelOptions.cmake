# How every target of ours is compiled. Link to vexel_options PRIVATE.

add_library(vexel_options INTERFACE)
target_compile_features(vexel_options INTERFACE cxx_std_20)
target_compile_options(vexel_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow
  # A fused multiply-add rounds differently: the same page shall give the same bytes everywhere.
  -ffp-contract=off
  $<$<BOOL:${VEXEL_WERROR}>:-Werror>)

if(VEXEL_SANITIZE)
  set(sanitize -fsanitize=${VEXEL_SANITIZE} -fno-sanitize-recover=all)
  target_compile_options(vexel_options INTERFACE
    ${sanitize} -fno-omit-frame-pointer
    # g++ takes the checks it inserted itself for reads of unset values.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(vexel_options INTERFACE ${sanitize})
endif()

set(CMAKE_CXX_EXTENSIONS OFF)

# For code that is mostly templates of others and runs for moments: sanitized, to optimise it takes twice
# the time that compiling takes otherwise.
add_library(vexel_quick_build INTERFACE)
if(VEXEL_SANITIZE)
  target_compile_options(vexel_quick_build INTERFACE -O0)
endif()
