#!/usr/bin/env bash
# Runs the viewer with unusual files, folders, streams and locales.
#
#   surroundings.sh VIEWER LOG
set -u
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cp "$1" "$work/viewer" && cp "$2" "$work/log.bin" && cd "$work" || exit 1
chmod 755 .
program=./viewer
mkdir folder
: >empty.bin
mkfifo pipe.bin
truncate -s 2147483647 huge.bin
cp log.bin log_and_4_gib.bin && truncate -s +4G log_and_4_gib.bin
cp log.bin copy.bin && ln log.bin hard.bin && ln -s ../"${work##*/}"/log.bin soft.bin
printf 'older and longer\n%.0s' {1..9999} >old.txt
failed=0

# Create devices in this folder: a faulty viewer that removes or replaces its output would
# destroy those of the machine. Only root can do this; links protect less.
device() { { mknod "$1" c 1 "$2" && : <"$1"; } 2>err || ln -sf "/dev/$1" .; }
device null 3 && device zero 5 && device full 7

# expect STATUS LAST_LINE_OF_STDOUT STDERR COMMAND...: runs the command, for ten seconds
# at most, and compares.
expect() {
  local status=0 want_status=$1 want_out=$2 want_err=$3
  shift 3
  timeout 10 "$@" >out 2>err </dev/null || status=$?
  if [ "$status" != "$want_status" ] || [ "$(tail -n 1 out)" != "$want_out" ] ||
    [ "$(cat err)" != "$want_err" ]; then
    printf 'FAILED: %s\nstatus %s\n%s\nexpected %s\n%s\n%s\n' "$*" "$status" \
      "$(tail -n 1 out; cat err)" "$want_status" "$want_out" "$want_err"
    failed=1
  fi
}

input() { printf -- '--input_profile_data=%s' "$1"; }
says='[Profile Viewer] Error:'
no_log='Verify Profiling Log Buffer failed. The buffer might be ill-formatted'
for log in folder empty.bin pipe.bin huge.bin log_and_4_gib.bin null zero; do
  expect 1 "$says $no_log" 'Error at main:339' "$program" "$(input "$log")"
done
for log in missing.bin missing/log.bin log.bin/; do
  expect 1 "$says Cannot open the input file." 'Error at main:339' \
    "$program" "$(input "$log")"
done
# Root may read anything, so these runs need another user.
as_user=(env)
[ "$(id -u)" != 0 ] || as_user=(setpriv --reuid=65534 --clear-groups)
chmod 0 copy.bin pipe.bin
for log in copy.bin pipe.bin; do
  expect 1 "$says Cannot open the input file." 'Error at main:339' \
    "${as_user[@]}" "$program" "$(input "$log")"
done
chmod 600 copy.bin
located='Error in lumo-profile-viewer function at ExportData:311
Error at main:343'
for report in missing/r.txt log.bin ./folder/../log.bin hard.bin soft.bin; do
  expect 1 "$says Failed to create $report." "$located" \
    "$program" "$(input log.bin)" --output "$report"
done
expect 1 "$says Failed to create log.bin." "$located" \
  "$program" "$(input soft.bin)" --output log.bin
# Files in different file systems may have the same inode number.
# shellcheck disable=SC2016 # The expansions are the inner shell's.
apart=(unshare -rm bash -c 'mkdir -p a b && mount -t tmpfs a a && mount -t tmpfs b b &&
  cp log.bin a && : >b/r.txt && [ "$(stat -c %i a/*)" = "$(stat -c %i b/*)" ] && exec "$@"' -)
if ! "${apart[@]}" true 2>err; then echo "Skipped: two file systems: $(cat err)"
else expect 0 '[Profile Viewer] Output txt file: [b/r.txt]' '' \
  "${apart[@]}" "$program" "$(input a/log.bin)" --output b/r.txt; fi
# Errors while writing and closed streams are ignored. new.txt, the report of the run with
# standard output closed, is compared at the end.
expect 0 '[Profile Viewer] Output txt file: [full]' '' \
  "$program" "$(input log.bin)" --output full
# shellcheck disable=SC2016 # $0 and $@ are the inner shell's.
{
  expect 0 '' '' bash -c '"$0" "$@" >full' "$program" "$(input log.bin)"
  expect 0 '' '' bash -c '"$0" "$@" >&-' "$program" "$(input log.bin)" --output new.txt
  expect 1 '' '' bash -c '"$0" "$@" >&- 2>&-' "$program" "$(input missing.bin)"
}
# A run that is killed, here because of the size of its report, has already printed the
# accepted options and the warning.
for pair in "$(input log.bin) data: [log.bin]" '--output=r.txt file: [r.txt]' \
  '--topK=1 K: [1]' '--num_warmup=1 warmups: [1]' '--num_warmup=9 Warmup to 1.'; do
  said=$(ulimit -f 0; exec "$program" "$(input log.bin)" --output=r.txt "${pair%% *}")
  [[ $said == *"${pair#* }" ]] || { echo "FAILED: ${pair%% *}: $said"; failed=1; }
done
# A run that fails leaves an older report unchanged.
expect 1 "$says Number of Warmup: -1 < 0." "${located/ExportData:311*/ReadDataFromLog:119}
Error at main:341" "$program" "$(input log.bin)" --output=old.txt --num_warmup=-1
[ "$(wc -l <old.txt)" = 9999 ] || { echo 'FAILED: the older report has changed'; failed=1; }

# Numbers do not depend on the locale. This locale only groups digits; localedef warns
# about everything that it lacks.
printf 'CHARMAP\nEND CHARMAP\n' >charmap
printf 'LC_NUMERIC\ndecimal_point ","\nthousands_sep "."\ngrouping 3\nEND LC_NUMERIC\n' >digits
localedef -c -f ./charmap -i digits ./grouped >err 2>&1
grouped=(env LOCPATH="$work" LC_ALL=grouped)
expect 0 1.234 '' "${grouped[@]}" printf "%'d\n" 1234
expect 0 '[Profile Viewer] Top K: [1234]' '' \
  "${grouped[@]}" "$program" "$(input log.bin)" --output old.txt --topK 1234
if ! { "$program" "$(input log.bin)" | tail -n +2 | cmp - old.txt &&
  cmp old.txt new.txt && cmp log.bin copy.bin; }; then
  echo 'FAILED: a report differs, or the log has changed'
  failed=1
fi
exit "$failed"
