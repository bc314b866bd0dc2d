# Completes the options of lumo-profile-viewer and lumo-profile-export in bash.
# shellcheck shell=bash

# Takes the program's name, as bash gives it.
_lumo_profile() {
  local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
  local options='--help --input_profile_data --output'
  case $1 in
    *viewer) options+=' --topK --num_warmup' ;;
    *page) options='--help --num_warmup --output --version' ;;
    *) options+=' --version' ;;
  esac
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
      if [[ $1 == *page && $current != -* ]]; then
        compopt -o filenames -o default 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
      else
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
      fi
      ;;
  esac
}

complete -F _lumo_profile lumo-profile-viewer lumo-profile-export lumo-profile-page
