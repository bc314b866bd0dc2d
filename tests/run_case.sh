#!/usr/bin/env bash
# run_case.sh PROGRAM FLATC SCHEMA CASE: runs a program on one test case and compares its
# output, exit status and files.
#
# CASE is a folder with these files:
#   args.txt                the arguments, one per line
#   NAME.json or NAME.bin   a log; the program runs in a folder with NAME.bin. Logs may
#                           be in subfolders.
#   stdout.txt, stderr.txt  the expected output; if omitted, none
#   status.txt              the expected exit status; if omitted, 0
#   report.txt, table.csv   the expected file; if omitted, no such file
#   page.txt                the expected parts of page.html that depend on the logs
# The program runs with an empty environment and under its own name, which getopt_long()
# puts into messages.
set -euo pipefail
program=$(realpath "$1") flatc=$2 schema=$3 case=$4

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/run" "$work/want" "$work/got"

touch "$work/want/stdout.txt" "$work/want/stderr.txt"
echo 0 >"$work/want/status.txt"
for text in stdout.txt stderr.txt status.txt report.txt table.csv page.txt; do
  [ ! -f "$case/$text" ] || cp "$case/$text" "$work/want/"
done
while IFS= read -r -d '' log; do
  folder=$work/run/$(dirname "${log#"$case"/}")
  mkdir -p "$folder"
  case $log in
    *.bin) cp "$log" "$folder/" ;;
    *) "$flatc" -b --allow-non-utf8 -o "$folder" "$schema" "$log" ;;
  esac
done < <(find "$case" '(' -name '*.bin' -o -name '*.json' ')' -print0)
mapfile -t args <"$case/args.txt"

status=0
(cd "$work/run" && exec -c -a "${program##*/}" "$program" "${args[@]}") \
  >"$work/got/stdout.txt" 2>"$work/got/stderr.txt" </dev/null || status=$?
echo "$status" >"$work/got/status.txt"
mv "$work/run"/{report.txt,table.csv} "$work/got/" 2>/dev/null || true  # if written
[ ! -f "$work/run/page.html" ] ||
  sed -n '/^<title>/p; /^<header>/,/^<\/header>/p; /^<p id="no-script"/,/^<div id="tools"/p
          /id="data"/,/<\/script>/p' "$work/run/page.html" >"$work/got/page.txt"

cd "$work" && diff -a -u -r want got
