#!/usr/bin/env bash
# Runs the viewer with less memory than it needs, up to enough in small steps. Each
# run either writes the whole report, or fails, leaves an older report as it was and
# writes nothing of the new one. The report is longer than the room it starts with,
# so that its growing is among what fails.
#
#   short_memory.sh PROGRAM FLATC SCHEMA
set -euo pipefail
trap 'echo "FAILED: at $limit kilobytes: $BASH_COMMAND"' ERR
program=$(realpath "$1") flatc=$2 schema=$(realpath "$3")
limit=any
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
ulimit -c 0

awk 'BEGIN {
  for (i = 0; i < 2500; ++i) {
    name = sprintf("%0250d", i)
    events = events sprintf("%s{name: \"%s\", value: %d, unit: 1}", i ? "," : "", name, i)
  }
  printf "{messages: [{events: [{name: \"(finalize)\"}]}"
  for (run = 0; run < 2; ++run)
    printf ", {events: [%s, {name: \"(execute)\", value: %d, unit: 1}]}", events, run
  print "]}"
}' >log.json
"$flatc" -b "$schema" log.json
"$program" --input_profile_data log.bin --output whole.txt >/dev/null
"$program" --input_profile_data log.bin >whole_out.txt

# with LIMIT ARGUMENT...: runs the viewer with that many kilobytes of address space.
# The shell that says on standard error what became of it is silenced.
with() {
  { (ulimit -v "$1" && exec "$program" --input_profile_data log.bin "${@:2}" \
    >out.txt 2>&1); } 2>/dev/null
}

failed=0 passed=0
for ((limit = 5000; passed < 20 && limit < 200000; limit += 200)); do
  echo older >report.txt
  if with "$limit" --output report.txt; then
    passed=$((passed + 1))
    cmp report.txt whole.txt
  else
    failed=$((failed + 1))
    [ "$(cat report.txt)" = older ]
  fi
  # Of a run that failed there are the echo and a line about the failure at most.
  if with "$limit"; then cmp out.txt whole_out.txt
  else [ "$(wc -l <out.txt)" -le 3 ]; fi
done
echo "$failed runs were short of memory, $passed had enough"
[ "$failed" -gt 10 ] && [ "$passed" = 20 ]
