#!/usr/bin/env bash
# folders.sh PROGRAM LOG: checks which files a folder of logs stands for, what is printed
# about the others, and when nothing is written.
source "$(dirname "$0")/work_folder.sh"

mkdir -p logs/{b,c/d,secret} && chmod 0 logs/secret
for log in logs/{a.bin,b.bin,b/1.bin,c/d/2.bin}; do cp log.bin "$log"; done
ln logs/a.bin logs/b/0.bin          # a hard link: logs/a.bin comes first
ln -s b/1.bin logs/a1.bin           # a symbolic link: comes before its file
ln -s . logs/itself                 # links to folders are ignored
ln -s c logs/c.bin
cp log.bin logs/.hidden.bin && cp log.bin logs/log.BIN && cp log.bin logs/log.bin.old
mkfifo logs/c/pipe.bin && ln -s nowhere logs/z.bin && ln -s log.bin outside.bin
ln -s ../outside.bin logs/outside.bin && truncate -s 9 logs/c/short.bin
cp older file && chmod 666 file && chmod 777 .

# fails MESSAGE ARGUMENT...: checks the message and that an older file is unchanged.
fails() {
  expect 1 '' "$name: $1" "${as_user[@]}" "${run[@]}" --output file "${@:2}"
  cmp file older || fail "the older file has changed after: $1"
}
# In the order of their paths.
messages=(
  'logs/c/pipe.bin: is not a regular file'
  'logs/c/short.bin: Verify Profiling Log Buffer failed. The buffer might be ill-formatted'
  'logs/secret: cannot be read: Permission denied'
  'logs/z.bin: cannot be opened: No such file or directory')

if [ "$name" = lumo-profile-export ]; then
  run=("$program" --statistics)
  # The logs in the table, and all messages.
  "${as_user[@]}" "${run[@]}" logs outside.bin >out 2>err </dev/null
  [ $? = 1 ] || fail 'the status after messages'
  diff - <(tail -n +2 out | cut -d , -f 1 | uniq) <<'END' || fail 'the logs in the table'
logs/a.bin
logs/a1.bin
logs/b.bin
logs/c/d/2.bin
logs/outside.bin
outside.bin
END
  diff <(printf "$name: %s\n" "${messages[@]}") err || fail 'the messages'
  fails "${messages[3]}" logs/z.bin
  # On standard output, each log is written before the next one is read.
  "${run[@]}" logs/b.bin nowhere logs/a.bin 2>&1 </dev/null |
    sed "s/^$name: /!/; s/[,:].*//" | uniq | paste -sd ' ' >out
  [ "$(<out)" = 'log logs/b.bin !nowhere logs/a.bin' ] || fail "not in order: $(<out)"
  # If another user's file in a folder like /tmp cannot be replaced, the table is written again.
  "${run[@]}" logs/b.bin nowhere logs/a.bin >whole 2>err </dev/null
  mkdir sticky && chmod 1777 sticky && cp older sticky/file && chmod 666 sticky/file
  expect 1 '' "$(<err)" \
    "${as_user[@]}" "${run[@]}" --output sticky/file logs/b.bin nowhere logs/a.bin
  cmp whole sticky/file || fail 'the second table differs'
  run+=(logs/b)
else
  # The first message ends the run. All files are found before the first one is read.
  run=("$program" copy.bin)
  for i in 0 2 3 1; do
    fails "${messages[i]}" logs
    rm -r "${messages[i]%%: *}"
  done
fi

if [ "$name" = lumo-profile-compare ]; then
  "$program" logs copy.bin | grep -q '^  before: logs, 5 logs, ' || fail 'the number of logs'
  # A folder with one log is this log.
  mkdir one && ln log.bin one/a.bin
  diff <("$program" one log.bin --csv) <("$program" log.bin log.bin --csv) ||
    fail 'a folder with one log is not this log'
  "$program" one logs | grep -q '^  before: one, 1 log, [0-9]* runs$' || fail 'the number of runs'
fi

# Nothing is written to a log in a folder, under any name.
for output in logs/outside.bin hard.bin; do
  expect 1 '' "$name: logs/outside.bin: $own_log" "${run[@]}" logs --output $output
done
[ "$name" = lumo-profile-export ] ||
  expect 1 '' "$name: logs/outside.bin: $own_log" "$program" logs copy.bin --output hard.bin
cmp log.bin copy.bin || fail 'the log has changed'
exit "$failed"
