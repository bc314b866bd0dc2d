"""Compares lumo-profile-export --statistics with an independent computation.

  statistics_test.py EXPORT FLATC SCHEMA LOGS

LOGS is a folder with the logs of all test cases.
"""

import csv
import io
import os
import random
import subprocess
import sys
import tempfile

import log_model
import random_logs

EXPORT, FLATC, SCHEMA, LOGS = (os.path.realpath(path) for path in sys.argv[1:])
# Parts of the paths of the logs that are not well-formed, and the message about them.
DAMAGED = "string_without_end", "values_not_aligned", "export_damaged_log", "several_logs/a.bin"
ILL_FORMATTED = "Verify Profiling Log Buffer failed. The buffer might be ill-formatted"


def run(*arguments):
    """Returns the status and the lines of both streams, as they are written."""
    done = subprocess.run([EXPORT, "--statistics", *arguments], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, check=False)
    return done.returncode, done.stdout.decode(errors="surrogateescape")


def wanted_lines(paths, num_warmup, with_parts):
    """Yields (path, row or the message about the log)."""
    for path in paths:
        try:
            if any(text in path for text in DAMAGED):
                raise ValueError(ILL_FORMATTED)
            for row in log_model.statistics_of(log_model.read_log(path), num_warmup, with_parts):
                yield path, row
        except ValueError as error:
            yield path, f"lumo-profile-export: {path}: {error}"


def check(folder, paths, num_warmup, with_parts):
    """Compares the table and the messages of the logs of a folder."""
    status, text = run("--num_warmup", str(num_warmup), *["--parts"] * with_parts, folder)
    wanted = list(wanted_lines(paths, num_warmup, with_parts))
    failures = [line for _, line in wanted if isinstance(line, str)]
    assert status == (1 if failures else 0), status
    rows = csv.reader(io.StringIO(text, newline=""))
    # The messages about logs before the first one that can be read precede the table.
    while wanted and isinstance(wanted[0][1], str):
        assert ",".join(next(rows)) == wanted.pop(0)[1]
    assert next(rows) == log_model.COLUMNS
    for path, want in wanted:
        row = next(rows, ["no more rows"])
        if isinstance(want, str):
            assert ",".join(row) == want, f"{row} instead of {want}"
            continue
        kind, graph, level, parent, name, occurrence, unit, *figures = want
        as_text = [t.decode(errors="surrogateescape") for t in (parent, name)]
        assert row[:8] == [path, kind, str(graph), level, *as_text, str(occurrence), unit], \
            f"{row} instead of {want}"
        means = [None, None, figures[1], None, None, None]
        assert all(map(log_model.is_same, row[8:], figures, means)), f"{row} instead of {want}"
    assert next(rows, None) is None, "more rows than series"
    return len(wanted)


def find(folder):
    return sorted((os.path.join(path, name) for path, _, names in os.walk(folder)
                   for name in names if name.endswith(".bin")), key=os.fsencode)


def main():
    random.seed(21)
    with tempfile.TemporaryDirectory() as folder:
        for i in range(60):
            graphs = random.choice([[0], [0, 1], [2**32, 1, 2], [0, 1, 3], [2**31]])
            runs = random.choice([0, 1, 2, 3, 9])
            random_logs.write(f"{folder}/{i % 3}/{i}.json", random_logs.log(graphs, runs))
        random_logs.convert(FLATC, SCHEMA, folder)
        logs = {LOGS: find(LOGS), folder: find(folder)}
        assert len(logs[folder]) == 60
        lines = sum(check(path, logs[path], num_warmup, with_parts)
                    for path in logs for num_warmup in (0, 1, 2, 2**31 - 1)
                    for with_parts in (False, True))
    print(f"{lines} rows and messages match an independent computation.")


main()
