#!/usr/bin/env bash
# Runs a program other than the viewer with devices, pipes and closed standard streams.
#
#   program_streams.sh PROGRAM LOG
# shellcheck source=tests/work_folder.sh
# shellcheck disable=SC2016 # The expansions are the inner shells'.
source "$(dirname "$0")/work_folder.sh"
fails() { expect 1 '' "$name: $1" "${@:2}"; }
device full 7
"${run[@]}" >whole || fail 'does not write its output'

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
reserves_streams file
# A pipe without a reader ends the run, even if SIGPIPE is ignored.
expect 141 '' '' bash -c 'trap "" PIPE; exec 3> >(:); wait $!; "$@" >&3' - "${run[@]}"
exit "$failed"
