#!/usr/bin/python3
"""Checks the layout of a log before its report is trusted.

Reads the table of lumo-profile-export on standard input. Prints a line if there is no run
of a kind; for each message that has no events (except at the end of the log), whose events
do not fit its position, or that belongs to no graph; and for each series that does not have
one value in every run.
The exit status is 0 if no lines were printed, 1 if some were, and 2 if standard input has
no table of events.
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
    if "depth" not in (rows.fieldnames or ()):
        print("check_layout.py: there is no table of events on standard input", file=sys.stderr)
        return 2
    messages = {}  # position: (kind, graph_index, kinds according to the names)
    series = collections.Counter()
    operations = collections.Counter()  # top-level event: node events so far
    for row in rows:
        position, kind, name = int(row["message"]), row["kind"], row["name"]
        index = int(row["graph_index"])
        kinds = messages.setdefault(position, (kind, index, set()))[2]
        graph = index % 2**32
        if row["depth"] == "0":
            kinds.update(k for k, text in TEXTS.items() if text in name)
            series[kind, graph, "event", int(row["position"]), name] += 1
        elif row["depth"] == "1" and row["type"] == "ORX_PROFILE_EVENTTYPE_NODE":
            ordinal = operations[row["parent"]]
            operations[row["parent"]] += 1
            series[kind, graph, "operation", ordinal, name] += 1

    faults = [f"no {kind} run" for kind in TEXTS
              if not any(kind in kinds for _, _, kinds in messages.values())]
    graphs = len({index for _, index, _ in messages.values()})
    runs = collections.Counter()
    for position in range(max(messages, default=-1) + 1):
        if position not in messages:
            faults.append(f"message {position}: no events")
            continue
        kind, index, kinds = messages[position]
        runs[kind, index % 2**32] += 1
        if kinds != {kind}:
            place = f"{kind} run by its position" if kind else "not in the report"
            names = " and ".join(sorted(kinds)) or "neither kind"
            faults.append(f"message {position}: {place}, but its names say {names}")
        if kind and index % 2**32 >= graphs:
            faults.append(f"message {position}: graph_index {index}, but the number of graphs"
                          f" is {graphs}")
    for (kind, graph, level, place, name), count in series.items():
        if kind and count != runs[kind, graph]:
            faults.append(f"graph {graph}, {kind}, {level} {place} {name!r}: "
                          f"values: {count}, runs: {runs[kind, graph]}")
    print(*faults, sep="\n", end="\n" if faults else "")
    return 1 if faults else 0


sys.exit(main())
