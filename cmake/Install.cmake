# What is installed where. A component is a Debian package of cmake/Package.cmake.
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

# korvane_install_filled(<template> <folder> <component>): the template with version and day.
function(korvane_install_filled template folder component)
  get_filename_component(name ${template} NAME_WLE)
  configure_file(${template} ${CMAKE_BINARY_DIR}/packaging/${name} @ONLY)
  install(
    FILES ${CMAKE_BINARY_DIR}/packaging/${name}
    DESTINATION ${folder}
    COMPONENT ${component})
endfunction()

# korvane_install_notices(<package>): whose it is, what has changed, and what lintian need not say.
configure_file(packaging/debian/changelog.in ${CMAKE_BINARY_DIR}/packaging/changelog @ONLY)
function(korvane_install_notices package)
  install(
    FILES packaging/debian/copyright
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package}
    COMPONENT ${package})
  korvane_install_compressed(${CMAKE_BINARY_DIR}/packaging/changelog changelog
                             ${CMAKE_INSTALL_DATADIR}/doc/${package} ${package})
  if(EXISTS ${PROJECT_SOURCE_DIR}/packaging/lintian/${package})
    install(
      FILES packaging/lintian/${package}
      DESTINATION ${CMAKE_INSTALL_DATADIR}/lintian/overrides
      COMPONENT ${package})
  endif()
endfunction()

# korvane_install_program_papers(<program>): notices and man page; a program's package has its name.
function(korvane_install_program_papers program)
  korvane_install_notices(${program})
  korvane_install_compressed(${PROJECT_SOURCE_DIR}/packaging/man/${program}.1 ${program}.1
                             ${CMAKE_INSTALL_MANDIR}/man1 ${program})
endfunction()

korvane_install_program_papers(korvane-batch)
install(
  DIRECTORY examples cases
  DESTINATION ${CMAKE_INSTALL_DATADIR}/korvane
  COMPONENT korvane-batch)
install(
  FILES docs/korvane-result.schema.json
  DESTINATION ${CMAKE_INSTALL_DATADIR}/korvane
  COMPONENT korvane-batch)

if(korvane_has_study)
  korvane_install_program_papers(korvane-study)
endif()

# The pages for users; those for developers stay with the source. The schema lies beside the page
# that leads to it.
korvane_install_notices(korvane-doc)
file(GLOB pages CONFIGURE_DEPENDS docs/*.md)
list(FILTER pages EXCLUDE REGEX "/(architecture|building|roadmap)\\.md$")
install(
  DIRECTORY docs/guide docs/theory
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/korvane-doc
  COMPONENT korvane-doc)
install(
  FILES ${pages} docs/korvane-result.schema.json CHANGELOG.md
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/korvane-doc
  COMPONENT korvane-doc)

if(KORVANE_DESKTOP)
  korvane_install_program_papers(korvane)
  install(
    FILES packaging/applications/korvane.desktop
    DESTINATION ${CMAKE_INSTALL_DATADIR}/applications
    COMPONENT korvane)
  install(
    FILES packaging/mime/korvane.xml
    DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages
    COMPONENT korvane)
  korvane_install_filled(packaging/appstream/org.korvane.korvane.metainfo.xml.in
                         ${CMAKE_INSTALL_DATADIR}/metainfo korvane)
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
