#!/usr/bin/env bash
# Checks that each program except the viewer reads logs whole, writes its output whole or
# not at all, to any kind of file and after any failure, and reports the system's reason.
#
#   files.sh PROGRAM_DIR SAMPLE_LOG_DIR
set -u
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
programs=$(realpath "$1")
cp "$2"/*.bin "$work" && cd "$work" && mv basic.bin log.bin || exit 1
# Create devices in this folder: a faulty program that removes or replaces its output would
# destroy those of the machine. Only root can do this; links protect less.
device() { { mknod "$1" c 1 "$2" && : <"$1"; } 2>err || ln -sf "/dev/$1" .; }
device null 3 && device zero 5 && device full 7
ln -s /proc/self/fd/1 out
cp log.bin copy.bin && ln log.bin hard.bin
ln -s ../"${work##*/}"/log.bin soft.bin
mkdir folder
: >empty.bin
mkfifo pipe.bin secret_pipe.bin
truncate -s 2147483647 huge.bin
truncate -s 300M large.bin
cp log.bin log_and_4_gib.bin && truncate -s +4G log_and_4_gib.bin
cp log.bin secret.bin && chmod 0 secret.bin secret_pipe.bin
failed=0

# Root may write anywhere, so some runs need another user.
as_user=(env)
if [ "$(id -u)" = 0 ]; then
  as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)
  chmod 755 . && chmod 644 log.bin
  cp "$programs"/lumo-profile-* . && programs=$work
fi

# Makes system calls fail. Leaks cannot be detected under strace.
strace=(strace -qq -o calls -E ASAN_OPTIONS=detect_leaks=0)
"${strace[@]}" true 2>err || { echo "Skipped: failures of the disk: $(<err)"; strace=(); }

fail() {
  printf 'FAILED: %s: %s\n' "$name" "$*"
  failed=1
}

# expect STATUS MESSAGE COMMAND...: runs the command, for ten seconds at most. The message
# is given without the program's name.
expect() {
  local status=0 want_status=$1 want_message=${2:+$name: $2}
  shift 2
  timeout 10 "$@" >said 2>err </dev/null || status=$?
  [[ $status = "$want_status" && $(<err) = "$want_message" ]] ||
    fail "$*: expected $want_status: $want_message, but got $status: $(<err)"
}

