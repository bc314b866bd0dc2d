# What `cmake --install` puts where, and the Debian package that `cpack` makes.

include(GNUInstallDirs)

# lumo_install_compressed(): installs `file` into `destination` as NAME.gz, without
# a time stamp, so that the same sources give the same bytes.
find_program(LUMO_GZIP gzip REQUIRED)
function(lumo_install_compressed file name destination)
  set(copy "${PROJECT_BINARY_DIR}/compressed/${name}")
  add_custom_command(
    OUTPUT "${copy}.gz"
    COMMAND ${CMAKE_COMMAND} -E make_directory "${PROJECT_BINARY_DIR}/compressed"
    COMMAND ${CMAKE_COMMAND} -E copy "${file}" "${copy}"
    COMMAND ${LUMO_GZIP} -9nf "${copy}"
    DEPENDS "${file}"
    COMMENT "Compressing ${name}"
    VERBATIM)
  add_custom_target(compressed_${name} ALL DEPENDS "${copy}.gz")
  install(FILES "${copy}.gz" DESTINATION "${destination}")
endfunction()

install(TARGETS lumo-profile-viewer)
install(FILES README.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
install(FILES docs/log-format.md DESTINATION "${CMAKE_INSTALL_DOCDIR}/docs")
install(FILES packaging/copyright DESTINATION "${CMAKE_INSTALL_DOCDIR}")
# In the same folders as here, so that the documents' commands find them.
install(FILES samples/basic.json samples/detailed.json
        DESTINATION "${CMAKE_INSTALL_DOCDIR}/samples")
install(FILES schema/profiling_log.fbs
        DESTINATION "${CMAKE_INSTALL_DOCDIR}/schema")
lumo_install_compressed("${PROJECT_SOURCE_DIR}/man/lumo-profile-viewer.1"
                        lumo-profile-viewer.1 "${CMAKE_INSTALL_MANDIR}/man1")
configure_file(packaging/changelog.in changelog @ONLY)
lumo_install_compressed("${PROJECT_BINARY_DIR}/changelog" changelog
                        "${CMAKE_INSTALL_DOCDIR}")
install(FILES completions/lumo-profile-viewer.bash
        DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions"
        RENAME lumo-profile-viewer)
# zsh looks in one place for what a package brings and in another for what was
# built here. The prefix is only known when something is installed.
set(data_dir "\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_DATADIR}")
if(IS_ABSOLUTE "${CMAKE_INSTALL_DATADIR}")
  set(data_dir "${CMAKE_INSTALL_DATADIR}")
endif()
install(CODE "
  if(CMAKE_INSTALL_PREFIX MATCHES \"^(.*/_CPack_Packages/.*)?/usr$\")
    set(zsh_dir \"${data_dir}/zsh/vendor-completions\")
  else()
    set(zsh_dir \"${data_dir}/zsh/site-functions\")
  endif()
  file(INSTALL \"${PROJECT_SOURCE_DIR}/completions/_lumo-profile-viewer\"
       DESTINATION \"\${zsh_dir}\")")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_CONTACT "The lumo-profile-viewer maintainers \
<maintainers@lumo-profile-viewer.invalid>")
set(CPACK_PACKAGE_DESCRIPTION
"Reads the binary profiling log of an inference runtime's ORX delegate,
verifies it, groups repeated runs and writes a text report: every event of
every run, warm-up mean, mean and standard deviation, and, for detailed logs,
the average time and share of each operation.")
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
    WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
include(CPack)
