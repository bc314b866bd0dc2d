"""Compares the options in the help text of a program with its other documents.

  check_options.py PROGRAM SOURCE_DIR

The documents are the man page, the completions and, for the viewer, the README. Arguments,
defaults and exit statuses of options are compared, too. The exit statuses, columns and
messages in the program's tests are compared with the man page. Prints each difference; the
exit status is 1 if there are any.
"""

import collections
import glob
import os
import re
import subprocess
import sys

PROGRAM = os.path.realpath(sys.argv[1])
NAME = os.path.basename(PROGRAM)
IS_VIEWER = NAME == "lumo-profile-viewer"
os.chdir(sys.argv[2])
differences = []


def read(path):
    """Returns the text of a file. Names of events may have any bytes."""
    with open(path, encoding="utf-8", errors="surrogateescape", newline="") as file:
        return file.read()


CASES = "tests/cases" if IS_VIEWER else f"tests/{NAME.removeprefix('lumo-profile-')}_cases"
COMMAND_LINES = read("tests/command_lines.txt")
PAGE, ZSH = f"man/{NAME}.1", f"completions/_{NAME}"
MAN, COMPLETIONS = read(PAGE), read(ZSH)
HELP = subprocess.run([PROGRAM, "--help"], stdout=subprocess.PIPE, check=True, text=True).stdout


def section(heading):
    """Returns the text of a section of the man page, or nothing."""
    found = re.search(rf"^\.Sh {heading}\n(.*?)^\.Sh ", MAN, re.M | re.S)
    return found[1] if found else ""


def items(text):
    return re.findall(r"^\.It (.*)", text, re.M)


def compare(place, wanted, actual):
    """Records what only one of the lists has."""
    wanted, actual = collections.Counter(wanted), collections.Counter(actual)
    differences.extend(f"{place}: missing: {item}" for item in (wanted - actual).elements())
    differences.extend(f"{place}: unexpected: {item}" for item in (actual - wanted).elements())


def named(name, argument):
    return f"{name}=" if argument else name


def summary(name, argument, text):
    """Returns an option with its default, if that is a number, and with the exit statuses in
    its description."""
    default = re.search(r"[Dd]efault:?\s(?:is\s)?(\d+)", text)
    return (named(name, argument), default and default[1], *re.findall(r"[Ss]tatus\s(\d)", text))


def check_options(options):
    summaries = [summary(*option) for option in options]
    compare(f"synopsis of {PAGE}", {named(name, argument) for name, argument, _ in options},
            {named(f"--{name}", argument)
             for name, argument in re.findall(r"Fl Fl (\S+)( Ar)?", section("SYNOPSIS"))})
    compare(PAGE, summaries, [
        summary(f"--{name}", argument, text) for name, argument, text in
        re.findall(r"^\.It Fl Fl (\S+)( Ar)?.*\n((?:(?!\.It|\.El).*\n)*)", MAN, re.M)])
    # An option that takes an argument has a "=" and says how to complete the argument.
    compare(ZSH, summaries, [summary(*option) for option in re.findall(
        r"^ *'(--\w+)(=)?\[(.*)\](?(2):[^:]+:(?: |_files))'", COMPLETIONS, re.M)])
    if IS_VIEWER:
        compare("README.md", summaries, [
            summary(name, argument, f"default {default}") for name, argument, default in
            re.findall(r"^\| `(--\w+)( [A-Z]+)?`.*\| (\d*)[^|]*\|$", read("README.md"), re.M)])


def check_exit_statuses(options):
    """Checks the section of the exit statuses, which also names the options whose
    descriptions have them."""
    described = re.findall(r"^\.It (.)\n((?:(?!\.It ).*\n)*)", section("EXIT STATUS"), re.M)
    own_lines = re.findall(rf"^\$ {NAME} .*\n(?:(?!\$ ).*\n)*", COMMAND_LINES, re.M)
    compare(f"exit statuses in {PAGE}",
            {"0", *case_statuses().values(), *re.findall(r"^= (.*)", "".join(own_lines), re.M)},
            [status for status, _ in described])
    wanted = {(status, name) for name, _, text in options
              for status in re.findall(r"[Ss]tatus\s(\d)", text)}
    compare(f"options under the exit statuses in {PAGE}", wanted, wanted & {
        (status, f"--{name}") for status, text in described
        for name in re.findall(r"^\.Fl Fl (\S+)", text, re.M)})


def case_statuses():
    """Returns the exit status of each case that does not succeed."""
    paths = glob.glob(f"{CASES}/*/status.txt")
    return {os.path.dirname(path): read(path).strip() for path in paths}


