# The libraries, their headers, the program, and what find_package and pkg-config need to find them. The
# target vexel_installed builds all of it and nothing else.

include(CMakePackageConfigHelpers)

set(package_dir "${CMAKE_INSTALL_LIBDIR}/cmake/vexel")

install(TARGETS vexel EXPORT vexel_targets FILE_SET HEADERS)
add_custom_target(vexel_installed DEPENDS vexel)
if(TARGET vexel_kit)
  install(TARGETS vexel_kit EXPORT vexel_targets FILE_SET HEADERS)
  add_dependencies(vexel_installed vexel_kit)
endif()
if(TARGET vexel_host)
  install(TARGETS vexel_host)
  add_dependencies(vexel_installed vexel_host)
endif()
foreach(program IN ITEMS vexel_print vexel_import vexel_serve)
  if(TARGET ${program})
    install(TARGETS ${program})
    add_dependencies(vexel_installed ${program})
  endif()
endforeach()

install(EXPORT vexel_targets
  FILE vexel-config.cmake
  NAMESPACE vexel::
  DESTINATION "${package_dir}")
# The interface is not settled before 1.0: a program takes the minor version it was written for.
write_basic_package_version_file("${PROJECT_BINARY_DIR}/vexel-config-version.cmake"
  COMPATIBILITY SameMinorVersion)
install(FILES "${PROJECT_BINARY_DIR}/vexel-config-version.cmake" DESTINATION "${package_dir}")

# Relative to the file itself, so that an installed tree may be moved.
file(RELATIVE_PATH pkgconfig_to_prefix "/${CMAKE_INSTALL_LIBDIR}/pkgconfig" "/")
configure_file("${PROJECT_SOURCE_DIR}/cmake/vexel.pc.in" "${PROJECT_BINARY_DIR}/vexel.pc" @ONLY)
configure_file("${PROJECT_SOURCE_DIR}/cmake/vexel-kit.pc.in" "${PROJECT_BINARY_DIR}/vexel-kit.pc" @ONLY)
install(FILES "${PROJECT_BINARY_DIR}/vexel.pc" "${PROJECT_BINARY_DIR}/vexel-kit.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig")

# What the palettes' licences ask to be passed on.
install(FILES "${PROJECT_SOURCE_DIR}/docs/third-party.md" DESTINATION "${CMAKE_INSTALL_DOCDIR}")
