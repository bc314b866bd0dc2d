# lumo_schema: the accessors, verifier and type tables of a log, generated from
# the schema. lumo_add_log(): a binary log from JSON.

# Not find_package(), which finds FlatBuffers only for the machine that it was built for.
# A build for another machine uses this machine's flatc and headers.
find_program(LUMO_FLATC flatc)
find_path(LUMO_FLATBUFFERS_INCLUDE flatbuffers/minireflect.h)
if(NOT LUMO_FLATC OR NOT LUMO_FLATBUFFERS_INCLUDE)
  message(FATAL_ERROR "FlatBuffers is missing. On Debian: "
                      "apt install libflatbuffers-dev flatbuffers-compiler")
endif()

set(LUMO_SCHEMA "${PROJECT_SOURCE_DIR}/schema/profiling_log.fbs")
set(_generated_dir "${PROJECT_BINARY_DIR}/generated")
set(_generated_header "${_generated_dir}/profiling_log_generated.h")

add_custom_command(
  OUTPUT "${_generated_header}"
  COMMAND "${LUMO_FLATC}" --cpp --cpp-std c++17 --scoped-enums
          --reflect-names -o "${_generated_dir}" "${LUMO_SCHEMA}"
  DEPENDS "${LUMO_SCHEMA}" "${LUMO_FLATC}"
  COMMENT "Generating profiling_log_generated.h"
  VERBATIM)
add_custom_target(lumo_schema_header DEPENDS "${_generated_header}")

add_library(lumo_schema INTERFACE)
add_dependencies(lumo_schema lumo_schema_header)
target_include_directories(lumo_schema SYSTEM INTERFACE
  "${_generated_dir}" "${LUMO_FLATBUFFERS_INCLUDE}")

# Generates `directory`/NAME.bin from NAME.json. The caller must add a target that
# depends on it.
function(lumo_add_log json directory)
  get_filename_component(json "${json}" ABSOLUTE)
  get_filename_component(name "${json}" NAME_WE)
  add_custom_command(
    OUTPUT "${directory}/${name}.bin"
    COMMAND "${LUMO_FLATC}" --binary --allow-non-utf8 -o "${directory}"
            "${LUMO_SCHEMA}" "${json}"
    DEPENDS "${json}" "${LUMO_SCHEMA}" "${LUMO_FLATC}"
    COMMENT "Generating ${name}.bin"
    VERBATIM)
endfunction()
