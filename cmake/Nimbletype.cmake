# The project's own target helpers: one library a folder, warnings as errors, programs in bin/.
set(CMAKE_CXX_STANDARD 23)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)

find_program(CCACHE ccache)
if(CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
  set(CMAKE_OBJCXX_COMPILER_LAUNCHER ${CCACHE})
endif()

add_library(nimbletype_flags INTERFACE)
# The words "signals" and "slots" belong to GIO as well.
target_compile_definitions(nimbletype_flags INTERFACE QT_NO_KEYWORDS)
target_compile_options(nimbletype_flags INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wnon-virtual-dtor
  -Woverloaded-virtual -Werror)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 reports these falsely inside its own headers once it inlines.
  target_compile_options(nimbletype_flags INTERFACE -Wno-restrict -Wno-maybe-uninitialized
    -Wno-dangling-reference)
  target_compile_options(nimbletype_flags INTERFACE $<$<CONFIG:Release>:-Wno-array-bounds -Wno-stringop-overflow
    -Wno-stringop-overread>)
endif()

# nimbletype_library(NAME SOURCES a.cpp b.cpp LINKS other ...): headers live beside the sources, include root src/.
# One that names Qt6::Widgets may have classes with Q_OBJECT, and resources (*.qrc) among its sources.
function(nimbletype_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} PUBLIC ${ARG_LINKS} PRIVATE nimbletype_flags)
    if("Qt6::Widgets" IN_LIST ARG_LINKS)
      set_target_properties(${name} PROPERTIES AUTOMOC ON AUTORCC ON)
    endif()
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${PROJECT_SOURCE_DIR}/src)
    target_link_libraries(${name} INTERFACE ${ARG_LINKS})
  endif()
endfunction()

function(nimbletype_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/src)
  target_link_libraries(${name} PRIVATE ${ARG_LINKS} nimbletype_flags)
endfunction()

# nimbletype_test(NAME SOURCES ... LINKS ... [LABEL desktop]): one GoogleTest program a folder, its cases found when
# tests run. Tests of portable code are labelled "core", those that need adapters "adapters", those that need a
# display "desktop"; the target portable_tests builds the first kind alone.
add_custom_target(portable_tests)
function(nimbletype_test name)
  cmake_parse_arguments(ARG "" "LABEL" "SOURCES;LINKS" ${ARGN})
  nimbletype_program(${name} SOURCES ${ARG_SOURCES} LINKS ${ARG_LINKS} GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  if(NOT ARG_LABEL AND ARG_LINKS MATCHES "nimbletype_(platform_linux|platform_qt|stage)")
    set(ARG_LABEL adapters)
  elseif(NOT ARG_LABEL)
    set(ARG_LABEL core)
    add_dependencies(portable_tests ${name})
    if(NOT NIMBLETYPE_CORE_TESTS)
      set_target_properties(${name} PROPERTIES EXCLUDE_FROM_ALL TRUE)
    endif()
  endif()
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
    PROPERTIES LABELS ${ARG_LABEL} TIMEOUT 300)
endfunction()