# expect_file FILE TEXT_FILE: checks that FILE is equal to TEXT_FILE and alone in its folder.
expect_file() {
  cmp "$1" "$2" || fail "$1 differs from $2"
  [ "$(ls -A "${1%/*}")" = "${1##*/}" ] || fail "left behind: $(ls -A "${1%/*}")"
}

# check_log COMMAND...: tests logs that are invalid or cannot be read. The log is appended
# to the command.
check_log() {
  local name=$1 command=("$programs/$1" "${@:2}") log
  local no_log='Verify Profiling Log Buffer failed. The buffer might be ill-formatted'
  for log in folder empty.bin pipe.bin huge.bin log_and_4_gib.bin null zero; do
    expect 1 "$log: $no_log" "${command[@]}" $log
  done
  expect 1 'missing.bin: cannot be opened: No such file or directory' \
    "${command[@]}" missing.bin
  for log in secret.bin secret_pipe.bin; do
    expect 1 "$log: cannot be opened: Permission denied" \
      "${as_user[@]}" "${command[@]}" $log
  done
  # This file is touched while it is read.
  while :; do touch large.bin; sleep 0.001; done &
  expect 1 'large.bin: cannot be read whole: it changed while it was read' \
    "${command[@]}" large.bin
  kill $! && wait $! 2>/dev/null
  # Files in /sys are shorter than the size that the system reports.
  log=$(compgen -G '/sys/kernel/mm/*/enabled') || log=$(compgen -G '/sys/kernel/profiling')
  if [ -n "$log" ]; then
    expect 1 "$log: cannot be read whole: it became shorter while it was read" \
      "${command[@]}" "$log"
  else
    echo 'Skipped: a log that becomes shorter, because there is no /sys/kernel.'
  fi
}

# check_output COMMAND...: tests the output. --output is appended to the command.
check_output() {
  local name=$1 command=("$programs/$1" "${@:2}")
  "${command[@]}" >whole || fail 'does not write its output'
  echo older >older

  # A new file, an older file and the target of a symbolic link, with their modes.
  mkdir new && (umask 027 && "${command[@]}" --output new/file) && expect_file new/file whole
  [ "$(stat -c %a new/file)" = 640 ] || fail 'a new file ignores the umask'
  chmod 604 new/file && cp older new/file
  [ "$(id -u)" != 0 ] || chown 1:1 new/file
  owner=$(stat -c %u:%g new/file)
  expect 0 '' "${command[@]}" --output new/file && expect_file new/file whole
  [ "$(stat -c %a,%u:%g new/file)" = "604,$owner" ] || fail 'an older file loses its mode or owner'
  cp older new/file && ln -s file new/link && ln -s new/link link
  expect 0 '' "${command[@]}" --output link
  [[ -L link && -L new/link ]] && rm link new/link && expect_file new/file whole
  ln -s new/later link
  rm new/file
  expect 0 '' "${command[@]}" --output link && expect_file new/later whole
  rm link

  # Devices, pipes and other names of standard output are written directly.
  expect 1 'full: cannot be written whole: No space left on device' \
    "${command[@]}" --output full
  expect 1 'standard output: cannot be written whole: No space left on device' \
    bash -c '"$@" >full' - "${command[@]}"
  expect 1 'standard output: cannot be written: No space left on device' \
    bash -c '"$@" >full' - "${command[0]}" --help
  expect 1 'standard output: cannot be written whole: Bad file descriptor' \
    bash -c '"$@" >&-' - "${command[@]}"
  [ -c full ] || fail 'a device was removed'
  mkfifo fifo && { cat fifo >from_fifo & } && expect 0 '' "${command[@]}" --output fifo
  wait
  cmp from_fifo whole || fail 'a pipe gets another text'
  rm fifo
  cp older stdout && "${command[@]}" --output out >>stdout
  cmp stdout whole || fail 'an open file is not written in place'

  # A file that cannot be replaced in its folder is written in place; a file without write
  # permission is unchanged.
  mkdir closed && cp older closed/file && chmod 666 closed/file && chmod 555 closed
  inode=$(stat -c %i closed/file)
  expect 0 '' "${as_user[@]}" "${command[@]}" --output closed/file && expect_file closed/file whole
  [ "$(stat -c %i closed/file)" = "$inode" ] || fail 'the file was replaced in a read-only folder'
  expect 1 'closed/new: cannot be created: Permission denied' \
    "${as_user[@]}" "${command[@]}" --output closed/new
  mkdir open && chmod 777 open && cp older open/file && chmod 444 open/file
  expect 1 'open/file: cannot be created: Permission denied' \
    "${as_user[@]}" "${command[@]}" --output open/file
  expect_file open/file older
  chmod 755 closed
  # So is a file of another user in a folder like /tmp.
  mkdir sticky && chmod 1777 sticky && cp older sticky/file && chmod 666 sticky/file
  expect 0 '' "${as_user[@]}" "${command[@]}" --output sticky/file
  expect_file sticky/file whole
  for path in new new/missing/file; do
    reason='No such file or directory'
    [ "$path" = new ] && reason='Is a directory'
    expect 1 "$path: cannot be created: $reason" "${command[@]}" --output "$path"
  done

  # After a failure, the older file is unchanged.
  cp older new/later
  expect 1 'new/later: cannot be written whole: File too large' \
    bash -c 'ulimit -f 1; exec "$@"' - "${command[@]}" --output new/later
  expect_file new/later older
  # Nor is a new file left behind, even if it has a name from the start, as it has without
  # /proc.
  if [ "${#strace[@]}" != 0 ]; then
    for failure in fsync:error=EIO /access:error=ENOENT; do
      expect 1 'new/later: cannot be written whole: Input/output error' \
        "${strace[@]}" -e inject=fsync:error=EIO -e "inject=$failure" \
        "${command[@]}" --output new/later
      expect_file new/later older
    done
    expect 0 '' "${strace[@]}" -e "inject=$failure" "${command[@]}" --output new/later
    expect_file new/later whole && cp older new/later
  fi
  # If a stream is closed, messages are not written to the file that is opened next.
  bash -c 'exec "$@" 2>&-' - "${command[@]}" --output new/later
  expect_file new/later whole

  # The log is not overwritten, under any name.
  for log in log.bin ./new/../log.bin hard.bin soft.bin; do
    expect 1 "log.bin: the $noun would be written to the log itself" "${command[@]}" --output "$log"
  done
  for into in '' '--output out'; do
    expect 1 "log.bin: the $noun would be written to the log itself" \
      bash -c "\"\$@\" $into >>log.bin" - "${command[@]}"
  done
  # A pipe without a reader ends the run, even if SIGPIPE is ignored.
  expect 141 '' bash -c 'trap "" PIPE; exec 3> >(:); wait $!; "$@" >&3' - "${command[@]}"
  cmp log.bin copy.bin || fail 'the log has changed'
  rm -rf new open closed sticky stdout from_fifo whole older
}

noun=table
check_log lumo-profile-export --input_profile_data
check_output lumo-profile-export --input_profile_data log.bin
noun=comparison
check_log lumo-profile-compare log.bin
check_output lumo-profile-compare copy.bin log.bin
# The first of two logs is checked, too.
name=lumo-profile-compare command=("$programs/lumo-profile-compare")
expect 1 'missing.bin: cannot be opened: No such file or directory' \
  "${command[@]}" missing.bin log.bin
expect 1 'log.bin: the comparison would be written to the log itself' \
  "${command[@]}" log.bin copy.bin --output hard.bin

# The names of the logs are escaped.
cp log.bin $'a\nb.bin'
"${command[@]}" $'a\nb.bin' log.bin | grep -qF '  before: a\nb.bin, ' ||
  fail 'the name of a log is not escaped'

# On a terminal, real differences are colored unless NO_COLOR is set.
export program="$programs/$name"
"$program" detailed.bin tuned.bin >plain
sed $'s/^.*  lower .*/\033[1;32m&\033[0m/; s/^.*  higher .*/\033[1;31m&\033[0m/' plain >colored
# on_terminal FILE SETTING OPTIONS: checks that the output on a terminal is equal to FILE.
on_terminal() {
  script -qec "$2 \"\$program\" detailed.bin tuned.bin $3" /dev/null </dev/null |
    tr -d '\r' | cmp - "$1" || fail "on a terminal with $2 $3"
}
if script -qec true /dev/null </dev/null >said 2>&1; then
  on_terminal colored '' ''
  on_terminal colored NO_COLOR= ''
  on_terminal plain NO_COLOR=1 ''
  on_terminal plain '' '| cat'
  on_terminal plain '' '--output out'
else
  echo "Skipped: colors on a terminal: $(<said)"
fi
# A build without Chart.js has no page.
if [ -e "$programs/lumo-profile-page" ]; then
  noun=page
  check_log lumo-profile-page copy.bin
  check_output lumo-profile-page log.bin
fi
[ "$failed" = 0 ] && echo 'Every output was written whole or not at all.'
exit "$failed"
