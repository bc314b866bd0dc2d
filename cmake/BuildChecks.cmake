# Warnings and sanitizers for our own code: targets that only it links, so that
# neither generated code nor a library's headers are judged.

option(LUMO_WARNINGS_AS_ERRORS "Fail on each warning" OFF)
option(LUMO_FUZZ "Build the fuzz target with libFuzzer (clang)" OFF)
set(LUMO_SANITIZERS "" CACHE STRING "Sanitizers, such as address,undefined")

add_library(lumo_warnings INTERFACE)
target_compile_options(lumo_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion
  -Wold-style-cast $<$<BOOL:${LUMO_WARNINGS_AS_ERRORS}>:-Werror>)

add_library(lumo_sanitizers INTERFACE)
if(LUMO_SANITIZERS)
  target_compile_options(lumo_sanitizers INTERFACE
    -fsanitize=${LUMO_SANITIZERS} -fno-sanitize-recover=all
    -fno-omit-frame-pointer)
  target_link_options(lumo_sanitizers INTERFACE -fsanitize=${LUMO_SANITIZERS})
endif()
if(LUMO_FUZZ)
  # Coverage for the search in all of our code; the target adds libFuzzer's main.
  target_compile_options(lumo_sanitizers INTERFACE -fsanitize=fuzzer-no-link)
  target_link_options(lumo_sanitizers INTERFACE -fsanitize=fuzzer-no-link)
endif()
