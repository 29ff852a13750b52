# Makes PlistCore a package: find_package(PlistCore) and link PlistCore::PlistCore.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(packageFolder ${CMAKE_INSTALL_LIBDIR}/cmake/PlistCore)

install(TARGETS PlistCore EXPORT PlistCoreTargets COMPONENT PlistCore
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT PlistCore)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/PlistCore/ COMPONENT PlistCore
        DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/PlistCore
        FILES_MATCHING PATTERN "*.h")
install(EXPORT PlistCoreTargets NAMESPACE PlistCore:: COMPONENT PlistCore
        DESTINATION ${packageFolder})

configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/PlistCore/cmake/PlistCoreConfig.cmake.in
    ${PROJECT_BINARY_DIR}/PlistCoreConfig.cmake
    INSTALL_DESTINATION ${packageFolder})
# Until 1.0 a new minor version may break callers.
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/PlistCoreConfigVersion.cmake
    COMPATIBILITY SameMinorVersion)
install(FILES
    ${PROJECT_BINARY_DIR}/PlistCoreConfig.cmake
    ${PROJECT_BINARY_DIR}/PlistCoreConfigVersion.cmake
    DESTINATION ${packageFolder} COMPONENT PlistCore)
