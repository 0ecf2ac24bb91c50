# Debian packages, one for each component of what is installed; `./dev package` builds them.

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME vexel)
set(CPACK_PACKAGE_VENDOR "The Vexel authors")
set(CPACK_PACKAGE_CONTACT "The Vexel authors <authors@vexel.example>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_PACKAGE_DIRECTORY "${PROJECT_SOURCE_DIR}/build/packages")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

set(CPACK_COMPONENTS_ALL)
set(packaging_dir "${PROJECT_BINARY_DIR}/packaging")
file(MAKE_DIRECTORY "${packaging_dir}")
execute_process(
  COMMAND gzip -9n
  INPUT_FILE "${PROJECT_SOURCE_DIR}/packaging/changelog"
  OUTPUT_FILE "${packaging_dir}/changelog.gz"
  COMMAND_ERROR_IS_FATAL ANY)
file(READ "${PROJECT_SOURCE_DIR}/LICENSE" license)
file(READ "${PROJECT_SOURCE_DIR}/docs/third-party.md" third_party)
file(WRITE "${packaging_dir}/copyright"
  "${license}\n${third_party}\n"
  "On Debian systems the Apache License 2.0 stands in /usr/share/common-licenses/Apache-2.0.\n")

# vexel_package(COMPONENT NAME SECTION SUMMARY TEXT [DEPENDENCY...]): what a package is called and says.
function(vexel_package component name section summary text)
  string(TOUPPER ${component} part)
  set(CPACK_DEBIAN_${part}_PACKAGE_NAME "${name}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${part}_PACKAGE_SECTION "${section}" PARENT_SCOPE)
  set(CPACK_DEBIAN_${part}_DESCRIPTION "${summary}\n${text}" PARENT_SCOPE)
  list(JOIN ARGN ", " depends)
  set(CPACK_DEBIAN_${part}_PACKAGE_DEPENDS "${depends}" PARENT_SCOPE)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_COMPONENTS_ALL "${CPACK_COMPONENTS_ALL}" PARENT_SCOPE)

  set(doc "share/doc/${name}")
  install(FILES "${packaging_dir}/copyright" "${packaging_dir}/changelog.gz"
    DESTINATION ${doc} COMPONENT ${component} EXCLUDE_FROM_ALL)
  set(overrides "${PROJECT_SOURCE_DIR}/packaging/${name}.overrides")
  if(EXISTS "${overrides}")
    install(FILES "${overrides}"
      DESTINATION share/lintian/overrides RENAME ${name} COMPONENT ${component} EXCLUDE_FROM_ALL)
  endif()
endfunction()

set(what "Maps with areas and a table of statistics become pages with title, legend\nand an image map, or pages for publication.")
set(own "(= ${PROJECT_VERSION})")

vexel_package(libraries libvexel0 libs "thematic maps of areas and statistics - libraries"
  "${what}\nThese are the libraries: the engine, and what programs share that make pages.")
set(CPACK_DEBIAN_LIBRARIES_PACKAGE_CONTROL_EXTRA "${PROJECT_SOURCE_DIR}/packaging/triggers")
vexel_package(development libvexel-dev libdevel "thematic maps of areas and statistics - headers"
  "${what}\nThese are the headers, and what CMake and pkg-config need to find them." "libvexel0 ${own}"
  libgd-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SHLIBDEPS OFF)
vexel_package(vexel vexel graphics "thematic maps of areas and statistics - command line"
  "${what}\nThis is the command line, with its manual pages and completions.")
set(CPACK_DEBIAN_VEXEL_PACKAGE_SUGGESTS "vexel-print, vexel-import, vexel-serve")
if(TARGET vexel_print)
  vexel_package(print vexel-print graphics "thematic maps of areas and statistics - PNG and PDF"
    "${what}\nThis draws pages for publication as PNG and PDF.")
endif()
if(TARGET vexel_import)
  vexel_package(import vexel-import graphics "thematic maps of areas and statistics - import"
    "${what}\nThis makes maps and data files of geodata and tables.")
endif()
if(TARGET vexel_serve)
  vexel_package(serve vexel-serve web "thematic maps of areas and statistics - web server"
    "${what}\nThis shows all pages of a data set in a browser.")
endif()

include(CPack)
