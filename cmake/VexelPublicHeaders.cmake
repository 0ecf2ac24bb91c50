# What a host includes. Inside the project a header is named from the root of the sources
# ("map/map.h"); a host may have a map/map.h of its own, so for hosts the headers stand under vexel/
# and name each other so ("vexel/map/map.h"). That tree is made here, in include/ of the build tree,
# and is both what is installed and what a project that takes ours in by add_subdirectory compiles
# against. Headers that are not listed do not get there.

set(VEXEL_PUBLIC_HEADERS
  platform/archive.h
  platform/array.h
  platform/exceptions.h
  platform/export.h
  platform/file.h
  platform/geometry.h
  platform/host.h
  platform/object.h
  platform/profile.h
  platform/remark.h
  platform/string.h
  messages/messages.h
  messages/remarks.h
  brindle/areastruct.h
  brindle/progress.h
  brindle/specfile.h
  brindle/text.h
  map/formats.h
  map/map.h
  map/mapob.h
  map/polygon.h
  map/rect.h
  data/areadata.h
  data/calculation.h
  data/dataset.h
  legend/legend.h
  legend/palettes.h
  render/gif.h
  render/latin2.h
  render/mapgif.h
  render/vertex_buffer.h)

set(VEXEL_INCLUDE_DIR "${PROJECT_BINARY_DIR}/include")

# vexel_add_public_headers(<target> <root> <header>...)
#
# Puts the headers, named from <root>, into the include tree and into the target's file set HEADERS:
# the target offers the include tree while it is built, and `install(TARGETS ... FILE_SET HEADERS)`
# takes them along. The sources include kit/view/view.h as "kit/view/view.h", a host as
# <vexel/kit/view/view.h>. What else stands in their first folders of the include tree is removed,
# so those belong to one library.
function(vexel_add_public_headers target root)
  set(public_headers)
  foreach(header IN LISTS ARGN)
    set(public_header "${VEXEL_INCLUDE_DIR}/vexel/${header}")
    vexel_write_public_header("${root}/${header}" "${public_header}")
    list(APPEND public_headers "${public_header}")
  endforeach()
  vexel_remove_other_headers(${ARGN})
  target_sources(${target} PUBLIC
    FILE_SET HEADERS BASE_DIRS "${VEXEL_INCLUDE_DIR}" FILES ${public_headers})
endfunction()

# One header with its own includes renamed; a file that says so already keeps its time.
function(vexel_write_public_header source public_header)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${source}")
  file(READ "${source}" text)
  string(REGEX REPLACE "(#include \")([^\"]+\")" "\\1vexel/\\2" text "${text}")
  set(present "")
  if(EXISTS "${public_header}")
    file(READ "${public_header}" present)
  endif()
  if(NOT text STREQUAL present)
    file(WRITE "${public_header}" "${text}")
  endif()
endfunction()

# A header that is no longer public must not be found in an old build tree. Looks through the first
# folders of the headers given.
function(vexel_remove_other_headers)
  list(TRANSFORM ARGN REPLACE "/.*" "" OUTPUT_VARIABLE folders)
  list(REMOVE_DUPLICATES folders)
  list(TRANSFORM folders REPLACE "(.+)" "${VEXEL_INCLUDE_DIR}/vexel/\\1/*.h")
  file(GLOB_RECURSE others RELATIVE "${VEXEL_INCLUDE_DIR}/vexel" ${folders})
  list(REMOVE_ITEM others ${ARGN})
  list(TRANSFORM others PREPEND "${VEXEL_INCLUDE_DIR}/vexel/")
  if(others)
    file(REMOVE ${others})
  endif()
endfunction()
