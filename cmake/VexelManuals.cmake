# Manual pages and completions, made of what the programs say of themselves once they are built.

file(GLOB manuals_sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/apps/manuals/*.cpp")
add_executable(vexel_manuals ${manuals_sources})
target_include_directories(vexel_manuals PRIVATE "${VEXEL_INCLUDE_DIR}")
target_link_libraries(vexel_manuals PRIVATE vexel_options nlohmann_json::nlohmann_json)

set(programs vexel_host)
foreach(program IN ITEMS vexel_print vexel_import)
  if(TARGET ${program})
    list(APPEND programs ${program})
  endif()
endforeach()

set(manuals_dir "${PROJECT_BINARY_DIR}/manuals")
add_custom_command(OUTPUT "${manuals_dir}/man1/vexel.1"
  COMMAND "${CMAKE_COMMAND}" -E rm -rf "${manuals_dir}"
  COMMAND vexel_manuals "$<TARGET_FILE_DIR:vexel_host>" "${manuals_dir}"
  DEPENDS vexel_manuals ${programs}
  VERBATIM)
add_custom_target(vexel_manual_pages ALL DEPENDS "${manuals_dir}/man1/vexel.1")

install(DIRECTORY "${manuals_dir}/man1" DESTINATION "${CMAKE_INSTALL_MANDIR}")
install(FILES "${manuals_dir}/bash/vexel"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
install(FILES "${manuals_dir}/zsh/_vexel"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions")
install(FILES "${manuals_dir}/fish/vexel.fish"
  DESTINATION "${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d")
add_dependencies(vexel_installed vexel_manual_pages)
