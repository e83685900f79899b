# The Debian package: `cmake --build build/release --target package` makes build/release/tessel_VERSION_ARCH.deb.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME tessel)
set(CPACK_PACKAGE_VENDOR Corvid)
set(CPACK_PACKAGE_CONTACT "Corvid <tessel@tessel.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL "${TESSEL_WEBSITE}")
set(CPACK_VERBATIM_VARIABLES ON)

# Like `make install DESTDIR=...`, so that files written during the installation contain their final path.
set(CPACK_SET_DESTDIR ON)
set(CPACK_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PROJECT_CONFIG_FILE "${PROJECT_SOURCE_DIR}/cmake/PackageWebsite.cmake")
set(CPACK_PRE_BUILD_SCRIPTS "${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake")
set(CPACK_TESSEL_DEBIAN_FOLDER "${PROJECT_SOURCE_DIR}/Resources/debian")

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION x11)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The first line is the project's description.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "moves and resizes windows from the keyboard")
set(CPACK_PACKAGE_DESCRIPTION
"Tessel puts the window you are working in where you want it: to the left or
right half of its screen, to the center, over the whole screen or nearly so, or
to the full height. It waits in the background for six shortcuts and costs next
to nothing while it waits. Applications can have a rule, too: their first
window opens maximized or centered. An item in the panel opens a window for all
of it.
.
It works on KDE Plasma, GNOME (through an extension that comes with it), sway
and Wayfire, and on X11 desktops whose window manager moves windows on request.")

# CPack finds the libraries in the files themselves. It cannot see what the interface loads by name.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
if(TARGET tessel-menu)
    set(CPACK_DEBIAN_PACKAGE_DEPENDS "qml6-module-qtquick, qml6-module-qtqml-workerscript")
endif()
# The desktop's portal or the second package opens addresses. The third shows windows on Wayland.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "default-dbus-session-bus | dbus-session-bus, xdg-utils, qt6-wayland")

include(CPack)
