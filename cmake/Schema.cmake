# lumo_schema: the accessors, verifier and type tables of a log, generated from
# the schema; lumo_add_logs(): binary logs from JSON.

find_package(FlatBuffers CONFIG QUIET)
if(NOT TARGET flatbuffers::flatbuffers OR NOT TARGET flatbuffers::flatc)
  message(FATAL_ERROR "FlatBuffers is missing. On Debian: "
                      "apt install libflatbuffers-dev flatbuffers-compiler")
endif()

set(LUMO_SCHEMA "${PROJECT_SOURCE_DIR}/schema/profiling_log.fbs")
set(_generated_dir "${PROJECT_BINARY_DIR}/generated")
set(_generated_header "${_generated_dir}/profiling_log_generated.h")

add_custom_command(
  OUTPUT "${_generated_header}"
  COMMAND flatbuffers::flatc --cpp --cpp-std c++17 --scoped-enums
          --reflect-names -o "${_generated_dir}" "${LUMO_SCHEMA}"
  DEPENDS "${LUMO_SCHEMA}" flatbuffers::flatc
  COMMENT "Generating profiling_log_generated.h"
  VERBATIM)
add_custom_target(lumo_schema_header DEPENDS "${_generated_header}")

add_library(lumo_schema INTERFACE)
add_dependencies(lumo_schema lumo_schema_header)
target_include_directories(lumo_schema SYSTEM INTERFACE "${_generated_dir}")
target_link_libraries(lumo_schema INTERFACE flatbuffers::flatbuffers)

# Makes a binary log from each of the JSON files, as NAME.bin in `directory`, and
# a target that stands for them all. Sets a variable of the target's name to their
# paths.
function(lumo_add_logs target directory)
  set(logs)
  foreach(json IN LISTS ARGN)
    get_filename_component(json "${json}" ABSOLUTE)
    get_filename_component(name "${json}" NAME_WE)
    add_custom_command(
      OUTPUT "${directory}/${name}.bin"
      COMMAND flatbuffers::flatc --binary -o "${directory}" "${LUMO_SCHEMA}"
              "${json}"
      DEPENDS "${json}" "${LUMO_SCHEMA}" flatbuffers::flatc
      COMMENT "Making ${name}.bin"
      VERBATIM)
    list(APPEND logs "${directory}/${name}.bin")
  endforeach()
  add_custom_target(${target} ALL DEPENDS ${logs})
  set(${target} ${logs} PARENT_SCOPE)
endfunction()
