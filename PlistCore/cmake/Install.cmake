# Makes PlistCore a package, for find_package(PlistCore) and for pkg-config. The component
# PlistCoreLibrary is what programs need to run, PlistCore what others need to build them.

include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(cmakeFolder ${CMAKE_INSTALL_LIBDIR}/cmake/PlistCore)
set(pkgConfigFolder ${CMAKE_INSTALL_LIBDIR}/pkgconfig)

install(TARGETS PlistCore PlistCoreShared EXPORT PlistCoreTargets
        ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT PlistCore
        LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT PlistCoreLibrary
                NAMELINK_COMPONENT PlistCore)
foreach(header IN LISTS publicHeaders innerHeaders)
    file(RELATIVE_PATH path ${PROJECT_SOURCE_DIR} ${header})
    get_filename_component(folder ${path} DIRECTORY)
    install(FILES ${header} COMPONENT PlistCore
            DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/PlistCore/${folder})
endforeach()

install(EXPORT PlistCoreTargets NAMESPACE PlistCore:: COMPONENT PlistCore
        DESTINATION ${cmakeFolder})
configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/PlistCoreConfig.cmake.in
    ${PROJECT_BINARY_DIR}/PlistCoreConfig.cmake
    INSTALL_DESTINATION ${cmakeFolder})
# Until 1.0 a new minor version may break callers. The configuration itself checks the machine, and
# says so in words.
write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/PlistCoreConfigVersion.cmake
    COMPATIBILITY SameMinorVersion ARCH_INDEPENDENT)
install(FILES
    ${PROJECT_BINARY_DIR}/PlistCoreConfig.cmake
    ${PROJECT_BINARY_DIR}/PlistCoreConfigVersion.cmake
    ${PROJECT_SOURCE_DIR}/cmake/Requirements.cmake
    DESTINATION ${cmakeFolder} COMPONENT PlistCore)

# From its own place, so that the package can be moved as a whole.
file(RELATIVE_PATH prefixFromPackage /prefix/${pkgConfigFolder} /prefix)
string(REGEX REPLACE "/$" "" prefixFromPackage "${prefixFromPackage}")
configure_file(${PROJECT_SOURCE_DIR}/cmake/PlistCore.pc.in ${PROJECT_BINARY_DIR}/PlistCore.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/PlistCore.pc COMPONENT PlistCore
        DESTINATION ${pkgConfigFolder})
