# The CMake package `Alembic`, from the build tree and from an install prefix of its own.
include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/Alembic)
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/AlembicConfigVersion.cmake
    VERSION 1.8.12 COMPATIBILITY AnyNewerVersion)
configure_package_config_file(AlembicConfig.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/AlembicConfig.cmake
    INSTALL_DESTINATION ${package_dir})

# An Alembic of another make is never overwritten: its headers and package would be found together with our library.
configure_file(refuse_foreign.cmake.in ${CMAKE_CURRENT_BINARY_DIR}/refuse_foreign.cmake @ONLY)
install(SCRIPT ${CMAKE_CURRENT_BINARY_DIR}/refuse_foreign.cmake COMPONENT alembic)
# First, since it holds the mark by which the next installation knows what an interrupted one left behind.
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/AlembicConfig.cmake ${CMAKE_CURRENT_BINARY_DIR}/AlembicConfigVersion.cmake
    DESTINATION ${package_dir} COMPONENT alembic)

install(TARGETS Alembic EXPORT AlembicTargets COMPONENT alembic
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR})
if(NOT VO_ABC_HDF5)
    set(headers_left_out PATTERN AbcCoreHDF5 EXCLUDE)
endif()
install(DIRECTORY include/Alembic ${CMAKE_CURRENT_BINARY_DIR}/generated/Alembic COMPONENT alembic
    DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} FILES_MATCHING PATTERN "*.h" ${headers_left_out})
install(EXPORT AlembicTargets NAMESPACE Alembic:: DESTINATION ${package_dir} COMPONENT alembic)
export(EXPORT AlembicTargets NAMESPACE Alembic:: FILE ${CMAKE_CURRENT_BINARY_DIR}/AlembicTargets.cmake)
