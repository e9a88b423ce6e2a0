# Helpers that say once how a library, a program and a test of this project are built.
include(NelWarnings)

set(NEL_GENERATED_DIR "${CMAKE_BINARY_DIR}/generated")

add_library(nel_options INTERFACE)
target_include_directories(nel_options INTERFACE
  "${CMAKE_SOURCE_DIR}/src" "${NEL_GENERATED_DIR}")
target_link_libraries(nel_options INTERFACE nel_warnings)

if(NEL_SANITIZE)
  target_compile_options(nel_options INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=undefined -fno-omit-frame-pointer)
  target_compile_definitions(nel_options INTERFACE _GLIBCXX_ASSERTIONS)
  # gcc 12 takes members of std::function for uninitialised in instrumented code; none is.
  target_compile_options(nel_options INTERFACE
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(nel_options INTERFACE -fsanitize=address,undefined)
endif()

# The many test programs link three times as fast by lld.
find_program(NEL_LLD ld.lld)
if(NEL_BUILD_TESTS AND NEL_LLD)
  target_link_options(nel_options INTERFACE -fuse-ld=lld)
endif()
if(NEL_BUILD_FUZZ)
  target_compile_options(nel_options INTERFACE -fsanitize=fuzzer-no-link)
endif()

# nel_library(name [DEPS lib...]): a static library of all sources in the current folder and in its
# subfolder extra/.
function(nel_library name)
  cmake_parse_arguments(arg "" "" "DEPS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS
    "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp" "${CMAKE_CURRENT_SOURCE_DIR}/extra/*.cpp")
  if(NOT sources)
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE nel_options ${arg_DEPS})
    return()
  endif()
  add_library(${name} STATIC ${sources})
  target_link_libraries(${name} PUBLIC nel_options ${arg_DEPS})
endfunction()

# nel_program(name DEPS lib...): an executable of all sources in the current folder.
function(nel_program name)
  cmake_parse_arguments(arg "" "" "DEPS" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  add_executable(${name} ${sources})
  target_link_libraries(${name} PRIVATE nel_options ${arg_DEPS})
endfunction()

# nel_test(name LABEL label DEPS lib... [DISPLAY] [TIMEOUT seconds] [PARTS filter...]
#          [OPENBOX filter])
# A GoogleTest program of all sources in the current folder, run as one CTest entry; with PARTS one
# for each filter, which run side by side. DISPLAY runs it under an X server and a window manager of
# its own; what OPENBOX selects also runs under that one.
function(nel_test name)
  cmake_parse_arguments(arg "DISPLAY" "LABEL;TIMEOUT;OPENBOX" "DEPS;PARTS" ${ARGN})
  find_package(GTest REQUIRED)
  if(NOT arg_TIMEOUT)
    set(arg_TIMEOUT 120)
  endif()
  file(GLOB sources CONFIGURE_DEPENDS "${CMAKE_CURRENT_SOURCE_DIR}/*.cpp")
  if(NOT sources)
    message(WARNING "${name} has no sources yet")
    return()
  endif()
  add_executable(${name} ${sources})
  target_include_directories(${name} PRIVATE "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE nel_options ${arg_DEPS} GTest::gmock GTest::gmock_main)
  # The headers of the test library take longer than most tests; a few sources share them.
  if(NOT CMAKE_UNITY_BUILD)
    set_target_properties(${name} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE 4)
  endif()
  set(display "${CMAKE_SOURCE_DIR}/scripts/with_display")
  set(wrapper $<$<BOOL:${arg_DISPLAY}>:${display}>)
  if(NOT arg_PARTS)
    set(arg_PARTS "*")
  endif()
  set(entries)
  foreach(filter IN LISTS arg_PARTS)
    set(entry ${name})
    if(entries)
      list(LENGTH entries number)
      string(APPEND entry _${number})
    endif()
    add_test(NAME ${entry} COMMAND ${wrapper} $<TARGET_FILE:${name}> --gtest_filter=${filter}
             COMMAND_EXPAND_LISTS)
    list(APPEND entries ${entry})
  endforeach()
  if(arg_OPENBOX)
    add_test(NAME ${name}_openbox COMMAND ${display} --wm openbox $<TARGET_FILE:${name}>
             --gtest_filter=${arg_OPENBOX})
    list(APPEND entries ${name}_openbox)
  endif()
  set_tests_properties(${entries} PROPERTIES LABELS "${arg_LABEL}" TIMEOUT ${arg_TIMEOUT})
  if(NEL_SANITIZE)
    set_property(TEST ${entries} APPEND PROPERTY ENVIRONMENT
      "LSAN_OPTIONS=suppressions='${CMAKE_SOURCE_DIR}/tests/support/lsan.supp':print_suppressions=0"
      "UBSAN_OPTIONS=print_stacktrace=1")
    if(arg_DISPLAY)
      # The suppressions need stacks through libraries without frame pointers.
      set_property(TEST ${entries} APPEND PROPERTY ENVIRONMENT
        "ASAN_OPTIONS=fast_unwind_on_malloc=0")
    endif()
  endif()
endfunction()

# nel_test_runs(test program...): the programs that a test starts; none where it is to start those
# that are installed, in the folder NEL_PROGRAMS.
function(nel_test_runs test)
  if(NOT DEFINED ENV{NEL_PROGRAMS})
    add_dependencies(${test} ${ARGN})
  endif()
endfunction()
