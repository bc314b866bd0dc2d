#!/usr/bin/env bash
# short_memory.sh VIEWER FLATC SCHEMA: runs the viewer and the export with too little memory,
# then with more in small steps. Each run must either write the whole report or table, or fail
# and leave an older file unchanged. The report is longer than the room reserved for it, so
# that its growth fails, too. The first complete run shows how much memory was needed.
set -Eeuo pipefail
trap 'echo "FAILED: at $limit kilobytes: $BASH_COMMAND"' ERR
viewer=$(realpath "$1") flatc=$2 schema=$(realpath "$3") limit=any
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work" && ulimit -c 0

printf -v events '{name: "%0250d", value: 1234, unit: 1}, ' {1..2500}
{
  echo '{messages: [{events: [{name: "(finalize)"}]}'
  printf ', {events: [%s{name: "(execute)", value: %d, unit: 1}]}' "$events" 0 "$events" 1
  echo ']}'
} >log.json
"$flatc" -b "$schema" log.json

# with LIMIT COMMAND...: runs the command with that many kilobytes of address space.
# The message of the shell about an aborted command is dropped.
with() {
  { (ulimit -v "$1" && exec "${@:2}" >out.txt 2>&1); } 2>/dev/null
}

# climb HALVES PROGRAM: raises the limit, starting with the memory that --help needs. A
# complete run may need at most HALVES / 2 times the size of the log more.
climb() {
  local run=("$2" --input_profile_data log.bin) passed=0 base=1000 needed
  "${run[@]}" --output whole.txt >/dev/null
  "${run[@]}" >whole_out.txt
  until with "$base" "$2" --help; do base=$((base + 100)); done
  for ((limit = base; passed < 5; limit += 200)); do
    echo older >file.txt
    if with "$limit" "${run[@]}" --output file.txt; then cmp file.txt whole.txt
    else passed=-1 && [ "$(cat file.txt)" = older ]; fi
    # With standard error closed, the message of an abort must not go into the file.
    echo older >file.txt
    { (ulimit -v "$limit" && exec "${run[@]}" --output file.txt >out.txt 2>&-) ||
      [ "$(cat file.txt)" = older ]; } 2>/dev/null
    # A failed run prints the accepted option and one line about the failure at most.
    if with "$limit" "${run[@]}"; then cmp out.txt whole_out.txt
    else passed=-1 && [ "$(wc -l <out.txt)" -le 3 ]; fi
    [ $((++passed)) != 1 ] || needed=$((limit - base))
  done
  echo "${2##*/} needed $needed kB more than for --help"
  [ "$needed" -gt 800 ] && [ $((needed * 2048)) -lt $(($1 * $(stat -c %s log.bin))) ]
}
climb 18 "$viewer"
climb 3 "${viewer%/*}/lumo-profile-export"

# The room reserved for the texts depends on a sample of the messages. It must remain small
# if the only large message is in the sample, and if the file is mostly padding.
{
  echo '{messages: [{events: [{name: "(finalize)"}'
  printf ', {name: "%d"}' {1..10000}
  echo ']}, {events: [{name: "(execute)"}]}'
  printf ', {}%.0s' {1..16000}
  echo ']}'
} >log.json
"$flatc" -b "$schema" log.json
limit=100000
with "$limit" "$viewer" --input_profile_data log.bin
truncate -s 100M log.bin
limit=200000
with "$limit" "$viewer" --input_profile_data log.bin

# A log may have up to 2147483646 bytes: the run ends because they do not fit into memory,
# not with a message about the log.
truncate -s 2147483646 log.bin
limit=1000000
if with "$limit" "$viewer" --input_profile_data log.bin || grep -F 'Error: ' out.txt; then
  exit 1
fi