def check_columns():
    """Compares the columns of each table, in their order."""
    texts = [read(path) for name in ("stdout.txt", "table.csv")
             for path in glob.glob(f"{CASES}/*/{name}")]
    sections = [",".join(items(section(heading))).replace(" , ", ",")
                for heading in ("EVENTS", "STATISTICS", "CSV COLUMNS")]
    compare(f"columns in {PAGE}",
            set(re.findall(r"^[a-z_,]+,name,[a-z_,]+$", "\n".join(texts), re.M)),
            [columns for columns in sections if columns])


def pattern(item):
    """Returns the regular expression for a message of the man page, in which some words are
    placeholders."""
    text = re.sub(r"\.\.\.$", "word", item.replace(r"\-", "-"))
    words = "file|folder|kind|letter|level|log|name|number|option|reason|text|word|P|W|g|i|n|p"
    return re.sub(rf"\b({words})\b", ".*", re.escape(text))


def check_messages():
    """Compares the messages of the tests with the man page. If it has the exit status of a
    message, that must be the status of the cases."""
    diagnostics = section("DIAGNOSTICS")
    start = NAME + (r": |\[Profile Viewer\] |Error " if IS_VIEWER else ": ")
    texts = [COMMAND_LINES, *(read(path) for path in glob.glob(f"{CASES}/*/*.txt"))]
    messages = set(re.findall(rf"^(?:! )?((?:{start}).*)", "\n".join(texts), re.M))
    patterns = "|".join(pattern(item) for item in items(diagnostics))
    compare(PAGE, messages, [text for text in messages if re.search(patterns, text)])

    for group, text in re.findall(r"((?:^\.It .*\n)+)((?:(?!\.It ).*\n)*)", diagnostics, re.M):
        status = re.search(r"exit status is\s(\d)", text)
        for path in glob.glob(f"{CASES}/*/stderr.txt") if status else []:
            if any(re.search(pattern(item), read(path)) for item in items(group)):
                compare(f"exit status of the message of {path}",
                        [case_statuses().get(os.path.dirname(path), "0")], [status[1]])

    # The messages in the scripts are shared by all programs except the viewer.
    if not IS_VIEWER:
        shared = r"cannot be [a-z ]+: |would be written [a-z ]+|is a [a-z]+, not a log"
        scripts = "".join(read(path) for path in glob.glob("tests/*.sh"))
        compare(f"shared messages in {PAGE}", set(re.findall(shared, scripts)),
                set(re.findall(shared, "\n".join(items(diagnostics)))))


def offers(wanted, *words, program=PROGRAM):
    """Checks what bash completes for the last word of a command line."""
    script = """source completions/lumo-profile.bash && complete -p "${1##*/}" >/dev/null &&
      COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) && _lumo_profile "$1" &&
      printf '%s\n' "${COMPREPLY[@]}" """
    done = subprocess.run(["bash", "-c", script, "bash", program, *words], text=True,
                          env={**os.environ, "HOME": os.path.dirname(PROGRAM)},
                          stdout=subprocess.PIPE, check=False)
    compare(f"completions of {program} {' '.join(words)}", wanted,
            filter(None, done.stdout.split("\n")))


def check_completions(options):
    """Checks the operands in zsh, by their positions or, if there may be any number, by "*".
    bash completes options, files and nothing."""
    operands = re.findall(r"^\.(?:Op )?Ar (.*)", section("SYNOPSIS"), re.M)
    any_number = any("..." in operand for operand in operands)
    compare(f"operands in {ZSH}",
            ["*"] if any_number else [str(i + 1) for i in range(len(operands))],
            re.findall(r"^ *'([0-9*]+):[^:]+:_files'", COMPLETIONS, re.M))

    names = [name for name, _, _ in options]
    offers(names, "--")
    offers(names, "--", program=f"~/{NAME}")
    if operands:
        offers(["README.md"], "--help", "README.md", "READ")
    for name, argument, _ in options:
        if name in ("--input_profile_data", "--output"):
            offers(["README.md"], name, "READ")
            # bash splits --output=READ into three words.
            offers(["README.md"], name, "=", "READ")
            offers(os.listdir(), name, "=")
        elif argument:
            offers([], name, "")


OPTIONS = re.findall(r"^ *(--\w+)( \S)?(.*\n(?:(?! *--).*\n)*)", HELP, re.M)
check_options(OPTIONS)
check_exit_statuses(OPTIONS)
check_columns()
check_messages()
check_completions(OPTIONS)
sys.exit("\n".join(differences) or 0)
