# Debian packages by CPack: one for each component of cmake/Install.cmake.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME korvane)
set(CPACK_PACKAGE_VENDOR KORVANE)
set(CPACK_PACKAGE_CONTACT "KORVANE developers <developers@korvane.example>")
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# korvane_package(<package> <summary> <text>): the text is the body of its description.
macro(korvane_package package summary text)
  list(APPEND CPACK_COMPONENTS_ALL ${package})
  string(TOUPPER ${package} korvane_component)
  set(CPACK_DEBIAN_${korvane_component}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${korvane_component}_DESCRIPTION "${summary}\n${text}")
  set(CPACK_COMPONENT_${korvane_component}_DESCRIPTION "${summary}\n${text}")
endmacro()

set(CPACK_COMPONENTS_ALL)
korvane_package(
  korvane-batch "solves sheet-pile walls without a display"
  "korvane-batch reads input files of anchored and cantilever sheet-pile walls and writes
reports, results as JSON and plots. The package holds the example walls and the
schema of the results.")
korvane_package(
  korvane-doc "guide and theory of the sheet-pile wall program KORVANE"
  "The user guide, the theory with equations, sources and limits, and the layout of the
results as JSON.")
set(CPACK_DEBIAN_KORVANE-DOC_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_KORVANE-DOC_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_KORVANE-DOC_PACKAGE_SHLIBDEPS OFF)
if(KORVANE_DESKTOP)
  korvane_package(
    korvane "design and analysis of sheet-pile retaining walls"
    "KORVANE designs and analyses anchored and cantilever sheet-pile walls by classical
methods: soil and water pressures, the wall's depth or its factor of safety, moments,
shears and deflections, with reports and plots.")
  set(CPACK_DEBIAN_KORVANE_PACKAGE_DEPENDS "korvane-batch (= ${PROJECT_VERSION}), libqt6svg6, fonts-liberation2 | fonts-liberation")
  set(CPACK_DEBIAN_KORVANE_PACKAGE_RECOMMENDS "korvane-doc")
endif()
include(CPack)
