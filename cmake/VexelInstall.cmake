# The libraries, their headers, the program, and what find_package and pkg-config need to find them. The
# target vexel_installed builds all of it and nothing else.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/vexel")

add_custom_target(vexel_installed)
foreach(library IN ITEMS vexel vexel_kit)
  if(TARGET ${library})
    install(TARGETS ${library} EXPORT vexel_targets
      LIBRARY COMPONENT libraries NAMELINK_COMPONENT development
      FILE_SET HEADERS COMPONENT development)
    add_dependencies(vexel_installed ${library})
  endif()
endforeach()
# Each program is a package of its own.
foreach(program IN ITEMS host print import serve)
  if(TARGET vexel_${program})
    string(REPLACE host vexel component ${program})
    install(TARGETS vexel_${program} RUNTIME COMPONENT ${component})
    add_dependencies(vexel_installed vexel_${program})
  endif()
endforeach()

install(EXPORT vexel_targets
  FILE vexel-config.cmake
  NAMESPACE vexel::
  DESTINATION "${package_dir}"
  COMPONENT development)
# The interface is not settled before 1.0: a program takes the minor version it was written for.
write_basic_package_version_file("${PROJECT_BINARY_DIR}/vexel-config-version.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/vexel-config-version.cmake"
  DESTINATION "${package_dir}"
  COMPONENT development)

# Relative to the file itself, so that an installed tree may be moved.
file(RELATIVE_PATH pkgconfig_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file("${PROJECT_SOURCE_DIR}/cmake/vexel.pc.in" "${PROJECT_BINARY_DIR}/vexel.pc" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/cmake/vexel-kit.pc.in" "${PROJECT_BINARY_DIR}/vexel-kit.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/vexel.pc" "${PROJECT_BINARY_DIR}/vexel-kit.pc"
  DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig"
  COMPONENT development)

# What the palettes' licences ask to be passed on; packages have it in a file of Debian's name.
install(FILES "${PROJECT_SOURCE_DIR}/LICENSE" "${PROJECT_SOURCE_DIR}/docs/third-party.md"
  DESTINATION "${CMAKE_INSTALL_DOCDIR}"
  COMPONENT notices)
