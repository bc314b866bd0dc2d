#!/usr/bin/env bash
# Compares folders of logs: what ends the run, that nothing is written then or to a log,
# and the progress on a terminal.
#
#   compare_folders.sh PROGRAM LOG
# shellcheck source=tests/work_folder.sh
source "$(dirname "$0")/work_folder.sh"

mkdir -p few/sub many none closed
for log in few/{a,sub/b}.bin many/{1,2,3,4,5,6}.bin closed/a.bin; do cp log.bin "$log"; done
cp older file

# fails MESSAGE BEFORE AFTER: checks the message and that nothing is written.
fails() {
  expect 1 '' "$name: $1" "${as_user[@]}" "$program" --output file "${@:2}"
  cmp file older || fail "the older file is changed after: $1"
}
chmod 666 file && chmod 777 .
fails 'none: the folder has no logs (files named *.bin)' few none
truncate -s 9 many/4.bin
fails 'many/4.bin: Verify Profiling Log Buffer failed. The buffer might be ill-formatted' many few
cp log.bin many/4.bin
mkfifo few/sub/pipe.bin
fails 'few/sub/pipe.bin: is not a regular file' many few
rm few/sub/pipe.bin && ln -s nowhere few/link.bin
fails 'few/link.bin: cannot be opened: No such file or directory' few many
rm few/link.bin && chmod 0 closed
fails 'closed: cannot be read: Permission denied' many closed
for own in many/6.bin few/a.bin; do
  chmod 666 $own
  ln $own own.bin
  expect 1 '' "$name: $own: the comparison would be written to the log itself" \
    "$program" few many --output own.bin
  rm own.bin
done
cmp many/6.bin copy.bin || fail 'a log has changed'

# A folder with one log is this log, however it is found.
mkdir one && ln log.bin one/a.bin && ln -s a.bin one/b.bin && cp log.bin one/.c.bin
diff <("$program" one log.bin --csv) <("$program" log.bin log.bin --csv) ||
  fail 'a folder with one log is not this log'
"$program" one few | grep -qx '  before: one, 1 log, [0-9]* runs' || fail 'the number of logs'

# A run that takes longer than a second shows its progress, which it removes.
slow="${strace[*]} -e inject=openat:delay_enter=300000"
if can_trace && script -qec "${strace[*]} true" /dev/null </dev/null >err 2>&1; then
  script -qec "$slow $program many few >plain" /dev/null </dev/null >out
  grep -qF $'\r\e[K7 of 8 logs read' out || fail "no progress: $(<out)"
  [ "$(tail -c 4 out)" = $'\r\e[K' ] || fail 'the progress is not removed'
  $slow "$program" many few 2>err >plain
  [ -s err ] && fail "progress without a terminal: $(<err)"
  begin=${EPOCHREALTIME/./}  # in microseconds
  script -qec "$program many few >plain" /dev/null </dev/null >out
  # On a busy machine, this run may take longer than a second.
  [[ -s out && $((${EPOCHREALTIME/./} - begin)) -lt 1000000 ]] && fail 'progress of a short run'
else
  echo "Skipped: progress on a terminal: $(<err)"
fi
exit "$failed"
