#!/usr/bin/env bash
# Executes the command blocks of a document and compares the output they show.
#
#   run_doc_examples.sh PROGRAM_DIR FLATC_DIR FOLDER DOCUMENT
#
# All commands run in order in one shell, in FOLDER, with the two directories
# first on PATH. A command block is a fence "```console" in Markdown, a display
# ".Bd -literal" in a man page:
# - "$ " begins a command; behind a backslash at its end it goes on in the next line.
# - The lines up to the next command are all that it prints, errors included. A
#   line "..." stands for any number of lines.
# - Only a command before one that looks at "$?" may fail.
# A fence "```json NAME" becomes the file NAME. Every other text is left alone.
# The first mismatch ends the run with status 1, as does a document without commands.
export LC_ALL=C
unset POSIXLY_CORRECT
document=$(realpath "$4")
PATH=$(realpath "$1"):$(realpath "$2"):$PATH
scratch=$(mktemp -d) || exit 1
trap 'rm -rf "$scratch"' EXIT
cd "$3" || exit 1
state=text command='' status=0 commands=0

fail() {
  printf '%s: %s:\n%s\n' "$document" "$1" "$command"
  exit 1
}

# Prints the expected lines, each "..." replaced by the actual lines that it stands
# for: those before the first place where the lines behind it, up to the next
# "...", follow.
fill_in() {
  awk 'FILENAME == ARGV[1] { actual[++lines] = $0; next }
       { expected[++end] = $0 }
       function follows(at, first, last) {
         for (; first <= last; first++) if (expected[first] != actual[at++]) return 0
         return at <= lines + 1 && (last < end || at > lines)
       }
       END {
         for (at = e = 1; e <= end; e++) {
           if (expected[e] != "...") { print expected[e]; at++; continue }
           for (last = e; last < end && expected[last + 1] != "..."; last++);
           for (to = at; to <= lines && !follows(to, e + 1, last); to++);
           if (!follows(to, e + 1, last)) print "..."
           else while (at < to) print actual[at++]
         }
       }' "$scratch/actual" "$scratch/expected"
}

# Runs the command read last, if there is one; $? is the status of the one before.
run() {
  [ -n "$command" ] || return
  (exit "$status")
  eval "$command" >"$scratch/actual" 2>&1 </dev/null
  status=$? commands=$((commands + 1))
  fill_in | diff -a -u --label shown --label actual - "$scratch/actual" ||
    fail "the output shown is not the output of"
  [[ $status -eq 0 || $1 == *\$\?* ]] || fail "unexpected status $status of"
  command=''
}

mapfile -t lines <"$document"
for line in "${lines[@]}"; do
  case $state:$line in
    'text:```console' | 'text:.Bd -literal'*) state=console ;;
    'text:```json '*) state=json file=${line#* } && : >"$file" ;;
    'console:```' | console:.Ed) run '' && state=text status=0 ;;
    'json:```') state=text ;;
    json:*) printf '%s\n' "$line" >>"$file" ;;
    'console:$ '*) run "$line" && command=${line#??} && : >"$scratch/expected" ;;
    console:*)
      [ -n "$command" ] || fail "a command block begins with \"$line\""
      if [[ $command == *\\ ]]; then command+=$'\n'$line
      else printf '%s\n' "$line" >>"$scratch/expected"; fi ;;
  esac
done
[ "$commands" -gt 0 ] || fail "no commands"
echo "$commands commands ran"
