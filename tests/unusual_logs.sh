#!/usr/bin/env bash
# unusual_logs.sh PROGRAM LOG: runs the program with logs that are invalid or cannot be read.
source "$(dirname "$0")/work_folder.sh"
command=("${run[@]::2}")  # without the log
mkdir folder
: >empty.bin
mkfifo pipe secret_pipe && ln -s pipe pipe_link
truncate -s 2147483647 huge.bin
cp log.bin log_and_4_gib.bin && truncate -s +4G log_and_4_gib.bin
cp log.bin secret.bin && chmod 0 secret.bin secret_pipe
device null 3 && device zero 5

# rejects LOG REASON COMMAND...: checks that the command rejects the log for that reason.
rejects() {
  # The viewer does not say why a log cannot be opened.
  if [ "$name" = lumo-profile-viewer ]; then
    expect 1 "[Profile Viewer] Error: ${2/#cannot be opened:*/Cannot open the input file.}" \
      'Error at main:339' "${@:3}"
  else
    expect 1 '' "$name: $1: $2" "${@:3}"
  fi
}

unverified='Verify Profiling Log Buffer failed. The buffer might be ill-formatted'
for log in empty.bin huge.bin log_and_4_gib.bin; do
  rejects $log "$unverified" "${command[@]}" $log
done
# Compare and page take folders of logs.
for pair in 'folder is a folder, not a log' 'pipe is a pipe, not a log' \
  'pipe_link is a pipe, not a log' 'null is a device, not a log' 'zero is a device, not a log'; do
  case $name,$pair in
    *viewer,*) rejects "${pair%% *}" "$unverified" "${command[@]}" "${pair%% *}" ;;
    *compare,folder* | *page,folder*) ;;
    *) rejects "${pair%% *}" "${pair#* }" "${command[@]}" "${pair%% *}" ;;
  esac
done
for log in missing.bin missing/log.bin; do
  rejects $log 'cannot be opened: No such file or directory' "${command[@]}" $log
done
rejects log.bin/ 'cannot be opened: Not a directory' "${command[@]}" log.bin/
for log in secret.bin secret_pipe; do
  rejects $log 'cannot be opened: Permission denied' "${as_user[@]}" "${command[@]}" $log
done
[ "$name" != lumo-profile-viewer ] || exit "$failed"

# The first of two logs is checked, too.
[ "${run[1]}" != copy.bin ] ||
  rejects missing.bin 'cannot be opened: No such file or directory' \
    "$program" missing.bin log.bin
# A log that is changed or cannot be read: strace delays and fails its first read.
if can_trace; then
  cp log.bin busy.bin
  read=("${strace[@]}" -P "$work/busy.bin" -e)
  # Its size is always the same, and only the seconds or only the nanoseconds of its time change.
  for start in @ @1.; do
    n=100
    while :; do touch -d "$start$((++n))" busy.bin; sleep 0.01; done &
    rejects busy.bin 'cannot be read whole: it changed while it was read' \
      "${read[@]}" inject=read:delay_enter=2s:when=1 "${command[@]}" busy.bin
    kill $! && wait $! 2>/dev/null
  done
  rejects busy.bin 'cannot be read whole: Input/output error' \
    "${read[@]}" inject=read:error=EIO "${command[@]}" busy.bin
fi
# Files in /sys are shorter than the size that the system reports.
log=$(compgen -G '/sys/kernel/mm/*/enabled') || log=/sys/kernel/profiling
! can 'a log that becomes shorter' ls "$log" ||
  rejects "$log" 'cannot be read whole: it became shorter while it was read' \
    "${command[@]}" "$log"
exit "$failed"
