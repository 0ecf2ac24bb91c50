# One test program for each folder of tests/, named test_<folder> and labelled <folder>. Folders are
# found, not listed, so that none is forgotten. tests/support/ holds what they share, and its tests.

find_package(GTest REQUIRED)
find_package(EXPAT REQUIRED)
include(GoogleTest)

set(tests_dir "${PROJECT_SOURCE_DIR}/tests")

file(GLOB support_sources CONFIGURE_DEPENDS "${tests_dir}/support/*.cpp")
list(FILTER support_sources EXCLUDE REGEX "_test\\.cpp$")
if(support_sources)
  add_library(vexel_test_support STATIC ${support_sources})
  set(scope PUBLIC)
  target_link_libraries(vexel_test_support PRIVATE vexel_options)
else()
  add_library(vexel_test_support INTERFACE)
  set(scope INTERFACE)
endif()
target_include_directories(vexel_test_support ${scope}
  "${PROJECT_SOURCE_DIR}/src" "${PROJECT_SOURCE_DIR}" "${tests_dir}" "${VEXEL_INCLUDE_DIR}")
target_compile_definitions(vexel_test_support ${scope}
  VEXEL_SAMPLES_DIR="${PROJECT_SOURCE_DIR}/samples"
  VEXEL_TESTS_DIR="${tests_dir}"
  $<$<TARGET_EXISTS:vexel_host>:VEXEL_CLI="$<TARGET_FILE:vexel_host>">)
target_link_libraries(vexel_test_support ${scope} GTest::gtest PkgConfig::gd)

# A locale with a decimal comma, made here because few machines have one installed.
find_program(VEXEL_LOCALEDEF localedef)
mark_as_advanced(VEXEL_LOCALEDEF)
if(VEXEL_LOCALEDEF AND EXISTS /usr/share/i18n/locales/de_DE)
  set(locales_dir "${PROJECT_BINARY_DIR}/locales")
  set(comma_locale de_DE.ISO-8859-1)
  add_custom_command(OUTPUT "${locales_dir}/${comma_locale}/LC_NUMERIC"
    COMMAND "${CMAKE_COMMAND}" -E make_directory "${locales_dir}"
    COMMAND "${VEXEL_LOCALEDEF}" --no-archive -i de_DE -f ISO-8859-1 "${locales_dir}/${comma_locale}"
    VERBATIM)
  add_custom_target(vexel_comma_locale DEPENDS "${locales_dir}/${comma_locale}/LC_NUMERIC")
  add_dependencies(vexel_test_support vexel_comma_locale)
  target_compile_definitions(vexel_test_support ${scope}
    VEXEL_LOCALES_DIR="${locales_dir}" VEXEL_COMMA_LOCALE="${comma_locale}")
endif()

# These make do with what the shared library exports, and so notice what it forgets to.
set(outside_folders data map)
set(kit_folders import kit print serve support)

