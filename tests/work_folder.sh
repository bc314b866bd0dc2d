# shellcheck shell=bash disable=SC2034 # the tests use the variables
# The beginning of the tests of files and streams, which source it. Their arguments are a
# program and a valid log. Makes the temporary folder in which the test runs, with the
# program, the log as log.bin, a copy of it, two links to it, and an older output, which is
# longer than any other.
set -u
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
name=${1##*/} program=./${1##*/} failed=0
cp "$1" "$work" && cp "$2" "$work/log.bin" && cd "$work" || exit 1
chmod 755 . && chmod 644 log.bin
cp log.bin copy.bin && ln log.bin hard.bin && ln -s ../"${work##*/}"/log.bin soft.bin
ln -s /proc/self/fd/1 stdout
printf 'older\n%.0s' {1..99999} >older

# A run of the program, and the message about an output that is the log itself. The last
# word of the run is the log.
run=("$program" copy.bin log.bin)
case $name in
  *viewer) run=("$program" --input_profile_data log.bin) ;;
  *export)
    run=("$program" --input_profile_data log.bin)
    own_log='the table would be written to the log itself' ;;
  *compare) own_log='the comparison would be written to the log itself' ;;
  *page) own_log='the page would be written to the log itself' ;;
esac

# Root may read and write any file, so some runs need another user.
as_user=(env)
[ "$(id -u)" != 0 ] || as_user=(setpriv --reuid=65534 --regid=65534 --clear-groups)

# can WHAT COMMAND...: runs the command. If it fails here, prints that WHAT is skipped.
can() { "${@:2}" >err 2>&1 || { echo "Skipped: $1: $(<err)" && false; }; }

# strace makes system calls fail. Leaks cannot be detected under it.
strace=(strace -qq -o calls -E ASAN_OPTIONS=detect_leaks=0)
can_trace() { can 'failures of calls' "${strace[@]}" true; }

# device NAME NUMBER: creates a device in this folder, because a faulty program that
# removes or replaces its output would destroy the machine's. Only root can do this; links
# protect less.
device() { { mknod "$1" c 1 "$2" && : <"$1"; } 2>err || ln -sf "/dev/$1" .; }

fail() {
  printf 'FAILED: %s\n' "$*"
  failed=1
}

# expect STATUS LAST_LINE_OF_STDOUT STDERR COMMAND...: runs the command and compares. A
# command that hangs is ended after two minutes: a busy machine needs many seconds.
expect() {
  local status=0 want_status=$1 want_out=$2 want_err=$3
  shift 3
  timeout 120 "$@" >out 2>err </dev/null || status=$?
  [[ $status = "$want_status" && $(tail -n 1 out) = "$want_out" && $(<err) = "$want_err" ]] ||
    fail "$(printf '%s\nstatus %s\n%s\nexpected %s\n%s\n%s' "$*" "$status" \
      "$(tail -n 1 out; cat err)" "$want_status" "$want_out" "$want_err")"
}
