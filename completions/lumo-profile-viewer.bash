# Completes the options of lumo-profile-viewer in bash.
# shellcheck shell=bash

_lumo_profile_viewer() {
  local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
  # bash makes three words of --output=report.txt.
  if [[ $current == = ]]; then
    current=''
  elif [[ $option == = ]]; then
    option=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  COMPREPLY=()
  # The program takes an option by its first letters; one is enough to know it.
  case $option in
    --i* | --o*)
      compopt -o filenames -o default 2>/dev/null
      mapfile -t COMPREPLY < <(compgen -f -- "$current")
      ;;
    --t* | --n*) ;; # any number
    *)
      mapfile -t COMPREPLY < <(compgen -W \
        '--help --input_profile_data --output --topK --num_warmup' -- "$current")
      ;;
  esac
}

complete -F _lumo_profile_viewer lumo-profile-viewer
