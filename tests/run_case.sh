#!/usr/bin/env bash
# Runs a program on one case and compares everything it leaves behind.
#
#   run_case.sh PROGRAM FLATC SCHEMA CASE
#
# CASE is a folder with args.txt, one argument a line, and what of these it needs:
# the logs, which are NAME.json, made NAME.bin in the folder that the program runs in,
# or NAME.bin itself, and what must come out: stdout.txt, stderr.txt (if absent:
# nothing), status.txt (0), report.txt and table.csv (no file of that name). Of a
# page.html, what is made from the logs must be page.txt. The program runs with an
# empty environment and under its own name, which getopt_long() puts into messages.
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
for log in "$case"/*.bin "$case"/*.json; do
  case $log in
    *'*'*) ;; # no such log
    *.bin) cp "$log" "$work/run/" ;;
    *) "$flatc" -b --allow-non-utf8 -o "$work/run" "$schema" "$log" ;;
  esac
done
mapfile -t args <"$case/args.txt"

status=0
(cd "$work/run" && exec -c -a "${program##*/}" "$program" "${args[@]}") \
  >"$work/got/stdout.txt" 2>"$work/got/stderr.txt" </dev/null || status=$?
echo "$status" >"$work/got/status.txt"
mv "$work/run"/{report.txt,table.csv} "$work/got/" 2>/dev/null || true  # what there is
[ ! -f "$work/run/page.html" ] ||
  sed -n '/^<title>/p; /^<header>/,/^<\/header>/p; /^<noscript>/,/^]}/p' \
    "$work/run/page.html" >"$work/got/page.txt"

cd "$work" && diff -a -u -r want got
