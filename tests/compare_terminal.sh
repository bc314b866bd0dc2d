#!/usr/bin/env bash
# Checks what a comparison shows on a terminal: significant differences are colored unless
# NO_COLOR is set, and the names of the logs are escaped.
#
#   compare_terminal.sh PROGRAM LOG LOG_AFTER
# shellcheck source=tests/work_folder.sh
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
if script -qec true /dev/null </dev/null >err 2>&1; then
  on_terminal colored '' ''
  on_terminal colored NO_COLOR= ''
  on_terminal plain NO_COLOR=1 ''
  on_terminal plain '' '| cat'
  on_terminal plain '' '--output stdout'
else
  echo "Skipped: colors on a terminal: $(<err)"
fi
cp log.bin $'a\nb.bin'
"$program" $'a\nb.bin' $'a\nb.bin' >plain
for side in before: 'after: '; do
  grep -qF "  $side a\nb.bin, " plain || fail "the name of a log is not escaped: $side"
done
exit "$failed"
