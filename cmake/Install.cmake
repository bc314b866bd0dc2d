# What `cmake --install` puts where.

include(GNUInstallDirs)
set(LUMO_ZSH_COMPLETIONS_DIR "${CMAKE_INSTALL_DATADIR}/zsh/site-functions"
    CACHE STRING "Where zsh looks for completions, mostly below the prefix")

set(programs lumo-profile-viewer lumo-profile-export lumo-profile-compare)
if(TARGET lumo-profile-page)
  list(APPEND programs lumo-profile-page)
endif()
foreach(program IN LISTS programs)
  install(TARGETS ${program})
  install(FILES man/${program}.1 DESTINATION "${CMAKE_INSTALL_MANDIR}/man1")
  # bash looks for a file of the program's name; one file knows both.
  install(FILES completions/lumo-profile.bash RENAME ${program}
          DESTINATION "${CMAKE_INSTALL_DATADIR}/bash-completion/completions")
  install(FILES completions/_${program}
          DESTINATION "${LUMO_ZSH_COMPLETIONS_DIR}")
endforeach()

install(FILES CHANGELOG.md DESTINATION "${CMAKE_INSTALL_DOCDIR}")
# The tree's README is about the tree.
install(FILES PACKAGE.md RENAME README.md
        DESTINATION "${CMAKE_INSTALL_DOCDIR}")
# In the same folders as here, so that the documents' commands find them.
install(DIRECTORY docs examples samples schema
        DESTINATION "${CMAKE_INSTALL_DOCDIR}" USE_SOURCE_PERMISSIONS)
install(FILES ${sample_logs} DESTINATION "${CMAKE_INSTALL_DOCDIR}/samples")
