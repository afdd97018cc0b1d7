# margindesk_check_headers(NAME FOLDER... [LIBS TARGET...])
# A target that compiles every header below the folders by itself, so that none leans on what its users included
# before it. Each is included twice, so that one without a guard fails too.
function(margindesk_check_headers name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "LIBS")
  set(units "")
  foreach(folder IN LISTS arg_UNPARSED_ARGUMENTS)
    file(GLOB_RECURSE headers RELATIVE "${PROJECT_SOURCE_DIR}" CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${folder}/*.h")
    foreach(header IN LISTS headers)
      margindesk_write_header_unit("${header}" unit)
      list(APPEND units "${unit}")
    endforeach()
  endforeach()
  add_library(${name} OBJECT ${units})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}")
  target_link_libraries(${name} PRIVATE ${arg_LIBS})
endfunction()

# Writes the unit that compiles `header` alone and sets `unitVariable` to its path.
function(margindesk_write_header_unit header unitVariable)
  set(unit "${CMAKE_CURRENT_BINARY_DIR}/headers/${header}.cpp")
  file(CONFIGURE OUTPUT "${unit}" CONTENT "#include \"${header}\"\n#include \"${header}\"\n")
  set(${unitVariable} "${unit}" PARENT_SCOPE)
endfunction()
