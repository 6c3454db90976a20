# Helpers that every directory uses: one library a room, one test program a room.

add_library(korvane_options INTERFACE)
target_compile_features(korvane_options INTERFACE cxx_std_20)
target_compile_options(
  korvane_options
  INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow
            # The methods hang on exact comparisons: every preset must give the same bytes.
            -ffp-contract=off
            # GCC 12 warns of overlapping copies in its own std::string, wrongly (bug 105651).
            $<$<AND:$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict>)
if(KORVANE_WERROR)
  target_compile_options(korvane_options INTERFACE -Werror)
endif()
if(KORVANE_SANITIZE)
  target_compile_options(korvane_options INTERFACE -fsanitize=${KORVANE_SANITIZE}
                                                   -fno-omit-frame-pointer)
  target_link_options(korvane_options INTERFACE -fsanitize=${KORVANE_SANITIZE})
  if(KORVANE_SANITIZE MATCHES "undefined")
    target_compile_options(korvane_options INTERFACE -fno-sanitize-recover=undefined)
  endif()
endif()

# Hardening of the programs that people run. Each compiler and processor takes what it knows; the
# sanitizers bring checks of their own.
include(CheckCXXCompilerFlag)
if(KORVANE_SANITIZE)
  set(korvane_hardened 0)
else()
  set(korvane_hardened $<CONFIG:Release,RelWithDebInfo>)
endif()
set(hardening -fPIE -fstack-protector-strong -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2 -D_GLIBCXX_ASSERTIONS)
check_cxx_compiler_flag(-fcf-protection=full korvane_has_cf_protection)
if(korvane_has_cf_protection)
  list(APPEND hardening -fcf-protection=full)
endif()
target_compile_options(korvane_options INTERFACE "$<${korvane_hardened}:${hardening}>")
target_link_options(korvane_options INTERFACE
                    "$<${korvane_hardened}:-pie;LINKER:-z,relro,-z,now,-z,noexecstack>")

# korvane_library(<room> [DEPENDS <room>...]): the library of src/<room>. Its headers are reached
# as "<room>/header.h" through a link of its own, and only by rooms that depend on it, so that an
# include against the order of the rooms does not compile.
function(korvane_library room)
  cmake_parse_arguments(arg "" "" "DEPENDS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")
  set(include_root ${CMAKE_BINARY_DIR}/include/${room})
  file(MAKE_DIRECTORY ${include_root})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${include_root}/${room} SYMBOLIC)
  list(TRANSFORM arg_DEPENDS PREPEND korvane_)
  if(sources)
    add_library(korvane_${room} STATIC ${sources})
    target_include_directories(korvane_${room} PUBLIC ${include_root})
    target_link_libraries(korvane_${room} PUBLIC korvane_options ${arg_DEPENDS})
  else()
    add_library(korvane_${room} INTERFACE)
    target_include_directories(korvane_${room} INTERFACE ${include_root})
    target_link_libraries(korvane_${room} INTERFACE korvane_options ${arg_DEPENDS})
  endif()
endfunction()

# korvane_tests(<name> [DEPENDS <room>...] [LIBRARIES <target>...]): all *.cpp of the present
# folder as one GoogleTest program.
function(korvane_tests name)
  cmake_parse_arguments(arg "" "" "DEPENDS;LIBRARIES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT sources)
    return()
  endif()
  list(TRANSFORM arg_DEPENDS PREPEND korvane_)
  add_executable(${name}_tests ${sources})
  target_link_libraries(${name}_tests PRIVATE korvane_options ${arg_DEPENDS} ${arg_LIBRARIES}
                                              korvane_test_support GTest::gtest_main)
  target_compile_definitions(${name}_tests PRIVATE KORVANE_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  gtest_discover_tests(${name}_tests DISCOVERY_MODE PRE_TEST PROPERTIES TIMEOUT 300)
endfunction()

# korvane_tests_at_scales(<name> <tests> <filter> <look>...): some tests of a program once more, each
# look a scale of the display, "_dark" behind it for a dark theme.
function(korvane_tests_at_scales name tests filter)
  foreach(look ${ARGN})
    string(REGEX MATCH "^[0-9.]+" scale ${look})
    set(environment QT_SCALE_FACTOR=${scale})
    if(look MATCHES "_dark$")
      list(APPEND environment KORVANE_DARK=1)
    endif()
    add_test(NAME ${name}_at_scale_${look} COMMAND ${tests} --gtest_filter=${filter})
    set_tests_properties(${name}_at_scale_${look} PROPERTIES ENVIRONMENT "${environment}")
  endforeach()
endfunction()
