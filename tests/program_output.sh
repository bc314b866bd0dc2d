#!/usr/bin/env bash
# Checks that a program other than the viewer writes its output to a file whole or not at
# all.
#
#   program_output.sh PROGRAM LOG
# shellcheck source=tests/work_folder.sh
# shellcheck disable=SC2016 # $@ is the inner shell's.
source "$(dirname "$0")/work_folder.sh"
fails() { expect 1 '' "$name: $1" "${@:2}"; }
writes() { expect 0 '' '' "$@"; }

# expect_file FILE TEXT_FILE: checks that FILE is equal to TEXT_FILE and alone in its folder.
expect_file() {
  cmp "$1" "$2" || fail "$1 differs from $2"
  [ "$(ls -A "${1%/*}")" = "${1##*/}" ] || fail "left behind: $(ls -A "${1%/*}")"
}
"${run[@]}" >whole || fail 'does not write its output'
# An empty name means standard output.
"${run[@]}" --output= | cmp - whole || fail 'rejects an empty --output'
writes "${run[@]}" --output -
cmp ./- whole || fail 'the name "-" does not mean a file'

# A new file, an older file and the target of a symbolic link, with their modes.
mkdir new && (umask 007 && "${run[@]}" --output new/file) && expect_file new/file whole
[ "$(stat -c %a new/file)" = 660 ] || fail 'a new file ignores the umask'
chmod 604 new/file && cp older new/file
[ "$(id -u)" != 0 ] || chown 1:1 new/file
owner=$(stat -c %u:%g new/file)
writes "${run[@]}" --output new/file && expect_file new/file whole
[ "$(stat -c %a,%u:%g new/file)" = "604,$owner" ] || fail 'an older file loses its mode or owner'
cp older new/file && ln -s file new/link && ln -s new/link link
writes "${run[@]}" --output link
[[ -L link && -L new/link ]] && rm link new/link && expect_file new/file whole
ln -s new/later link
rm new/file
writes "${run[@]}" --output link && expect_file new/later whole

# A file that cannot be replaced in its folder is written in place; a file without write
# permission is unchanged.
mkdir closed && cp older closed/file && chmod 666 closed/file && chmod 555 closed
inode=$(stat -c %i closed/file)
writes "${as_user[@]}" "${run[@]}" --output closed/file && expect_file closed/file whole
[ "$(stat -c %i closed/file)" = "$inode" ] || fail 'the file was replaced in a read-only folder'
fails 'closed/new: cannot be created: Permission denied' \
  "${as_user[@]}" "${run[@]}" --output closed/new
chmod 755 closed
mkdir open && chmod 777 open && cp older open/file && chmod 444 open/file
fails 'open/file: cannot be created: Permission denied' \
  "${as_user[@]}" "${run[@]}" --output open/file
expect_file open/file older
# A file of another user in a folder like /tmp is written in place, too.
mkdir sticky && chmod 1777 sticky && cp older sticky/file && chmod 666 sticky/file
writes "${as_user[@]}" "${run[@]}" --output sticky/file && expect_file sticky/file whole
# The current folder need not be writable.
writes "${as_user[@]}" "${run[@]}" --output open/new
fails 'new: cannot be created: Is a directory' "${run[@]}" --output new
fails 'new\n/file: cannot be created: No such file or directory' \
  "${run[@]}" --output $'new\n/file'

# A user who is not the owner may keep the group of a file.
mkdir shared && chmod 777 shared && cp older shared/file && chmod 660 shared/file
if chown 1:2 shared/file 2>err; then
  writes setpriv --reuid=65534 --regid=65534 --groups=2 "${run[@]}" --output shared/file
  [ "$(stat -c %a,%u:%g shared/file)" = 660,65534:2 ] || fail 'an older file loses its group'
else echo "Skipped: the group of a file: $(<err)"; fi

# A mount point, and a mount point in a read-only folder, are written in place.
mkdir mounted && cp older mounted/file
apart=(unshare -rm bash -c 'mount --bind mounted mounted && mount --bind older mounted/file &&
  mount -o "remount,bind,$1" mounted && exec "${@:2}"' -)
if "${apart[@]}" ro true 2>err; then
  cp older kept
  for mode in rw ro; do
    writes "${apart[@]}" $mode "${run[@]}" --output mounted/file
    cmp older whole || fail "a mount point in a $mode folder is not written"
    cp kept older && expect_file mounted/file older
  done
else echo "Skipped: mount points: $(<err)"; fi

# After a failure, the older file is unchanged, and no other file is left behind.
too_large=(bash -c 'ulimit -f 1; exec "$@"' - "${run[@]}")
cp older new/later
fails 'new/later: cannot be written whole: File too large' "${too_large[@]}" --output new/later
expect_file new/later older
mkdir empty
fails 'empty/file: cannot be written whole: File too large' "${too_large[@]}" --output empty/file
rmdir empty || fail "left behind: $(ls -A empty)"
if can_trace; then
  fails 'new/later: cannot be written whole: Input/output error' \
    "${strace[@]}" -e inject=fsync:error=EIO "${run[@]}" --output new/later
  expect_file new/later older
  fails 'new/later: cannot be created: Input/output error' \
    "${strace[@]}" -e inject=/^rename:error=EIO "${run[@]}" --output new/later
  expect_file new/later older
  # Some file systems cannot wait for the disk.
  writes "${strace[@]}" -e inject=fsync:error=EINVAL "${run[@]}" --output new/later
  expect_file new/later whole
  # Only a run that is killed leaves its new file, which a run with the same number ignores.
  cp older new/later
  expect 137 '' '' \
    "${strace[@]}" -e inject=fsync:signal=KILL "${run[@]}" --output new/later
  cmp new/later older || fail 'a killed run has changed the older file'
  left=$(cd new && compgen -G '.lumo-*-0') || fail 'the new file has another name'
  rm "new/$left"
fi
writes bash -c 'echo >new/.lumo-$$-0; exec "$@"' - "${run[@]}" --output new/later
rm new/.lumo-*-0 && expect_file new/later whole

# The log is not overwritten, under any name.
case $name in
  *export) own='log.bin: the table would be written to the log itself' ;;
  *compare) own='log.bin: the comparison would be written to the log itself' ;;
  *) own='log.bin: the page would be written to the log itself' ;;
esac
for log in log.bin ./new/../log.bin hard.bin soft.bin; do
  fails "$own" "${run[@]}" --output "$log"
done
fails "$own" bash -c '"$@" >>log.bin' - "${run[@]}"
fails "$own" bash -c '"$@" >>log.bin' - "${run[@]}" --output stdout
ln log.bin $'\n.bin'
fails "${own/log.bin/\\n.bin}" "${run[@]/%log.bin/$'\n.bin'}" --output log.bin
# The first of two logs is not overwritten, either.
[ "${run[1]}" != copy.bin ] || fails "$own" "$program" log.bin copy.bin --output hard.bin
cmp log.bin copy.bin || fail 'the log has changed'
exit "$failed"
