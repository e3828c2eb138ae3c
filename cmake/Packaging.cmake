# `cmake --build --preset release --target package` makes a Debian package; on a system without dpkg, an archive.
set(CPACK_PACKAGE_NAME kavendra)
set(CPACK_PACKAGE_VENDOR "The kavendra developers")
set(CPACK_PACKAGE_CONTACT "${CPACK_PACKAGE_VENDOR} <developers@kavendra.org>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Launcher for items in tables (CSV, Excel workbooks)")
set(CPACK_PACKAGE_DESCRIPTION
"kavendra reads the CSV files and Excel workbooks of one directory, shows their
rows in one window and filters them while you type. Enter starts the selected
row: a web address, an application, a directory, a file or a program.
.
Tables can be kept by a team on a shared drive. Words match in any order;
Hiragana also matches Katakana.")
set(CPACK_STRIP_FILES ON)
set(CPACK_VERBATIM_VARIABLES ON)
# Whatever the umask is.
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

find_program(KAVENDRA_DPKG dpkg)
if(KAVENDRA_DPKG)
  set(CPACK_GENERATOR DEB)
  set(CPACK_PRE_BUILD_SCRIPTS ${PROJECT_SOURCE_DIR}/cmake/DebianFiles.cmake)
else()
  set(CPACK_GENERATOR TXZ)
endif()
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE ${PROJECT_HOMEPAGE_URL})
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Wayland, the translations of Qt's own texts, and the session bus for one instance and the desktop's light or dark.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
  "default-dbus-session-bus | dbus-session-bus, hicolor-icon-theme, qt6-translations-l10n, qt6-wayland")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)

# For DebianFiles.cmake.
set(CPACK_KAVENDRA_SOURCE_DIR ${PROJECT_SOURCE_DIR})
set(CPACK_KAVENDRA_RELEASES ${KAVENDRA_RELEASES})
include(CPack)
