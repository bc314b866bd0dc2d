#!/usr/bin/env bash
# Runs the viewer with standard streams that are full or closed, and checks what a run that
# is killed has printed.
#
#   viewer_streams.sh VIEWER LOG
# shellcheck source=tests/work_folder.sh
source "$(dirname "$0")/work_folder.sh"
device full 7
# shellcheck disable=SC2016 # $@ is the inner shell's.
{
  expect 0 '' '' bash -c '"$@" >full' - "${run[@]}"
  expect 0 '' '' bash -c '"$@" >&-' - "${run[@]}" --output r.txt
  expect 1 '' '' bash -c '"$@" >&- 2>&-' - "$program" --input_profile_data=missing.bin
}
"${run[@]}" | tail -n +2 | cmp - r.txt || fail 'a report contains other lines'
reserves_streams report.txt
# A pipe without a reader ends the run.
# shellcheck disable=SC2016 # The expansions are the inner shell's.
expect 141 '' '' env --default-signal=PIPE \
  bash -c 'exec 3> >(:); wait $!; "$@" >&3' - "${run[@]}"
# A run that is killed, here because of the size of its report, has already printed the
# accepted options and the warning.
for pair in '--input_profile_data=log.bin data: [log.bin]' '--output=r.txt file: [r.txt]' \
  '--topK=1 K: [1]' '--num_warmup=1 warmups: [1]' '--num_warmup=9 Warmup to 1.'; do
  said=$(ulimit -f 0; exec "${run[@]}" --output=r.txt "${pair%% *}")
  [[ $said == *"${pair#* }" ]] || fail "${pair%% *}: $said"
done
exit "$failed"
