#!/usr/bin/env bash
# Runs the viewer on one case and compares everything it leaves behind.
#
#   run_case.sh PROGRAM FLATC SCHEMA CASE
#
# CASE is a folder with args.txt, one argument a line, and, where they are wanted,
# log.json (becomes log.bin in the folder that the viewer runs in), stdout.txt,
# stderr.txt, status.txt (absent: 0) and report.txt, the file that the viewer
# writes. What is absent must come out empty, and a report.txt must not come out.
set -euo pipefail
program=$(realpath "$1") flatc=$2 schema=$3 case=$4

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/run" "$work/want" "$work/got"

touch "$work/want/stdout.txt" "$work/want/stderr.txt"
echo 0 >"$work/want/status.txt"
for text in stdout stderr status report; do
  [ ! -f "$case/$text.txt" ] || cp "$case/$text.txt" "$work/want/"
done
[ ! -f "$case/log.json" ] ||
  "$flatc" -b --allow-non-utf8 -o "$work/run" "$schema" "$case/log.json"
mapfile -t args <"$case/args.txt"

status=0
(cd "$work/run" && exec -c -a lumo-profile-viewer "$program" "${args[@]}") \
  >"$work/got/stdout.txt" 2>"$work/got/stderr.txt" </dev/null || status=$?
echo "$status" >"$work/got/status.txt"
[ ! -f "$work/run/report.txt" ] || mv "$work/run/report.txt" "$work/got/"

cd "$work" && diff -a -u -r -N want got
