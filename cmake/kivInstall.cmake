# The package: find_package(kiv 4.2 CONFIG) and pkg-config, both relocatable.

include(CMakePackageConfigHelpers)

set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/kiv)
configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/kivConfig.cmake.in
    ${PROJECT_BINARY_DIR}/kivConfig.cmake INSTALL_DESTINATION ${package_dir})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/kivConfigVersion.cmake
    COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/kivConfig.cmake ${PROJECT_BINARY_DIR}/kivConfigVersion.cmake
    ${CMAKE_CURRENT_LIST_DIR}/kivPlugin.cmake
    DESTINATION ${package_dir})
install(EXPORT kivTargets NAMESPACE kiv:: DESTINATION ${package_dir})

# kiv_pkg_config(TARGET PACKAGE REQUIRES DESCRIPTION)
function(kiv_pkg_config target package requires description)
    # The prefix is spelled relative to the .pc file, so that the install can be moved.
    file(RELATIVE_PATH prefix_from_pc /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
    configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/package.pc.in ${PROJECT_BINARY_DIR}/${package}.pc
        @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/${package}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
endfunction()

set(companion "kiv = ${kiv_VERSION}")
kiv_pkg_config(kiv_4 kiv "" "${PROJECT_DESCRIPTION}")
kiv_pkg_config(kiv_host kiv-host ${companion} "Ready-made services for a host of kiv")
kiv_pkg_config(kiv_kit kiv-kit ${companion} "What authors of run-times of kiv build on")
kiv_pkg_config(kiv_conformance kiv-conformance ${companion} "Holds run-times of kiv against their contracts")
kiv_pkg_config(kiv_memory kiv-memory ${companion} "An editable scene in memory, a run-time of kiv")
if(KIV_BUILD_ASSIMP)
    kiv_pkg_config(kiv_assimp kiv-assimp ${companion} "Scene files of many formats, a run-time of kiv")
endif()
if(KIV_BUILD_DOCUMENT)
    kiv_pkg_config(kiv_document kiv-document "kiv-host = ${kiv_VERSION}, kiv-memory = ${kiv_VERSION}"
        "Scenes of kiv with mounted files as documents, saved and opened")
endif()
if(KIV_BUILD_QT)
    kiv_pkg_config(kiv_qt kiv-qt "kiv-host = ${kiv_VERSION}, Qt6Widgets" "Scenes of kiv in windows of Qt")
endif()
