# Debian packages, one for each component of the installation: cpack in a build whose prefix is /usr (scripts/package).
set(CPACK_GENERATOR DEB)
set(CPACK_COMPONENTS_ALL tappora tappora-desktop libtapcore-dev)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_PACKAGE_CONTACT "The Tappora developers <developers@tappora.org>")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE "")
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_DEBUGINFO_PACKAGE OFF)

set(CPACK_DEBIAN_TAPPORA_PACKAGE_NAME tappora)
set(CPACK_COMPONENT_TAPPORA_DESCRIPTION "counts how often each key is pressed, never what is typed
 Tappora counts keys, shortcuts and mouse buttons hour by hour, and keeps the
 counts in plain text tables. This package has the command line, the recorder,
 the typing trainer, heat maps and the assistant.")
set(CPACK_DEBIAN_TAPPORA_PACKAGE_RECOMMENDS "tappora-desktop")
set(maintainer ${PROJECT_SOURCE_DIR}/packaging)
set(CPACK_DEBIAN_TAPPORA_PACKAGE_CONTROL_EXTRA ${maintainer}/postinst ${maintainer}/prerm ${maintainer}/postrm)

set(CPACK_DEBIAN_TAPPORA-DESKTOP_PACKAGE_NAME tappora-desktop)
set(CPACK_DEBIAN_TAPPORA-DESKTOP_PACKAGE_DEPENDS "tappora (= ${PROJECT_VERSION})")
set(CPACK_COMPONENT_TAPPORA-DESKTOP_DESCRIPTION "desktop widgets of Tappora
 Four widgets for X11 and Wayland desktops: today, the hours, the week and a
 heat map of the keyboard.")

set(CPACK_DEBIAN_LIBTAPCORE-DEV_PACKAGE_NAME libtapcore-dev)
set(CPACK_DEBIAN_LIBTAPCORE-DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_LIBTAPCORE-DEV_PACKAGE_SHLIBDEPS OFF)
set(CPACK_DEBIAN_LIBTAPCORE-DEV_PACKAGE_DEPENDS "libicu-dev, nlohmann-json3-dev, libpugixml-dev")
set(CPACK_COMPONENT_LIBTAPCORE-DEV_DESCRIPTION "libraries behind Tappora, for C++ programs
 TapCore reads and writes counts of keys, keyboards and layouts; TapWidgets
 draws the desktop widgets. Static libraries, headers, a CMake package and
 pkg-config files.")

# Each package says under which licence it is, and has a changelog in Debian's form, which points to the real one.
set(debian_changelog ${PROJECT_BINARY_DIR}/debian/changelog)
configure_file(${PROJECT_SOURCE_DIR}/packaging/changelog.in ${debian_changelog} @ONLY)
find_program(GZIP gzip)
if(GZIP)
  execute_process(COMMAND ${GZIP} -9nkf ${debian_changelog})
endif()
foreach(component ${CPACK_COMPONENTS_ALL})
  set(documents ${CMAKE_INSTALL_DATADIR}/doc/${component})
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${documents} RENAME copyright COMPONENT ${component})
  install(FILES ${debian_changelog}.gz DESTINATION ${documents} COMPONENT ${component} OPTIONAL)
endforeach()
include(CPack)
