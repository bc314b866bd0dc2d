#!/bin/sh
# The lumo-profile-export of the workers in fleet_test.py, which misbehaves for some logs.
# $EXPORT is the real one; the working folder of the test is $FOLDER.
for log; do
  case $log in
    */killer.bin) kill -KILL $PPID ;;
    */killer_once.bin) mkdir "$FOLDER/reached" 2>/dev/null && kill -KILL $PPID ;;
    */sleeper.bin) exec sleep 66 ;;
    */background.bin) sleep 20 & wait ;;  # keeps the streams open
    */chatty.bin) echo 'a warning' >&2 ;;
    */silent.bin) exit 1 ;;
    */crash.bin) "$EXPORT" "$@" | head -c 900 && kill -SEGV $$ ;;
    */status.bin) echo 'one reason' >&2 && exit 3 ;;
    */garbage.bin) echo log,kind && exit ;;
    */cut.bin) "$EXPORT" "$@" | head -c 900 && exit ;;
    */mute.bin) "$EXPORT" "$@" && exit 1 ;;
  esac
done
exec "$EXPORT" "$@"
