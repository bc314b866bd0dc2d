#!/usr/bin/env bash
# compare_terminal.sh PROGRAM LOG LOG_AFTER: checks what a comparison shows on a terminal.
# Significant differences are colored unless NO_COLOR is set, the names of the logs are
# escaped, and a long run shows its progress.
after=$(realpath "$3")
source "$(dirname "$0")/work_folder.sh"
cp "$after" after.bin
export program
"$program" log.bin after.bin >plain
sed $'s/^.*  lower .*/\033[1;32m&\033[0m/; s/^.*  higher .*/\033[1;31m&\033[0m/' plain >colored
# on_terminal FILE SETTING OPTIONS: checks that the output on a terminal is equal to FILE.
on_terminal() {
  script -qec "$2 \"\$program\" log.bin after.bin $3" /dev/null </dev/null |
    tr -d '\r' | cmp - "$1" || fail "on a terminal with $2 $3"
}
if can 'colors on a terminal' script -qec true /dev/null </dev/null; then
  on_terminal colored '' ''
  on_terminal colored NO_COLOR= ''
  on_terminal plain NO_COLOR=1 ''
  on_terminal plain '' '| cat'
  on_terminal plain '' '--output stdout'
fi
cp log.bin $'a\nb.bin'
"$program" $'a\nb.bin' $'a\nb.bin' >plain
for side in before: 'after: '; do
  grep -qF "  $side a\nb.bin, " plain || fail "the name of a log is not escaped: $side"
done

# A run that takes longer than a second shows its progress, which it removes.
mkdir few many
for log in few/{1,2}.bin many/{1..6}.bin; do cp log.bin "$log"; done
slow="${strace[*]} -e inject=openat:delay_enter=300000"
if can 'progress on a terminal' script -qec "${strace[*]} true" /dev/null </dev/null; then
  script -qec "$slow $program many few >plain" /dev/null </dev/null >out
  grep -qF $'\r\e[K7 of 8 logs read' out || fail "no progress: $(<out)"
  [ "$(tail -c 4 out)" = $'\r\e[K' ] || fail 'the progress is not removed'
  $slow "$program" many few 2>err >plain
  [ -s err ] && fail "progress without a terminal: $(<err)"
  begin=${EPOCHREALTIME/./}  # in microseconds
  script -qec "$program many few >plain" /dev/null </dev/null >out
  # On a busy machine, this run may take longer than a second.
  [[ -s out && $((${EPOCHREALTIME/./} - begin)) -lt 1000000 ]] && fail 'progress of a short run'
fi
exit "$failed"
