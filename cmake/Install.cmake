# What is installed where, by package: the desktop program, the batch command with what it needs to
# check itself, the documents.
include(GNUInstallDirs)

find_program(KORVANE_GZIP gzip REQUIRED)
mark_as_advanced(KORVANE_GZIP)

# korvane_install_compressed(<file> <name> <folder> <component>): the same bytes in every run.
function(korvane_install_compressed file name folder component)
  set(packed ${CMAKE_BINARY_DIR}/compressed/${component}/${name}.gz)
  add_custom_command(
    OUTPUT ${packed}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_BINARY_DIR}/compressed/${component}
    COMMAND ${KORVANE_GZIP} -9nc ${file} > ${packed}
    DEPENDS ${file}
    VERBATIM)
  add_custom_target(compressed_${component}_${name} ALL DEPENDS ${packed})
  install(
    FILES ${packed}
    DESTINATION ${folder}
    COMPONENT ${component})
endfunction()

# korvane_install_notices(<package>): who it belongs to and what has changed.
configure_file(${PROJECT_SOURCE_DIR}/packaging/debian/changelog.in
               ${CMAKE_BINARY_DIR}/packaging/changelog @ONLY)
function(korvane_install_notices package)
  install(
    FILES ${PROJECT_SOURCE_DIR}/packaging/debian/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
    COMPONENT ${package})
  korvane_install_compressed(${CMAKE_BINARY_DIR}/packaging/changelog changelog
                             ${CMAKE_INSTALL_DATADIR}/doc/${package} ${package})
endfunction()

korvane_install_notices(korvane-batch)
korvane_install_compressed(${PROJECT_SOURCE_DIR}/packaging/man/korvane-batch.1 korvane-batch.1
                           ${CMAKE_INSTALL_MANDIR}/man1 korvane-batch)
install(
  DIRECTORY examples/
  DESTINATION ${CMAKE_INSTALL_DATADIR}/korvane/examples
  COMPONENT korvane-batch
  FILES_MATCHING
  PATTERN "*.dat")
install(
  DIRECTORY cases/
  DESTINATION ${CMAKE_INSTALL_DATADIR}/korvane/cases
  COMPONENT korvane-batch)
install(
  FILES docs/korvane-result.schema.json
  DESTINATION ${CMAKE_INSTALL_DATADIR}/korvane
  COMPONENT korvane-batch)

korvane_install_notices(korvane-doc)
install(
  DIRECTORY docs/guide docs/theory
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/korvane-doc
  COMPONENT korvane-doc)
install(
  FILES docs/json.md docs/verification.md
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/korvane-doc
  COMPONENT korvane-doc)

if(KORVANE_DESKTOP)
  korvane_install_notices(korvane)
  korvane_install_compressed(${PROJECT_SOURCE_DIR}/packaging/man/korvane.1 korvane.1
                             ${CMAKE_INSTALL_MANDIR}/man1 korvane)
  install(
    FILES packaging/applications/korvane.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
    COMPONENT korvane)
  install(
    FILES packaging/mime/korvane.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
    COMPONENT korvane)
  install(
    FILES packaging/appstream/org.korvane.korvane.metainfo.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo
    COMPONENT korvane)
  set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
  install(
    FILES packaging/icons/korvane.svg
    DESTINATION ${icons}/scalable/apps
    COMPONENT korvane)
  install(
    FILES packaging/icons/korvane-symbolic.svg
    DESTINATION ${icons}/symbolic/apps
    COMPONENT korvane)
  foreach(size 16 22 24 32 48 64 128 256)
    install(
      FILES packaging/icons/${size}/korvane.png
      DESTINATION ${icons}/${size}x${size}/apps
      COMPONENT korvane)
  endforeach()
endif()
