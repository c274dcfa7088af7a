# Installing: three components besides `alembic`, which also stands alone (alembic/package.cmake).
#   runtime   the shared libraries           dev   headers, CMake package, pkg-config file           tools   vo_abc
# Everything is found relative to itself: an installed tree can be moved.
include(CMakePackageConfigHelpers)

set(host_libraries vo_core vo_sys vo_gmath vo_geometry vo_poly vo_app_base vo_of vo_resource)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/vo_abc_io)
set(header_dir ${CMAKE_INSTALL_INCLUDEDIR}/vo_abc_io)
set(template_dir ${PROJECT_SOURCE_DIR}/packaging)
set(generated_dir ${PROJECT_BINARY_DIR}/packaging)

install(TARGETS ${host_libraries} EXPORT vo_host_targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev)
install(TARGETS vo_abc_io EXPORT vo_abc_io_targets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev)
install(EXPORT vo_host_targets NAMESPACE vo:: DESTINATION ${package_dir} COMPONENT dev)
install(EXPORT vo_abc_io_targets NAMESPACE vo_abc_io:: DESTINATION ${package_dir} COMPONENT dev)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/abc_io/include/ DESTINATION ${header_dir} COMPONENT dev)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/host/ DESTINATION ${header_dir} COMPONENT dev FILES_MATCHING PATTERN "*.h")

configure_package_config_file(${template_dir}/vo_abc_ioConfig.cmake.in ${generated_dir}/vo_abc_ioConfig.cmake
    INSTALL_DESTINATION ${package_dir} PATH_VARS CMAKE_INSTALL_LIBDIR CMAKE_INSTALL_INCLUDEDIR)
write_basic_package_version_file(${generated_dir}/vo_abc_ioConfigVersion.cmake COMPATIBILITY SameMajorVersion)
install(FILES ${generated_dir}/vo_abc_ioConfig.cmake ${generated_dir}/vo_abc_ioConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT dev)

set(pkgconfig_requires "")
if(use_bundled_alembic)
    set(pkgconfig_requires Imath) # whose headers ours include
endif()
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${template_dir}/vo_abc_io.pc.in ${generated_dir}/vo_abc_io.pc @ONLY)
install(FILES ${generated_dir}/vo_abc_io.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

install(TARGETS vo_abc RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
# The tool writes its own manual page and completions.
function(vo_install_help folder name)
    set(file ${generated_dir}/${name})
    add_custom_command(OUTPUT ${file} COMMAND vo_abc ${ARGN} > ${file} DEPENDS vo_abc VERBATIM)
    set_property(GLOBAL APPEND PROPERTY vo_help_files ${file})
    install(FILES ${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/${folder} COMPONENT tools)
endfunction()
vo_install_help(man/man1 vo_abc.1 man)
vo_install_help(bash-completion/completions vo_abc completion bash)
vo_install_help(zsh/vendor-completions _vo_abc completion zsh)
vo_install_help(fish/vendor_completions.d vo_abc.fish completion fish)
get_property(help_files GLOBAL PROPERTY vo_help_files)
add_custom_target(vo_abc_help ALL DEPENDS ${help_files})
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs/ DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT dev)
