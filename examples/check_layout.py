#!/usr/bin/python3
"""Checks the layout of a log before its report is trusted.

Reads the table of lumo-profile-export on standard input. Prints a line for each
message that has no events or whose events do not fit its position, and for each
series that does not have one value in every run. The exit status is 0 if no lines
were printed, 1 if some were, and 2 if standard input has no table.
"""

import collections
import csv
import sys

TEXTS = {"finalize": "(finalize)", "execute": "(execute)"}


def main():
    csv.field_size_limit(2**31 - 1)
    sys.stdin.reconfigure(encoding="utf-8", errors="backslashreplace", newline="")
    sys.stdout.reconfigure(errors="backslashreplace")
    rows = csv.DictReader(sys.stdin)
    if not rows.fieldnames:
        print("check_layout.py: there is no table on standard input", file=sys.stderr)
        return 2
    messages = {}  # position: (kind, kinds according to the names)
    runs = collections.defaultdict(set)  # (kind, graph): positions
    series = collections.Counter()
    operations = collections.Counter()  # top-level event: node events so far
    for row in rows:
        position, kind, name = int(row["message"]), row["kind"], row["name"]
        kinds = messages.setdefault(position, (kind, set()))[1]
        graph = int(row["graph_index"]) % 2**32
        runs[kind, graph].add(position)
        if row["level"] == "0":
            kinds.update(k for k, text in TEXTS.items() if text in name)
            series[kind, graph, "event", int(row["position"]), name] += 1
        elif row["level"] == "1" and row["type"] == "ORX_PROFILE_EVENTTYPE_NODE":
            ordinal = operations[row["parent"]]
            operations[row["parent"]] += 1
            series[kind, graph, "operation", ordinal, name] += 1

    faults = []
    for position in range(max(messages, default=-1) + 1):
        if position not in messages:
            faults.append(f"message {position}: no events")
            continue
        kind, kinds = messages[position]
        if kinds != {kind}:
            place = f"{kind} run by its position" if kind else "not in the report"
            names = " and ".join(sorted(kinds)) or "neither kind"
            faults.append(f"message {position}: {place}, but its names say {names}")
    for (kind, graph, level, place, name), count in series.items():
        if kind and count != len(runs[kind, graph]):
            faults.append(f"graph {graph}, {kind}, {level} {place} {name!r}: "
                          f"values: {count}, runs: {len(runs[kind, graph])}")
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


sys.exit(main())
