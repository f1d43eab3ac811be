# The few kinds of target this repository is made of, so that each folder's CMakeLists.txt says only what it is and what it may know.

include(GenerateExportHeader)
include(GNUInstallDirs)

# What every target compiles with.
add_library(spu_compile_options INTERFACE)
target_compile_features(spu_compile_options INTERFACE cxx_std_20)
# No function of ours is meant to be replaced when a program is loaded, so a call of one need not go through a table of jumps.
target_compile_options(spu_compile_options INTERFACE -fno-semantic-interposition -fno-plt)
if(SPU_WARNINGS_AS_ERRORS)
  target_compile_options(spu_compile_options INTERFACE -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
    # The stable_sort of libstdc++ 12 uses what it deprecates itself, and clang says so.
    $<$<CXX_COMPILER_ID:Clang>:-Wno-deprecated-declarations>
    # Several files compiled as one: GCC takes what is internal to one of them for part of a header.
    $<$<AND:$<BOOL:${CMAKE_UNITY_BUILD}>,$<CXX_COMPILER_ID:GNU>>:-Wno-subobject-linkage>)
endif()
if(SPU_SANITIZE)
  target_compile_options(spu_compile_options INTERFACE
    -fsanitize=${SPU_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(spu_compile_options INTERFACE -fsanitize=${SPU_SANITIZE})
endif()

# spu_guide_fuzzing(<target>): lets a fuzzer see which ways an input takes through it. Not for tests and what else is no
# library: they would take half as long again to compile.
function(spu_guide_fuzzing target)
  if(SPU_FUZZ)
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
endfunction()

# spu_finish_shared_library(<target>): what every shared library of ours is, whatever it is made of.
function(spu_finish_shared_library target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  target_link_libraries(${target} PRIVATE $<BUILD_INTERFACE:spu_compile_options>)
  spu_guide_fuzzing(${target})
  if(NOT SPU_SANITIZE)
    target_link_options(${target} PRIVATE LINKER:--no-undefined)
  endif()
  set_target_properties(${target} PROPERTIES
    VERSION ${PROJECT_VERSION} SOVERSION ${PROJECT_VERSION_MAJOR}
    CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# spu_add_shared_library(<folder> EXPORT_HEADER <a/b/export.hpp> EXPORT_MACRO <PREFIX> SOURCES ... HEADERS ...)
#
# A shared library `spu_<folder>`, alias `search_path_utilities::<folder>`: hidden by default, public headers below include/,
# each of which must compile by itself.
function(spu_add_shared_library folder)
  cmake_parse_arguments(ARG "" "EXPORT_HEADER;EXPORT_MACRO" "SOURCES;HEADERS" ${ARGN})
  set(target spu_${folder})
  set(generated ${CMAKE_CURRENT_BINARY_DIR}/generated)

  add_library(${target} SHARED ${ARG_SOURCES})
  add_library(search_path_utilities::${folder} ALIAS ${target})
  generate_export_header(${target} BASE_NAME ${ARG_EXPORT_MACRO} EXPORT_FILE_NAME ${generated}/${ARG_EXPORT_HEADER})
  target_sources(${target} PUBLIC FILE_SET HEADERS BASE_DIRS include ${generated}
    FILES ${ARG_HEADERS} ${generated}/${ARG_EXPORT_HEADER})
  spu_finish_shared_library(${target})
endfunction()

# spu_add_family(<folder> SOURCES ... SEES ...)
#
# One family of the library: an OBJECT library that sees the contracts and its own folder. Whatever else it may know is a
# target somebody names under SEES.
function(spu_add_family folder)
  cmake_parse_arguments(ARG "" "" "SOURCES;SEES" ${ARGN})
  add_library(spu_${folder} OBJECT ${ARG_SOURCES})
  add_library(search_path_utilities::${folder} ALIAS spu_${folder})
  target_include_directories(spu_${folder}
    PUBLIC ${PROJECT_SOURCE_DIR}/include ${PROJECT_BINARY_DIR}/generated ${CMAKE_CURRENT_SOURCE_DIR}/include
    PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(spu_${folder} PUBLIC search_path_utilities::search_path_interfaces ${ARG_SEES}
    PRIVATE spu_compile_options)
  spu_guide_fuzzing(spu_${folder})
  # A library that defines unique symbols is never unloaded, and what it made when it was loaded never goes.
  target_compile_options(spu_${folder} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
  set_target_properties(spu_${folder} PROPERTIES
    POSITION_INDEPENDENT_CODE ON CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
endfunction()

# spu_compile_alone(<source>...)
#
# Sources with names of their own that a neighbour has as well, so that both cannot be compiled as one.
function(spu_compile_alone)
  set_source_files_properties(${ARGN} PROPERTIES SKIP_UNITY_BUILD_INCLUSION ON)
endfunction()

# spu_add_test(<name> [THREADS] SOURCES ... LIBRARIES ...)
#
# A GoogleTest program whose every test is a test of ctest; under a sanitizer the program is one. THREADS: some of them
# run threads; spu_tests_with_threads builds all such programs, and `ctest -L threads` runs them.
add_custom_target(spu_tests_with_threads)
if(BUILD_TESTING)
  # A third of what a test costs to compile, made once for all of them; -fpch-preprocess lets ccache see through it.
  file(CONFIGURE OUTPUT ${PROJECT_BINARY_DIR}/test_headers.cpp CONTENT "")
  add_library(spu_test_headers OBJECT EXCLUDE_FROM_ALL ${PROJECT_BINARY_DIR}/test_headers.cpp)
  target_precompile_headers(spu_test_headers PRIVATE <gmock/gmock.h>)
  target_compile_options(spu_test_headers PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  target_link_libraries(spu_test_headers PRIVATE GTest::gmock spu_compile_options)
endif()
function(spu_add_test name)
  cmake_parse_arguments(ARG "THREADS" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_precompile_headers(${name} REUSE_FROM spu_test_headers)
  target_compile_options(${name} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-fpch-preprocess>)
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES} GTest::gmock GTest::gtest GTest::gtest_main spu_compile_options)
  if(ARG_THREADS)
    set(label LABELS threads)
    add_dependencies(spu_tests_with_threads ${name})
  endif()
  if(SPU_SANITIZE)
    # A process takes long to start under a sanitizer: one for all tests of a program, not one for each.
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 900 ${label})
  else()
    gtest_discover_tests(${name} DISCOVERY_TIMEOUT 120 PROPERTIES TIMEOUT 300 ${label})
  endif()
endfunction()
