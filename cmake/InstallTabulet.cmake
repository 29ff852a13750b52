# Installs the application with all that the desktop looks for.

include(GNUInstallDirs)

set(packaging ${PROJECT_SOURCE_DIR}/packaging)

install(TARGETS tabulet RUNTIME COMPONENT Tabulet)
install(FILES ${packaging}/desktop/com.ventrel.Tabulet.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT Tabulet)
install(FILES ${packaging}/metainfo/com.ventrel.Tabulet.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT Tabulet)
install(FILES ${packaging}/mime/com.ventrel.Tabulet.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages COMPONENT Tabulet)
install(DIRECTORY ${packaging}/icons/hicolor
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons COMPONENT Tabulet)
install(FILES ${PROJECT_SOURCE_DIR}/docs/tabulet.1
        DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT Tabulet)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
        DESTINATION ${CMAKE_INSTALL_DATADIR}/licenses/tabulet COMPONENT Tabulet)

# The message bus wants the whole path of the program, which depends on the prefix that is chosen
# only now.
install(CODE "
    set(programFolder \${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR})
    configure_file(${packaging}/dbus/com.ventrel.Tabulet.service.in
                   ${PROJECT_BINARY_DIR}/com.ventrel.Tabulet.service @ONLY)"
        COMPONENT Tabulet)
install(FILES ${PROJECT_BINARY_DIR}/com.ventrel.Tabulet.service
        DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services COMPONENT Tabulet)
