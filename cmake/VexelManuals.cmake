# Manual pages and completions, made of what the programs say of themselves once they are built.

file(GLOB manuals_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/apps/manuals/*.cpp")
add_executable(vexel_manuals ${manuals_sources})
target_include_directories(vexel_manuals PRIVATE "${VEXEL_INCLUDE_DIR}")
target_link_libraries(vexel_manuals PRIVATE vexel_options nlohmann_json::nlohmann_json)

set(programs vexel_host)
foreach(program IN ITEMS vexel_print vexel_import vexel_serve)
  if(TARGET ${program})
    list(APPEND programs ${program})
  endif()
endforeach()

set(manuals_dir "${PROJECT_BINARY_DIR}/manuals")
add_custom_command(OUTPUT "${manuals_dir}/man1/vexel.1.gz"
  COMMAND "${CMAKE_COMMAND}" -E rm -rf "${manuals_dir}"
  COMMAND vexel_manuals "$<TARGET_FILE_DIR:vexel_host>" "${manuals_dir}"
  COMMAND sh -c "exec gzip -9n '${manuals_dir}'/man1/*.1"
  DEPENDS vexel_manuals ${programs}
  VERBATIM)
add_custom_target(vexel_manual_pages ALL DEPENDS "${manuals_dir}/man1/vexel.1.gz")

# The page of a program that is a package of its own goes with it.
set(others)
foreach(program IN ITEMS print import serve)
  if(TARGET vexel_${program})
    install(FILES "${manuals_dir}/man1/vexel-${program}.1.gz"
      DESTINATION "${CMAKE_INSTALL_MANDIR}/man1" COMPONENT ${program})
    list(APPEND others PATTERN "vexel-${program}.1.gz" EXCLUDE)
  endif()
endforeach()
install(DIRECTORY "${manuals_dir}/man1"
  DESTINATION "${CMAKE_INSTALL_MANDIR}" COMPONENT vexel ${others})
install(FILES "${manuals_dir}/bash/vexel"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions" COMPONENT vexel)
install(FILES "${manuals_dir}/zsh/_vexel"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions" COMPONENT vexel)
install(FILES "${manuals_dir}/fish/vexel.fish"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d" COMPONENT vexel)
add_dependencies(vexel_installed vexel_manual_pages)
