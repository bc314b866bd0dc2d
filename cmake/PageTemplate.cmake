# Generates a C++ file with the fixed parts of a page.
#
#   cmake -D SOURCE_DIR=src/page -D CHART=chart.min.js -D OUTPUT=FILE
#         -P PageTemplate.cmake

cmake_minimum_required(VERSION 3.25)

# Sets `variable` to the hash by which the Content-Security-Policy allows this inline
# script or style.
function(hash_source file variable)
  file(SHA256 "${file}" hex)
  string(TOUPPER "${hex}" hex)
  execute_process(
    COMMAND printf %s "${hex}"
    COMMAND basenc --base16 --decode
    COMMAND base64 --wrap=0
    OUTPUT_VARIABLE hash COMMAND_ERROR_IS_FATAL ANY)
  set(${variable} "'sha256-${hash}'" PARENT_SCOPE)
endfunction()
hash_source("${SOURCE_DIR}/page.css" style_hash)
hash_source("${SOURCE_DIR}/page_start.js" start_hash)
hash_source("${SOURCE_DIR}/page.js" script_hash)
hash_source("${CHART}" chart_hash)

file(READ "${SOURCE_DIR}/page.html" page)
file(READ "${SOURCE_DIR}/page.css" style)
file(READ "${SOURCE_DIR}/page_start.js" start)
file(READ "${SOURCE_DIR}/page.js" script)
file(READ "${CHART}" chart)
# Splits the page into five raw strings, between which the program writes its texts.
function(split marker name)
  string(REPLACE "${marker}"
    ")lumo\";\nconst std::string_view ${name} = R\"lumo(" page "${page}")
  set(page "${page}" PARENT_SCOPE)
endfunction()
split("@title@" kPageBeforeHeading)
split("@heading@" kPageBeforeTables)
split("@tables@" kPageBeforeData)
split("@data@" kPageEnd)
# "default-src" does not cover "base-uri" and "form-action".
string(REPLACE "@policy@"
  "default-src 'none'; script-src ${start_hash} ${chart_hash} ${script_hash}; style-src ${style_hash}; base-uri 'none'; form-action 'none'"
  page "${page}")
string(REPLACE "@style@" "${style}" page "${page}")
string(REPLACE "@start@" "${start}" page "${page}")
string(REPLACE "@chart@" "${chart}" page "${page}")
string(REPLACE "@script@" "${script}" page "${page}")
file(WRITE "${OUTPUT}"
  "#include \"page/page_template.h\"\n\nnamespace lumo {\n\n"
  "const std::string_view kPageBeforeTitle = R\"lumo(${page})lumo\";\n\n"
  "}  // namespace lumo\n")
