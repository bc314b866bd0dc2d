"""Runs examples/check_layout.py on the tables of logs with one wrong layout each.

  layout_test.py CHECK_LAYOUT EXPORT FLATC SCHEMA
"""

import json
import subprocess
import sys
import tempfile

LAYOUT, EXPORT, FLATC, SCHEMA = sys.argv[1:]
NODE = "ORX_PROFILE_EVENTTYPE_NODE"


def event(name, *below, **more):
    return {"name": name, "sub_events": below, **more}


def run(*events, graph=0):
    return {"graph_index": graph, "events": events}


FINALIZE, EXECUTE = run(event("Net (finalize)")), run(event("Net (execute)"))
CONV, WAIT = event("Conv", type=NODE), event("wait")
CASES = [  # messages, lines
    ([FINALIZE, EXECUTE, EXECUTE], []),
    ([run(event("(finalize)"), graph=g) for g in (0, 1)] +
     [run(event("(execute)", WAIT, CONV, CONV), graph=2**32 * g + g) for g in (0, 1, 0)],
     []),
    ([FINALIZE], ["no execute run"]),
    ([EXECUTE], ["no finalize run"]),
    ([], ["no finalize run", "no execute run"]),
    ([FINALIZE, run(), EXECUTE], [
        "message 1: no events",
        "message 2: not in the report, but its names say execute"]),
    ([FINALIZE, EXECUTE, run(event("(execute)"), graph=2)],
     ["message 2: graph_index 2, but the number of graphs is 2"]),
    ([FINALIZE, run(event("(execute)"), event("(finalize)"))], [
        "message 1: finalize run by its position, but its names say execute and finalize",
        "graph 0, finalize, event 0 'Net (finalize)': values: 1, runs: 2",
        "graph 0, finalize, event 0 '(execute)': values: 1, runs: 2",
        "graph 0, finalize, event 1 '(finalize)': values: 1, runs: 2"]),
    ([FINALIZE, EXECUTE, run(event("execute"), graph=9), run(event("Net"), graph=9)],
     [f"message {i}: not in the report, but its names say neither kind" for i in (2, 3)]),
    # Two of the three indices mean the same graph.
    ([FINALIZE] + [run(event("(execute)"), graph=g) for g in (2**32, 2)], []),
    ([FINALIZE, run(event("(execute)", CONV, CONV)), run(event("(execute)", CONV, WAIT))],
     ["graph 0, execute, operation 1 'Conv': values: 1, runs: 2"]),
    ([FINALIZE, run(event("(execute)"), event("a")), run(event("(execute)"))],
     ["graph 0, execute, event 1 'a': values: 1, runs: 2"]),
    # Only node events directly below a top-level event are operations.
    ([FINALIZE, run(event("(execute)", event("Conv", CONV, type=NODE))),
      run(event("(execute)", CONV))], []),
    # An operation below two top-level events has two values of one run.
    ([FINALIZE, run(event("(execute)", CONV), event("b", CONV))],
     ["graph 0, execute, operation 0 'Conv': values: 2, runs: 1"]),
]


def check(table, status, lines):
    done = subprocess.run([sys.executable, LAYOUT], input=table, capture_output=True, check=False)
    actual = done.returncode, done.stdout.decode().splitlines()
    assert actual == (status, lines), f"{actual} instead of {lines}"
    return done.stderr.decode()


with tempfile.TemporaryDirectory() as folder:
    for messages, wanted in CASES:
        with open(f"{folder}/log.json", "w", encoding="utf-8") as file:
            json.dump({"messages": messages}, file)
        subprocess.run([FLATC, "-b", "-o", folder, SCHEMA, f"{folder}/log.json"], check=True)
        check(subprocess.run([EXPORT, f"{folder}/log.bin"], capture_output=True, check=True).stdout,
              1 if wanted else 0, wanted)
for wrong in b"", b"log,kind,graph,level\n":
    assert check(wrong, 2, []).startswith("check_layout.py: there is no table of events")
