# What the folders' CMakeLists.txt are written with.

include(GoogleTest)

# margindesk_add_library(NAME STATIC|SHARED SOURCES FILE... [LIBS TARGET...] [PRIVATE_LIBS TARGET...])
# A library of the tree. Users of it get its LIBS too; PRIVATE_LIBS stay its own affair. Includes are rooted at the
# repository.
function(margindesk_add_library name kind)
  cmake_parse_arguments(PARSE_ARGV 2 arg "" "" "SOURCES;LIBS;PRIVATE_LIBS")
  add_library(${name} ${kind} ${arg_SOURCES})
  target_include_directories(${name} PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC ${arg_LIBS} PRIVATE ${arg_PRIVATE_LIBS})
endfunction()

# margindesk_add_test(NAME SOURCES FILE... [LIBS TARGET...] [LABEL LABEL])
# A Google Test program whose cases are tests of their own in CTest. The code sees the repository's folder as the text
# MARGINDESK_SOURCE_DIR. Nothing happens when tests are not built.
function(margindesk_add_test name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "LABEL" "SOURCES;LIBS")
  if(NOT BUILD_TESTING)
    return()
  endif()
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_compile_definitions(${name} PRIVATE "MARGINDESK_SOURCE_DIR=\"${PROJECT_SOURCE_DIR}\"")
  target_link_libraries(${name} PRIVATE ${arg_LIBS} GTest::gmock GTest::gtest_main)
  # A test that hangs is a failure, not a wait.
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
                       PROPERTIES TIMEOUT 300 LABELS "${arg_LABEL}")
endfunction()

# margindesk_add_bench(NAME SOURCES FILE... [LIBS TARGET...])
# A Google Benchmark program; it brings its own main or gets the library's.
function(margindesk_add_bench name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;LIBS")
  add_executable(${name} ${arg_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_compile_definitions(${name} PRIVATE "MARGINDESK_SOURCE_DIR=\"${PROJECT_SOURCE_DIR}\"")
  target_link_libraries(${name} PRIVATE ${arg_LIBS} benchmark::benchmark benchmark::benchmark_main)
endfunction()
