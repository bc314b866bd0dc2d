# Completes the options of lumo-profile-export in bash.
# shellcheck shell=bash

_lumo_profile_export() {
  local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]}
  # bash makes three words of --output=table.csv.
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
    *)
      mapfile -t COMPREPLY < <(compgen -W \
        '--help --input_profile_data --output --version' -- "$current")
      ;;
  esac
}

complete -F _lumo_profile_export lumo-profile-export
