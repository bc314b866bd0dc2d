#!/usr/bin/env bash
# streams.sh PROGRAM LOG: runs the program with devices, pipes and closed standard streams.
# shellcheck disable=SC2016 # The expansions are the inner shells'.
source "$(dirname "$0")/work_folder.sh"
fails() { expect 1 '' "$name: $1" "${@:2}"; }
device full 7
"${run[@]}" >whole || fail 'does not write its output'

# A log or an output is not opened as a standard stream if that is closed. Otherwise, the
# message of an abort could go into the output.
if can_trace; then
  "${strace[@]}" -e trace=openat bash -c 'exec "$@" <&- >&- 2>&-' - "${run[@]}" --output file
  grep -E '"(log\.bin|[^"]*/\.lumo-[^"]*|file)".* = [0-9]' calls >opened
  [ "$(wc -l <opened)" -ge 2 ] || fail "opens only $(<opened)"
  ! grep ' = [012]$' opened || fail 'a file becomes a standard stream'
fi
# A pipe without a reader ends the run.
to_closed_pipe=(bash -c 'exec 3> >(:); wait $!; "$@" >&3' - "${run[@]}")
expect 141 '' '' env --default-signal=PIPE "${to_closed_pipe[@]}"

if [ "$name" = lumo-profile-viewer ]; then
  # Errors while writing are ignored.
  expect 0 '[Profile Viewer] Output txt file: [full]' '' "${run[@]}" --output full
  expect 0 '' '' bash -c '"$@" >full' - "${run[@]}"
  expect 0 '' '' bash -c '"$@" >&-' - "${run[@]}" --output r.txt
  tail -n +2 whole | cmp - r.txt || fail 'a report contains other lines'
  expect 1 '' '' bash -c '"$@" >&- 2>&-' - "$program" --input_profile_data=missing.bin
  # A run that is killed, here because of the size of its report, has already printed the
  # accepted options and the warning.
  for pair in '--input_profile_data=log.bin data: [log.bin]' '--output=r.txt file: [r.txt]' \
    '--topK=1 K: [1]' '--num_warmup=1 warmups: [1]' '--num_warmup=9 Warmup to 1.'; do
    said=$(ulimit -f 0; exec "${run[@]}" --output=r.txt "${pair%% *}")
    [[ $said == *"${pair#* }" ]] || fail "${pair%% *}: $said"
  done
  exit "$failed"
fi

# All of these are written directly.
fails 'full: cannot be written whole: No space left on device' "${run[@]}" --output full
fails 'standard output: cannot be written whole: No space left on device' \
  bash -c '"$@" >full' - "${run[@]}"
fails 'standard output: cannot be written: No space left on device' \
  bash -c '"$@" >full' - "$program" --help
fails 'standard output: cannot be written whole: Bad file descriptor' \
  bash -c '"$@" >&-' - "${run[@]}"
[ -c full ] || fail 'a device was removed'
mkfifo fifo && { timeout 120 cat fifo >from_fifo & } && expect 0 '' '' "${run[@]}" --output fifo
wait
cmp from_fifo whole || fail 'a pipe gets another text'
cp older file && { "${run[@]}" --output stdout && echo end; } >>file
{ cat whole && echo end; } | cmp - file || fail 'an open file is not written in place'

# Nothing needs standard error if there is no message.
bash -c 'exec "$@" 2>&-' - "${run[@]}" --output file
cmp file whole || fail 'the output depends on standard error'
# A pipe without a reader ends the run even if SIGPIPE is ignored.
expect 141 '' '' bash -c 'trap "" PIPE && exec "$@"' - "${to_closed_pipe[@]}"
exit "$failed"
