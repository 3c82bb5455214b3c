# The package: find_package(kiv 4.2 CONFIG) and pkg-config, both relocatable.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kiv)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/kivConfig.cmake.in
    ${PROJECT_BINARY_DIR}/kivConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kivConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kivConfig.cmake ${PROJECT_BINARY_DIR}/kivConfigVersion.cmake
    DESTINATION ${package_dir})
install(EXPORT kivTargets NAMESPACE kiv:: DESTINATION ${package_dir})

# The prefix is spelled relative to the .pc file, so that the install can be moved.
file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
configure_file(${CMAKE_CURRENT_LIST_DIR}/kiv.pc.in ${PROJECT_BINARY_DIR}/kiv.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/kiv.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
