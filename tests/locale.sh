#!/usr/bin/env bash
# locale.sh PROGRAM LOG: checks that the program formats numbers independently of the locale.
source "$(dirname "$0")/work_folder.sh"
# This locale only groups digits; localedef warns about everything that it lacks.
printf 'CHARMAP\nEND CHARMAP\n' >charmap
printf 'LC_NUMERIC\ndecimal_point ","\nthousands_sep "."\ngrouping 3\nEND LC_NUMERIC\n' >digits
localedef -c -f ./charmap -i digits ./grouped >err 2>&1
grouped=(env LOCPATH="$work" LC_ALL=grouped)
expect 0 1.234 '' "${grouped[@]}" printf "%'d\n" 1234
run+=(--num_warmup 1234)
"${run[@]}" >plain
grep -q 1234 plain || fail 'prints no large number'
"${grouped[@]}" "${run[@]}" | cmp - plain || fail 'the output depends on the locale'
exit "$failed"
