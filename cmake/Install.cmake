# Installs the programs, man pages, completions, documents and sample logs.

include(GNUInstallDirs)
set(LUMO_ZSH_COMPLETIONS_DIR "${CMAKE_INSTALL_DATADIR}/zsh/site-functions"
    CACHE STRING "Folder of zsh completions, usually below the prefix")

foreach(name IN LISTS programs)
  set(program lumo-profile-${name})
  install(TARGETS ${program})
  install(FILES man/${program}.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  # bash looks for a file with the name of the program; one file completes all programs.
  install(FILES completions/lumo-profile.bash RENAME ${program}
          DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
  install(FILES completions/_${program}
          DESTINATION "${LUMO_ZSH_COMPLETIONS_DIR}")
endforeach()

install(FILES CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
# README.md is about the source tree.
install(FILES PACKAGE.md RENAME README.md
        DESTINATION "${CMAKE_INSTALL_DOCDIR}")
# In the same folders as in the source tree, so that the commands of the documents work.
install(DIRECTORY docs examples samples schema
        DESTINATION "${CMAKE_INSTALL_DOCDIR}" USE_SOURCE_PERMISSIONS)
install(FILES ${sample_logs} DESTINATION "${CMAKE_INSTALL_DOCDIR}/samples")
