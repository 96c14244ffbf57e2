# Helpers shared by every folder's CMakeLists.txt.
#
# sw_library(NAME [DEPS targets...]) builds a static library from every *.cc
# of the calling folder except unit tests (*_test.cc) and program entry points
# (*_main.cc), so adding a source file needs no edit of any CMakeLists.txt.
# A folder without sources yet gives an interface library.
#
# sw_unit_tests(NAME [DEPS targets...] [PROPERTIES name value...]) builds NAME
# from every *_test.cc of the folder, links GoogleTest's main and registers
# each test with CTest, with the test properties given. Tests
# find the built programs through STASHWELL_BIN_DIR and the data files through
# STASHWELL_SHARE_DIR.
function(sw_library name)
  cmake_parse_arguments(ARG "" "" "DEPS" ${ARGN})
  file(GLOB srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cc)
  list(FILTER srcs EXCLUDE REGEX "_(test|main)\\.cc$")
  if(srcs)
    add_library(${name} STATIC ${srcs})
    target_include_directories(${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} PUBLIC ${ARG_DEPS})
  else()
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE ${PROJECT_SOURCE_DIR})
    target_link_libraries(${name} INTERFACE ${ARG_DEPS})
  endif()
endfunction()

function(sw_unit_tests name)
  cmake_parse_arguments(ARG "" "" "DEPS;PROPERTIES" ${ARGN})
  file(GLOB srcs CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*_test.cc)
  if(NOT srcs)
    return()
  endif()
  add_executable(${name} ${srcs})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR})
  target_compile_definitions(${name} PRIVATE
    STASHWELL_BIN_DIR="${CMAKE_BINARY_DIR}/bin"
    STASHWELL_SHARE_DIR="${STASHWELL_SHARE_DIR}"
    STASHWELL_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} GTest::gtest_main GTest::gmock)
  if(ARG_PROPERTIES)
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
                         PROPERTIES ${ARG_PROPERTIES})
  else()
    gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60)
  endif()
endfunction()