file(GLOB folders CONFIGURE_DEPENDS LIST_DIRECTORIES true RELATIVE "${tests_dir}" "${tests_dir}/*")
foreach(folder IN LISTS folders)
  file(GLOB test_sources CONFIGURE_DEPENDS "${tests_dir}/${folder}/*.cpp")
  if(folder STREQUAL "support")
    list(FILTER test_sources INCLUDE REGEX "_test\\.cpp$")
  endif()
  if(NOT test_sources OR (folder STREQUAL "print" AND NOT TARGET vexel_print)
     OR (folder STREQUAL "import" AND NOT TARGET vexel_import)
     OR (folder STREQUAL "serve" AND NOT TARGET vexel_serve))
    continue()
  endif()
  set(test_program test_${folder})
  add_executable(${test_program} ${test_sources})
  set(library vexel_objects)
  if(folder IN_LIST outside_folders)
    set(library vexel)
  endif()
  if(folder IN_LIST kit_folders)
    list(APPEND library vexel_kit_objects)
  endif()
  target_link_libraries(${test_program} PRIVATE
    vexel_options vexel_quick_build vexel_test_support ${library} GTest::gtest_main)
  if(folder STREQUAL "kit")
    target_link_libraries(${test_program} PRIVATE EXPAT::EXPAT)  # parses the SVGs
  endif()
  if(folder STREQUAL "cli" AND TARGET vexel_host)
    add_dependencies(${test_program} vexel_host)
  endif()
  if(folder STREQUAL "print")
    target_link_libraries(${test_program} PRIVATE vexel_print_objects)
    add_dependencies(${test_program} vexel_host vexel_print)
  endif()
  if(folder STREQUAL "import")
    target_link_libraries(${test_program} PRIVATE vexel_import_objects vexel_cli)
    add_dependencies(${test_program} vexel_host vexel_import)
    if(TARGET vexel_print)
      add_dependencies(${test_program} vexel_print)
    endif()
  endif()
  if(folder STREQUAL "serve")
    target_link_libraries(${test_program} PRIVATE vexel_serve_objects vexel_cli)
    add_dependencies(${test_program} vexel_serve)
  endif()
  # The listing of tests happens when ctest starts, with time enough for a sanitized program.
  gtest_discover_tests(${test_program}
    TEST_PREFIX "${folder}/"
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 120
    PROPERTIES LABELS ${folder} TIMEOUT 300)
endforeach()

# Tests of calls and of memory that fail replace functions of the C library: in test programs, and in
# the program `vexel` by an object that is loaded before all else. The sanitizers, which have replaced
# those for memory already, let no such object in.
set(failing_calls "${tests_dir}/faults/calls/failing_calls.cpp")
target_sources(test_faults PRIVATE "${failing_calls}")
target_sources(test_messages PRIVATE "${failing_calls}")
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND NOT VEXEL_SANITIZE)
  set(failing_memory "${tests_dir}/faults/memory/failing_memory.cpp")
  target_sources(test_faults PRIVATE
    "${failing_memory}" "${tests_dir}/faults/memory/engine_memory_test.cpp")
  if(TARGET vexel_host)
    target_sources(test_faults PRIVATE
      "${tests_dir}/faults/calls/program_calls_test.cpp"
      "${tests_dir}/faults/memory/program_memory_test.cpp")
    foreach(what IN ITEMS calls memory)
      string(TOUPPER "${what}" name)
      add_library(vexel_failing_${what} MODULE "${failing_${what}}")
      set_target_properties(vexel_failing_${what} PROPERTIES PREFIX "")
      target_link_libraries(vexel_failing_${what} PRIVATE vexel_options)
      target_compile_definitions(test_faults PRIVATE
        "VEXEL_FAILING_${name}=\"$<TARGET_FILE:vexel_failing_${what}>\"")
      add_dependencies(test_faults vexel_host vexel_failing_${what})
    endforeach()
  endif()
endif()

# The server from outside, by clients that mean no good.
find_package(Python3 COMPONENTS Interpreter QUIET)
if(TARGET vexel_serve AND Python3_FOUND)
  add_test(NAME serve/Abuse
    COMMAND Python3::Interpreter "${tests_dir}/serve/abuse.py"
      $<TARGET_FILE:vexel_serve> "${PROJECT_SOURCE_DIR}/samples/us-conus.mdf")
  set_tests_properties(serve/Abuse PROPERTIES LABELS "serve;slow" TIMEOUT 300)
endif()

# Web pages as a browser takes them, where there is one that works without a window.
find_program(VEXEL_CHROMIUM chromium)
mark_as_advanced(VEXEL_CHROMIUM)
if(VEXEL_CHROMIUM AND TARGET vexel_host)
  add_test(NAME browser/MapPage
    COMMAND "${tests_dir}/browser/check.sh"
      $<TARGET_FILE:vexel_host> "${VEXEL_CHROMIUM}" "${PROJECT_SOURCE_DIR}/samples")
  set_tests_properties(browser/MapPage PROPERTIES LABELS browser TIMEOUT 300)
