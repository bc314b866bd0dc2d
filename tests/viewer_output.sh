#!/usr/bin/env bash
# Runs the viewer with unusual report files.
#
#   viewer_output.sh VIEWER LOG
source "$(dirname "$0")/work_folder.sh"
mkdir folder
"${run[@]}" | tail -n +2 >whole.txt
cp older r.txt
expect 0 '[Profile Viewer] Output txt file: [r.txt]' '' "${run[@]}" --output r.txt
cmp r.txt whole.txt || fail 'a report differs from that on standard output'
expect 0 '[Profile Viewer] Output txt file: [-]' '' "${run[@]}" --output -
cmp ./- whole.txt || fail 'the name "-" does not mean a file'

# A report that cannot be created; one that would overwrite the log, under any name.
for report in missing/r.txt folder log.bin ./folder/../log.bin hard.bin soft.bin; do
  for log in log.bin soft.bin; do
    expect 1 "[Profile Viewer] Error: Failed to create $report." \
      $'Error in lumo-profile-viewer function at ExportData:311\nError at main:343' \
      "$program" --input_profile_data=$log --output "$report"
  done
done
# Files in different file systems may have the same inode number.
# shellcheck disable=SC2016 # The expansions are the inner shell's.
apart=(unshare -rm bash -c 'mkdir -p a b && mount -t tmpfs a a && mount -t tmpfs b b &&
  cp log.bin a && : >b/r.txt && [ "$(stat -c %i a/*)" = "$(stat -c %i b/*)" ] && exec "$@"' -)
if ! "${apart[@]}" true 2>err; then echo "Skipped: two file systems: $(<err)"
else expect 0 '[Profile Viewer] Output txt file: [b/r.txt]' '' \
  "${apart[@]}" "$program" --input_profile_data=a/log.bin --output b/r.txt; fi
# A run that fails leaves an older report unchanged.
cp older r.txt
expect 1 '[Profile Viewer] Error: Number of Warmup: -1 < 0.' \
  $'Error in lumo-profile-viewer function at ReadDataFromLog:119\nError at main:341' \
  "${run[@]}" --output=r.txt --num_warmup=-1
cmp r.txt older || fail 'the older report has changed'
cmp log.bin copy.bin || fail 'the log has changed'
exit "$failed"
