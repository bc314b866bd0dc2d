#!/usr/bin/env bash
# Exports the statistics of folders: which files they stand for, what is printed about the
# others, and when nothing is written.
#
#   log_folders.sh EXPORT LOG
# shellcheck source=tests/work_folder.sh
source "$(dirname "$0")/work_folder.sh"

mkdir -p logs/{b,c/d,empty,secret} && chmod 0 logs/secret
for log in logs/{a.bin,b.bin,b/1.bin,c/d/2.bin}; do cp log.bin "$log"; done
ln logs/a.bin logs/b/0.bin          # a hard link: logs/a.bin comes first
ln -s b/1.bin logs/a1.bin           # a symbolic link: comes before its file
ln -s . logs/itself                 # links to folders are ignored
ln -s c logs/c.bin
cp log.bin logs/.hidden.bin && cp log.bin logs/log.BIN && cp log.bin logs/log.bin.old
mkfifo logs/c/pipe.bin && ln -s nowhere logs/z.bin && ln -s log.bin outside.bin
ln -s ../outside.bin logs/outside.bin && truncate -s 9 logs/c/short.bin

# The logs in the table, and the messages in their order.
statistics=("${as_user[@]}" "$program" --statistics)
"${statistics[@]}" logs outside.bin >out 2>err </dev/null
[ $? = 1 ] || fail 'the status after messages'
diff - <(tail -n +2 out | cut -d , -f 1 | uniq) <<'END' || fail 'the logs in the table'
logs/a.bin
logs/a1.bin
logs/b.bin
logs/c/d/2.bin
logs/outside.bin
outside.bin
END
diff - err <<END || fail 'the messages'
$name: logs/c/pipe.bin: is not a regular file
$name: logs/c/short.bin: Verify Profiling Log Buffer failed. The buffer might be ill-formatted
$name: logs/secret: cannot be read: Permission denied
$name: logs/z.bin: cannot be opened: No such file or directory
END
# On standard output, each log is written before the next one is read.
"${statistics[@]}" logs/b.bin nowhere logs/a.bin 2>&1 </dev/null |
  sed "s/^$name: /!/; s/[,:].*//" | uniq | paste -sd ' ' >out
[ "$(<out)" = 'log logs/b.bin !nowhere logs/a.bin' ] || fail "not in order: $(<out)"

# If another user's file in a folder like /tmp cannot be replaced, the table is written again.
"${statistics[@]}" logs/b.bin nowhere logs/a.bin >whole 2>err </dev/null
mkdir sticky && chmod 1777 sticky && cp older sticky/file && chmod 666 sticky/file
expect 1 '' "$(<err)" "${statistics[@]}" --output sticky/file logs/b.bin nowhere logs/a.bin
cmp whole sticky/file || fail 'the second table differs'

# Nothing is written without a log that can be read, or to one of the logs.
fails() { expect 1 '' "$name: $1" "${statistics[@]}" "${@:2}"; }
fails 'logs/empty: the folder has no logs (files named *.bin)' logs/empty
cp older file
fails 'logs/z.bin: cannot be opened: No such file or directory' --output file logs/z.bin
cmp older file || fail 'an older file is changed without a log'
chmod a+w log.bin && ln -s ../../log.bin logs/b/own.bin
for output in logs/outside.bin hard.bin; do
  fails 'logs/b/own.bin: the table would be written to the log itself' \
    --output $output logs/a.bin logs/b
done
cmp log.bin copy.bin || fail 'the log has changed'
exit "$failed"
