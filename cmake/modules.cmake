# tessera_module(NAME FOLDER [HEADER_ONLY] [LINKS module...])
#
# A folder of the unit as a target. Its headers are included by their path from the root ("runtime/clock.h"), through a
# link that only this target's users see, so that an include of a module that is not linked does not compile.
function(tessera_module name folder)
  cmake_parse_arguments(PARSE_ARGV 2 module "HEADER_ONLY" "" "LINKS")
  set(include_root "${PROJECT_BINARY_DIR}/include/${name}")
  cmake_path(GET folder PARENT_PATH parent)
  file(MAKE_DIRECTORY "${include_root}/${parent}")
  file(CREATE_LINK "${PROJECT_SOURCE_DIR}/${folder}" "${include_root}/${folder}" SYMBOLIC)

  if(module_HEADER_ONLY)
    add_library(${name} INTERFACE)
    target_include_directories(${name} INTERFACE "${include_root}")
    target_link_libraries(${name} INTERFACE ${module_LINKS})
  else()
    file(GLOB sources CONFIGURE_DEPENDS "${PROJECT_SOURCE_DIR}/${folder}/*.cpp")
    add_library(${name} OBJECT ${sources})
    target_include_directories(${name} PUBLIC "${include_root}")
    target_link_libraries(${name} PRIVATE tessera_unit_flags PUBLIC ${module_LINKS})
  endif()
endfunction()
