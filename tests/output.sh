#!/usr/bin/env bash
# output.sh PROGRAM LOG: runs the program with unusual output files. Programs other than the
# viewer write a file whole or not at all.
# shellcheck disable=SC2016 # The expansions are the inner shells'.
source "$(dirname "$0")/work_folder.sh"
mkdir new
"${run[@]}" >whole || fail 'does not write its output'

if [ "$name" = lumo-profile-viewer ]; then
  tail -n +2 whole >report
  cp older r.txt
  for file in r.txt -; do
    expect 0 "[Profile Viewer] Output txt file: [$file]" '' "${run[@]}" --output $file
    cmp "./$file" report || fail "the report in $file differs from that on standard output"
  done
  # A report that cannot be created; one that would overwrite the log, under any name.
  for file in missing/r.txt new log.bin ./new/../log.bin hard.bin soft.bin; do
    for log in log.bin soft.bin; do
      expect 1 "[Profile Viewer] Error: Failed to create $file." \
        $'Error in lumo-profile-viewer function at ExportData:311\nError at main:343' \
        "$program" --input_profile_data=$log --output "$file"
    done
  done
  # Files in different file systems may have the same inode number.
  apart=(unshare -rm bash -c 'mkdir -p a b && mount -t tmpfs a a && mount -t tmpfs b b &&
    cp log.bin a && : >b/r.txt && [ "$(stat -c %i a/*)" = "$(stat -c %i b/*)" ] && exec "$@"' -)
  ! can 'two file systems' "${apart[@]}" true ||
    expect 0 '[Profile Viewer] Output txt file: [b/r.txt]' '' \
      "${apart[@]}" "$program" --input_profile_data=a/log.bin --output b/r.txt
  # A run that fails leaves an older report unchanged.
  cp older r.txt
  expect 1 '[Profile Viewer] Error: Number of Warmup: -1 < 0.' \
    $'Error in lumo-profile-viewer function at ReadDataFromLog:119\nError at main:341' \
    "${run[@]}" --output=r.txt --num_warmup=-1
  cmp r.txt older || fail 'the older report has changed'
  cmp log.bin copy.bin || fail 'the log has changed'
  exit "$failed"
fi

# expect_file FILE TEXT_FILE: checks that FILE is equal to TEXT_FILE and alone in its folder.
expect_file() {
  cmp "$1" "$2" || fail "$1 differs from $2"
  [ "$(ls -A "${1%/*}")" = "${1##*/}" ] || fail "left behind: $(ls -A "${1%/*}")"
}
# COMMAND, if any, runs the program: as another user or with a limit, for example.
# succeeds FILE [COMMAND...]: checks that a run with this output has no message.
succeeds() { expect 0 '' '' "${@:2}" "${run[@]}" --output "$1"; }
# writes FILE [COMMAND...]: checks the file and its folder, too.
writes() { succeeds "$@" && expect_file "$1" whole; }
# rejects FILE REASON [COMMAND...]: checks that a run fails for this reason.
rejects() { expect 1 '' "$name: $2" "${@:3}" "${run[@]}" --output "$1"; }
# fails FILE REASON [COMMAND...]: checks that the older file is unchanged, too.
fails() { rejects "$1" "$1: $2" "${@:3}" && expect_file "$1" older; }

# An empty name means standard output.
"${run[@]}" --output= | cmp - whole || fail 'rejects an empty --output'
succeeds -
cmp ./- whole || fail 'the name "-" does not mean a file'

# A new file, an older file and the target of a symbolic link, with their modes.
writes new/file bash -c 'umask 007 && exec "$@"' -
[ "$(stat -c %a new/file)" = 660 ] || fail 'a new file ignores the umask'
chmod 604 new/file && cp older new/file
[ "$(id -u)" != 0 ] || chown 1:1 new/file
owner=$(stat -c %u:%g new/file)
writes new/file
[ "$(stat -c %a,%u:%g new/file)" = "604,$owner" ] || fail 'an older file loses its mode or owner'
cp older new/file && ln -s file new/link && ln -s new/link link
succeeds link
[[ -L link && -L new/link ]] && rm link new/link && expect_file new/file whole
ln -s new/later link
rm new/file
succeeds link && expect_file new/later whole

# A file that cannot be replaced in its folder is written in place; a file without write
# permission is unchanged.
mkdir closed && cp older closed/file && chmod 666 closed/file && chmod 555 closed
inode=$(stat -c %i closed/file)
writes closed/file "${as_user[@]}"
[ "$(stat -c %i closed/file)" = "$inode" ] || fail 'the file was replaced in a read-only folder'
rejects closed/new 'closed/new: cannot be created: Permission denied' "${as_user[@]}"
chmod 755 closed
mkdir open && chmod 777 open && cp older open/file && chmod 444 open/file
fails open/file 'cannot be created: Permission denied' "${as_user[@]}"
# A file of another user in a folder like /tmp is written in place, too.
mkdir sticky && chmod 1777 sticky && cp older sticky/file && chmod 666 sticky/file
writes sticky/file "${as_user[@]}"
# The current folder need not be writable.
succeeds open/new "${as_user[@]}"
rejects new 'new: cannot be created: Is a directory'
rejects $'new\n/file' 'new\n/file: cannot be created: No such file or directory'

# A user who is not the owner may keep the group of a file.
mkdir shared && chmod 777 shared && cp older shared/file && chmod 660 shared/file
if can 'the group of a file' chown 1:2 shared/file; then
  succeeds shared/file setpriv --reuid=65534 --regid=65534 --groups=2
  [ "$(stat -c %a,%u:%g shared/file)" = 660,65534:2 ] || fail 'an older file loses its group'
fi

# A mount point, and a mount point in a read-only folder, are written in place.
mkdir mounted && cp older mounted/file
apart=(unshare -rm bash -c 'mount --bind mounted mounted && mount --bind older mounted/file &&
  mount -o "remount,bind,$1" mounted && exec "${@:2}"' -)
if can 'mount points' "${apart[@]}" ro true; then
  cp older kept
  for mode in rw ro; do
    succeeds mounted/file "${apart[@]}" $mode
    cmp older whole || fail "a mount point in a $mode folder is not written"
    cp kept older && expect_file mounted/file older
  done
fi

# After a failure, the older file is unchanged, and no other file is left behind.
too_large=(bash -c 'ulimit -f 1; exec "$@"' -)
cp older new/later
fails new/later 'cannot be written whole: File too large' "${too_large[@]}"
mkdir empty
rejects empty/file 'empty/file: cannot be written whole: File too large' "${too_large[@]}"
rmdir empty || fail "left behind: $(ls -A empty)"
if can_trace; then
  inject=("${strace[@]}" -e)
  fails new/later 'cannot be written whole: Input/output error' \
    "${inject[@]}" inject=fsync:error=EIO
  fails new/later 'cannot be created: Input/output error' \
    "${inject[@]}" inject=/^rename:error=EIO
  # Some file systems cannot wait for the disk.
  writes new/later "${inject[@]}" inject=fsync:error=EINVAL
  # Only a run that is killed leaves its new file, which a run with the same number ignores.
  cp older new/later
  expect 137 '' '' "${inject[@]}" inject=fsync:signal=KILL "${run[@]}" --output new/later
  cmp new/later older || fail 'a killed run has changed the older file'
fi
succeeds new/later bash -c 'echo >new/.lumo-$$-0; exec "$@"' -
rm new/.lumo-*-0 && expect_file new/later whole

# The log is not overwritten, under any name.
for output in log.bin ./new/../log.bin hard.bin soft.bin; do
  rejects "$output" "log.bin: $own_log"
done
expect 1 '' "$name: log.bin: $own_log" bash -c '"$@" >>log.bin' - "${run[@]}"
rejects stdout "log.bin: $own_log" bash -c '"$@" >>log.bin' -
ln log.bin $'\n.bin'
expect 1 '' "$name: \n.bin: $own_log" "${run[@]/%log.bin/$'\n.bin'}" --output log.bin
# The first of two logs is not overwritten, either.
[ "${run[1]}" != copy.bin ] ||
  expect 1 '' "$name: log.bin: $own_log" "$program" log.bin copy.bin --output hard.bin
cmp log.bin copy.bin || fail 'the log has changed'
exit "$failed"
