#!/usr/bin/env bash
# Checks that the viewer formats numbers independently of the locale.
#
#   viewer_locale.sh VIEWER LOG
# shellcheck source=tests/work_folder.sh
source "$(dirname "$0")/work_folder.sh"
# This locale only groups digits; localedef warns about everything that it lacks.
printf 'CHARMAP\nEND CHARMAP\n' >charmap
printf 'LC_NUMERIC\ndecimal_point ","\nthousands_sep "."\ngrouping 3\nEND LC_NUMERIC\n' >digits
localedef -c -f ./charmap -i digits ./grouped >err 2>&1
grouped=(env LOCPATH="$work" LC_ALL=grouped)
expect 0 1.234 '' "${grouped[@]}" printf "%'d\n" 1234
expect 0 '[Profile Viewer] Top K: [1234]' '' "${grouped[@]}" "${run[@]}" --output grouped.txt --topK 1234
expect 0 '[Profile Viewer] Top K: [1234]' '' "${run[@]}" --output plain.txt --topK 1234
cmp grouped.txt plain.txt || fail 'the report depends on the locale'
exit "$failed"
