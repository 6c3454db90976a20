# The release day in the forms in which programs, packages and desktops tell it. Version and day
# themselves stand in CMakeLists.txt.

# korvane_day(<variable> <format>): the release day in a format of date(1).
function(korvane_day variable format)
  execute_process(
    COMMAND ${CMAKE_COMMAND} -E env LC_ALL=C date -u -d ${KORVANE_RELEASE_DAY} +${format}
    OUTPUT_VARIABLE day
    OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
  set(${variable} ${day} PARENT_SCOPE)
endfunction()

korvane_day(KORVANE_VERSION_DATE "%B %Y")
string(TOUPPER ${KORVANE_VERSION_DATE} KORVANE_VERSION_DATE)
korvane_day(KORVANE_CHANGELOG_DATE "%a, %d %b %Y %T +0000")

# Before 1.0.0 nothing is promised.
set(KORVANE_RELEASE_TYPE stable)
if(PROJECT_VERSION VERSION_LESS 1.0.0)
  set(KORVANE_RELEASE_TYPE development)
endif()

file(RELATIVE_PATH KORVANE_DATA_FROM_PROGRAM ${CMAKE_INSTALL_FULL_BINDIR}
     ${CMAKE_INSTALL_FULL_DATADIR}/korvane)
