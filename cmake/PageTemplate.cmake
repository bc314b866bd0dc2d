# Generates a C++ file with the fixed parts of a page.
#
#   cmake -D SOURCE_DIR=src/page -D CHART=chart.min.js -D OUTPUT=FILE
#         -P PageTemplate.cmake

cmake_minimum_required(VERSION 3.25)

file(READ "${SOURCE_DIR}/page.html" page)

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

# Puts a file in the place of @`name`@, and sets `name`_hash to the hash by which the
# Content-Security-Policy allows this inline script or style.
function(insert name file)
  file(SHA256 "${file}" hex)
  string(TOUPPER "${hex}" hex)
  execute_process(
    COMMAND printf %s "${hex}"
    COMMAND basenc --base16 --decode
    COMMAND base64 --wrap=0
    OUTPUT_VARIABLE hash COMMAND_ERROR_IS_FATAL ANY)
  set(${name}_hash "'sha256-${hash}'" PARENT_SCOPE)
  file(READ "${file}" text)
  string(REPLACE "@${name}@" "${text}" page "${page}")
  set(page "${page}" PARENT_SCOPE)
endfunction()
insert(style "${SOURCE_DIR}/page.css")
insert(start "${SOURCE_DIR}/page_start.js")
insert(chart "${CHART}")
insert(script "${SOURCE_DIR}/page.js")
# "default-src" does not cover "base-uri" and "form-action".
string(REPLACE "@policy@"
  "default-src 'none'; script-src ${start_hash} ${chart_hash} ${script_hash}; style-src ${style_hash}; base-uri 'none'; form-action 'none'"
  page "${page}")
file(WRITE "${OUTPUT}"
  "#include \"page/page_template.h\"\n\nnamespace lumo {\n\n"
  "const std::string_view kPageBeforeTitle = R\"lumo(${page})lumo\";\n\n"
  "}  // namespace lumo\n")
