# The Debian package, made by cpack. The newest entry of its changelog sets the version.
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS changelog)
file(STRINGS changelog newest_entry LIMIT_COUNT 1)
string(REGEX MATCH "\\((.+)-(.+)\\)" version "${newest_entry}")
if(NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
    message(FATAL_ERROR "packaging/changelog begins with another version: ${newest_entry}")
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_SOURCE_GENERATOR "")
set(CPACK_PACKAGE_NAME quillsatchel)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_2})
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_PACKAGE_CONTACT "Quillsatchel developers <developers@quillsatchel.example>")
set(CPACK_PACKAGE_HOMEPAGE_URL ${QUILLSATCHEL_WEBSITE})
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "floating panel for texts you paste again and again")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Quillsatchel keeps blocks of text in the tabs of a small panel that stays
above the other windows: prompts for chat assistants, boilerplate, links.
One click copies a block, fills an empty one from the clipboard, or opens
one that is a web address. Up to five applications or websites can be set
up as quick launchers.
.
Speech is recognised on this machine. Texts never leave it.")

# Linked libraries are found automatically. The rest is loaded or started by name: the SVG plugin for
# icons of applications (part of libqt6svg6 in Debian 12), the English speech model and
# the library that pronounces the user's words, proxies for downloads, WebP website icons, the
# browser, and Wayland for desktops without XWayland.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS
    "hicolor-icon-theme, qt6-svg-plugins | libqt6svg6 (<< 6.8)")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS
    "glib-networking, libespeak-ng1, pocketsphinx-en-us, qt6-image-formats-plugins, qt6-wayland,\
 xdg-utils")

set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_CMAKE_PROJECTS
    "${PROJECT_BINARY_DIR};Quillsatchel;ALL;/" "${PROJECT_BINARY_DIR};Quillsatchel;debian;/")
include(CPack)
