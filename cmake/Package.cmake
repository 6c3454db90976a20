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
set(CPACK_COMPONENTS_ALL)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION science)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)

# korvane_package(<package> <summary> <text> [<field> <value>]...): the text is the body of its
# description; further fields of its control file.
macro(korvane_package package summary text)
  list(APPEND CPACK_COMPONENTS_ALL ${package})
  string(TOUPPER ${package} korvane_component)
  set(CPACK_DEBIAN_${korvane_component}_PACKAGE_NAME ${package})
  set(CPACK_DEBIAN_${korvane_component}_DESCRIPTION "${summary}\n${text}")
  set(korvane_fields ${ARGN})
  while(korvane_fields)
    list(POP_FRONT korvane_fields korvane_field korvane_value)
    set(CPACK_DEBIAN_${korvane_component}_PACKAGE_${korvane_field} "${korvane_value}")
  endwhile()
endmacro()

korvane_package(
  korvane-batch "solves sheet-pile retaining walls without a display"
  "Input files of anchored and cantilever sheet-pile walls become reports,
results as JSON, calculation sheets and figures. The package holds example
walls, the JSON schema of the results, and published cases by which the
installed program checks itself."
  RECOMMENDS "korvane-doc")
korvane_package(
  korvane-doc "guide and theory of the sheet-pile wall program KORVANE"
  "The user guide, the theory with equations, sources and limits, the layout of
the results as JSON, and the outcome of the published cases."
  ARCHITECTURE all SECTION doc SHLIBDEPS OFF)
if(korvane_has_study)
  korvane_package(
    korvane-study "asks one sheet-pile wall many times"
    "Parameter studies of anchored and cantilever sheet-pile walls: grids, one
number at a time, random samples, reliability and wanted values, on one
computer or in parts on a cluster. A study is a text file; its rows go to a
database file."
    RECOMMENDS "korvane-batch, korvane-doc")
endif()
if(KORVANE_DESKTOP)
  # The libraries of SVG icons and the fonts are taken at run time alone.
  korvane_package(
    korvane "design and analysis of sheet-pile retaining walls"
    "Anchored and cantilever sheet-pile walls by classical methods: soil and water
pressures, the wall's depth or its factor of safety, moments, shears and
deflections, with reports and plots. The package holds the desktop program."
    DEPENDS "korvane-batch (= ${PROJECT_VERSION}), libqt6svg6, fonts-liberation2 | fonts-liberation"
    RECOMMENDS "korvane-study, korvane-doc")
endif()
include(CPack)
