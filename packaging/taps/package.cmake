# The package vellumo-taps: the service, off until it is turned on. It is installed only as a component
# by itself: cmake --install BUILD --component taps

set(files ${CMAKE_CURRENT_LIST_DIR})
set(built ${CMAKE_CURRENT_BINARY_DIR}/taps)

# The unit has the program's full path, which is known only at installation.
install(CODE "
    set(CMAKE_INSTALL_FULL_LIBEXECDIR \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBEXECDIR}\")
    set(CMAKE_INSTALL_FULL_DATADIR \"\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}\")
    configure_file(\"${files}/vellumo-taps.service.in\" \"${built}/vellumo-taps.service\" @ONLY)"
    COMPONENT taps EXCLUDE_FROM_ALL)
install(FILES ${files}/vellumo-taps.socket ${built}/vellumo-taps.service
        DESTINATION lib/systemd/system COMPONENT taps EXCLUDE_FROM_ALL)
install(FILES ${files}/50-vellumo-taps.preset
        DESTINATION lib/systemd/system-preset COMPONENT taps EXCLUDE_FROM_ALL)
install(FILES ${PROJECT_SOURCE_DIR}/docs/taps.md
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vellumo-taps RENAME README.md
        COMPONENT taps EXCLUDE_FROM_ALL)
install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/vellumo-taps RENAME copyright
        COMPONENT taps EXCLUDE_FROM_ALL)

list(APPEND CPACK_COMPONENTS_ALL taps)
set(CPACK_DEBIAN_TAPS_PACKAGE_NAME vellumo-taps)
set(CPACK_COMPONENT_TAPS_DESCRIPTION
    "double taps of Alt in every window under Wayland, for vellumo\nA system service that reads keyboards and reports to the user who works at the computer when Alt\nis pressed alone, and no other key. It is for Wayland sessions in which vellumo does not notice a\ndouble tap in every window otherwise, such as those of GNOME.\n.\nNothing runs until it is turned on: systemctl enable --now vellumo-taps.socket")
set(CPACK_DEBIAN_TAPS_PACKAGE_DEPENDS "systemd, udev, dbus")
set(CPACK_DEBIAN_TAPS_PACKAGE_RECOMMENDS "")
set(CPACK_DEBIAN_TAPS_PACKAGE_SUGGESTS "")
set(CPACK_DEBIAN_TAPS_PACKAGE_ENHANCES vellumo)
set(CPACK_DEBIAN_TAPS_PACKAGE_CONTROL_EXTRA ${files}/postinst ${files}/prerm ${files}/postrm)