endif()

# The viewer, used by a driver of browsers that `./dev test` puts there.
set(browser_modules "${PROJECT_SOURCE_DIR}/build/browser")
find_program(VEXEL_NODE node)
mark_as_advanced(VEXEL_NODE)
if(VEXEL_CHROMIUM AND VEXEL_NODE AND TARGET vexel_serve AND EXISTS "${browser_modules}/node_modules")
  add_test(NAME browser/Viewer
    COMMAND "${CMAKE_COMMAND}" -E env
      "VEXEL=$<TARGET_FILE:vexel_host>" "VEXEL_SERVE=$<TARGET_FILE:vexel_serve>"
      "VEXEL_BROWSER=${VEXEL_CHROMIUM}" "VEXEL_SAMPLES=${PROJECT_SOURCE_DIR}/samples"
      "VEXEL_MODULES=${browser_modules}"
      "${VEXEL_NODE}" --test "${tests_dir}/browser/viewer.mjs")
  set_tests_properties(browser/Viewer PROPERTIES LABELS browser TIMEOUT 600)
endif()

if(TARGET vexel_manual_pages)
  add_test(NAME manuals/AgreeWithHelp
    COMMAND "${tests_dir}/manuals/check.sh" "$<TARGET_FILE_DIR:vexel_host>" "${PROJECT_BINARY_DIR}/manuals")
  set_tests_properties(manuals/AgreeWithHelp PROPERTIES LABELS docs)
endif()

# The programs of the README, built against the headers by the names that they have when installed.
function(vexel_add_example name library)
  set(folder "${PROJECT_BINARY_DIR}/${name}")
  add_executable(vexel_${name} "${PROJECT_SOURCE_DIR}/docs/${name}.cpp")
  target_link_libraries(vexel_${name} PRIVATE vexel_options ${library})
  add_test(NAME docs/${name}.Runs
    COMMAND sh -c "mkdir -p '${folder}' && cd '${folder}' && ln -sfn '${PROJECT_SOURCE_DIR}/samples' samples && '$<TARGET_FILE:vexel_${name}>' && test -s counties.gif")
  set_tests_properties(docs/${name}.Runs PROPERTIES LABELS docs)
endfunction()
vexel_add_example(example vexel_kit)
vexel_add_example(example_engine vexel)

# The library as its hosts find it. Sanitized, it would need a sanitized host.
if(NOT VEXEL_SANITIZE AND TARGET vexel_installed)
  function(vexel_add_install_test name)
    add_test(NAME install/${name} COMMAND ${ARGN})
    set_tests_properties(install/${name} PROPERTIES
      LABELS install TIMEOUT 300 FIXTURES_REQUIRED vexel_install_tree)
  endfunction()

  find_program(VEXEL_CLANGXX clang++)
  mark_as_advanced(VEXEL_CLANGXX)
  set(host_compilers g++)
  if(VEXEL_CLANGXX)
    list(APPEND host_compilers clang++)
  endif()

  set(check "${tests_dir}/install/check.sh")
  set(where "${PROJECT_BINARY_DIR}" "${CMAKE_INSTALL_LIBDIR}")
  vexel_add_install_test(Tree "${check}" tree ${where})
  set_tests_properties(install/Tree PROPERTIES
    FIXTURES_REQUIRED "" FIXTURES_SETUP vexel_install_tree)
  foreach(compiler IN LISTS host_compilers)
    foreach(kind IN ITEMS package pkgconfig plain kit)
      vexel_add_install_test(Host.${kind}.${compiler} "${check}" ${kind} ${where} ${compiler})
    endforeach()
  endforeach()
  vexel_add_install_test(Host.subdirectory "${check}" subdirectory ${where})
  vexel_add_install_test(Headers "${check}" headers ${where})
  vexel_add_install_test(Symbols "${tests_dir}/install/symbols.sh" "${PROJECT_BINARY_DIR}")
endif()
