#!/usr/bin/env bash
# command_lines.sh PROGRAM: runs the command lines of the program in command_lines.txt, in an
# empty folder, and compares what they print. They must not create files.
set -u
export LC_ALL=C
program=$(realpath "$1") name=${1##*/}
list=$(realpath "$(dirname "$0")")/command_lines.txt
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/run" && cd "$work/run" || exit 1
help=$("$program" --help)

# show MARK: copies standard input, with the mark before each line.
show() {
  local text
  text=$(cat && echo .) && text=${text%.}
  printf '%s' "${text//"$help"/[help]}" | sed "s/^/$1/"
}

awk -v name="$name" '/^#|^$/ { next } /^\$ / { is_own = $2 == name } is_own' \
  "$list" >"$work/wanted"
while IFS= read -r line; do
  status=0
  arguments=()
  eval "arguments=(${line#'$ '"$name"})"
  (exec -c -a "$name" "$program" "${arguments[@]}") >"$work/out" 2>"$work/err" </dev/null ||
    status=$?
  {
    printf '%s\n' "$line"
    show '' <"$work/out"
    show '! ' <"$work/err"
    [ "$status" = 0 ] || echo "= $status"
  } >>"$work/actual"
done < <(grep '^\$ ' "$work/wanted")
[ -z "$(ls -A)" ] || { echo "created: $(ls -A)" && exit 1; }
diff -a -U 3 --label command_lines.txt --label actual "$work/wanted" "$work/actual"
