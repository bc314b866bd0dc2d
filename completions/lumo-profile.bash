# Completes the options of the lumo-profile programs in bash.
# shellcheck shell=bash

# Takes the program's name, as bash gives it.
_lumo_profile() {
  local current=${COMP_WORDS[COMP_CWORD]} option=${COMP_WORDS[COMP_CWORD - 1]} files=''
  # bash splits --output=report.txt into three words.
  if [[ $current == = ]]; then
    current=''
  elif [[ $option == = ]]; then
    option=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  COMPREPLY=()
  # Options may be abbreviated; one or two letters identify an option.
  case $option in
    --i* | --o*) files=1 ;;
    --t* | --n* | --co* | --m*) return ;; # any number
    *) [[ $1 == *@(compare|export|page) && $current != -* ]] && files=1 ;;
  esac
  if [[ $files ]]; then
    compopt -o filenames -o default 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  else
    # The options in the help text of the program, whose path may begin with "~".
    mapfile -t COMPREPLY < <(compgen -W "$("${1/#\~\//$HOME/}" --help 2>/dev/null |
      grep -oE '^ *--[[:alnum:]_]+')" -- "$current")
  fi
}

complete -F _lumo_profile \
  lumo-profile-viewer lumo-profile-export lumo-profile-compare lumo-profile-page
