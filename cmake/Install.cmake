# Where the parts of an installation go, in three components: tappora (command line, recorder, trainer, painter,
# assistant), tappora-desktop (widgets) and libtapcore-dev (libraries and headers).
include(GNUInstallDirs)
include(CMakePackageConfigHelpers)

set(tappora_data ${CMAKE_INSTALL_DATADIR}/tappora)
set(tappora_companions ${CMAKE_INSTALL_LIBEXECDIR}/tappora)
set(tappora_headers ${CMAKE_INSTALL_INCLUDEDIR}/tappora)
set(tappora_cmake_package ${CMAKE_INSTALL_LIBDIR}/cmake/Tappora)

# Programs find each other and their data by ways from their own folder, so that an installation can be moved:
# TAPPORA_DATA_FROM_PROGRAMS is "../share/tappora".
foreach(part data companions)
  cmake_path(RELATIVE_PATH tappora_${part} BASE_DIRECTORY ${CMAKE_INSTALL_BINDIR}
    OUTPUT_VARIABLE tappora_${part}_from_programs)
endforeach()
cmake_path(RELATIVE_PATH tappora_data BASE_DIRECTORY ${tappora_companions}
  OUTPUT_VARIABLE tappora_data_from_companions)

# install_program(TARGET COMPONENT): a program that people start themselves.
function(install_program target component)
  install(TARGETS ${target} RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT ${component})
endfunction()

# install_companion(TARGET COMPONENT): a program that `tappora` starts.
function(install_companion target component)
  install(TARGETS ${target} RUNTIME DESTINATION ${tappora_companions} COMPONENT ${component})
endfunction()

# What a desktop shows of the program.
function(install_desktop_entry component)
  set(id org.tappora.Tappora)
  set(from ${PROJECT_SOURCE_DIR}/packaging)
  install(FILES ${from}/${id}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT ${component})
  install(FILES ${from}/${id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo COMPONENT ${component})
  install(FILES ${from}/${id}.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
    COMPONENT ${component})
endfunction()

# What opens links that begin with tappora://, in a terminal.
function(install_link_handler component)
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/org.tappora.Tappora.Open.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications COMPONENT ${component})
endfunction()

# The system service, which `tappora setup` starts for a user.
function(install_system_service component)
  install(FILES ${PROJECT_SOURCE_DIR}/resources/Services/tappora-record@.service DESTINATION lib/systemd/system
    COMPONENT ${component})
endfunction()

# What people read.
function(install_documents component)
  set(from ${PROJECT_SOURCE_DIR})
  install(FILES ${from}/README.md ${from}/CHANGELOG.md ${from}/LICENSE DESTINATION ${CMAKE_INSTALL_DOCDIR}
    COMPONENT ${component})
  install(DIRECTORY ${from}/docs DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT ${component})
endfunction()

# install_manual(FOLDER COMPONENT): manual pages and completions, where man and the shells look for them.
function(install_manual from component)
  install(DIRECTORY ${from}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT ${component})
  set(share ${CMAKE_INSTALL_DATADIR})
  install(FILES ${from}/bash/tappora DESTINATION ${share}/bash-completion/completions COMPONENT ${component})
  install(FILES ${from}/zsh/_tappora DESTINATION ${share}/zsh/vendor-completions COMPONENT ${component})
  install(FILES ${from}/fish/tappora.fish DESTINATION ${share}/fish/vendor_completions.d COMPONENT ${component})
endfunction()

# install_library(TARGET FOLDER): a static library with the headers of its folder. Includes are written from the root
# of the tree, in this build as in one that uses the installed library.
function(install_library target folder)
  target_include_directories(${target} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}> $<INSTALL_INTERFACE:${tappora_headers}>)
  target_compile_features(${target} PUBLIC cxx_std_20)
  add_library(Tappora::${target} ALIAS ${target})
  if(NOT PROJECT_IS_TOP_LEVEL)
    return()
  endif()
  install(TARGETS ${target} EXPORT TapporaTargets
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT libtapcore-dev)
  install(DIRECTORY ${PROJECT_SOURCE_DIR}/${folder} DESTINATION ${tappora_headers} COMPONENT libtapcore-dev
    FILES_MATCHING PATTERN "*.h" PATTERN "painter.h" EXCLUDE)
endfunction()

# What find_package(Tappora) and pkg-config read.
function(install_packages_for_developers)
  if(NOT PROJECT_IS_TOP_LEVEL)
    return()
  endif()
  set(made ${PROJECT_BINARY_DIR}/cmake)
  install(EXPORT TapporaTargets NAMESPACE Tappora:: DESTINATION ${tappora_cmake_package} COMPONENT libtapcore-dev)
  configure_file(${PROJECT_SOURCE_DIR}/cmake/TapporaConfig.cmake ${made}/TapporaConfig.cmake COPYONLY)
  write_basic_package_version_file(${made}/TapporaConfigVersion.cmake COMPATIBILITY SameMinorVersion)
  install(FILES ${made}/TapporaConfig.cmake ${made}/TapporaConfigVersion.cmake
    DESTINATION ${tappora_cmake_package} COMPONENT libtapcore-dev)
  set(pkgconfig ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
  cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}/${pkgconfig}
    OUTPUT_VARIABLE prefix_from_pkgconfig)
  foreach(library tapcore tapwidgets)
    configure_file(${PROJECT_SOURCE_DIR}/cmake/${library}.pc.in ${made}/${library}.pc @ONLY)
    install(FILES ${made}/${library}.pc DESTINATION ${pkgconfig} COMPONENT libtapcore-dev)
  endforeach()
endfunction()
