"""Writes random logs, which flatc converts from JSON, for tests of many logs."""

import glob
import json
import os
import random
import subprocess

US, CYCLES = "ORX_PROFILE_EVENTUNIT_MICROSEC", "ORX_PROFILE_EVENTUNIT_CYCLES"
NODE = "ORX_PROFILE_EVENTTYPE_NODE"
NAMES = ["node_id_1:Conv", "Conv", "Conv", 'a "quoted", one', "two\nlines\r", "Größe",
         "bytes \udcff\udc80", "", "NA", " blank ", "zero\0byte", "=1+1", "cr\ronly"]


def event(name, value, unit=CYCLES, **more):
    return {"name": name, "value": int(value), "unit": unit, **more}


def below(depth):
    """Returns sub-events of which some are missing in each run and some are equal."""
    return [event(random.choice(NAMES[:5]), random.randrange(1000), random.choice([CYCLES, US]),
                  type=random.choice([NODE, "NONE"]),
                  sub_events=below(depth - 1) if random.random() < 0.4 else [])
            for _ in range(random.randrange(4))] if depth else []


def execute(graph, run, speed, operations):
    nodes = []
    for i, name in enumerate(operations):
        value = 1e5 * (i + 1) * speed * random.gauss(1, 0.01) * (2 if run == 0 else 1)
        nodes.append(event(name, value, type=NODE, sub_events=below(3)))
        nodes.append(event(random.choice(["wait", name]), value / 9))
    total = sum(node["value"] for node in nodes)
    return {"graph_index": graph, "events": [
        event("Net (execute)", total / 700 + run, US),
        event("same name" if run else "first run only", 3, "NONE"),
        event("same name", random.randrange(2**64), "NONE"),
        event("Accelerator", total, sub_events=random.sample(nodes, len(nodes))[:-1]
              if random.random() < 0.3 else nodes),
        event("Second engine", total / 2, US if run % 2 else CYCLES, sub_events=nodes[:4]),
        event("one run only" if run == 1 else "same name", run)]}


def log(graphs=(0,), runs=3, speed=1.0):
    """Returns a log of these graph indices, with as many execute runs of each."""
    operations = [random.sample(NAMES, 8) for _ in graphs]
    return {"messages":
            [{"graph_index": g, "events": [event("Net (finalize)", 9, US, sub_events=below(2)),
                                           *below(1)]} for g in graphs] +
            [execute(g, run, speed * (1 + g % 9), operations[i])
             for run in range(runs) for i, g in enumerate(graphs)] +
            [{"graph_index": graphs[0], "events": [event("of no run", 1, US)]}]}


def write(path, content):
    """Writes a log as JSON, which convert() replaces by a binary log."""
    os.makedirs(os.path.dirname(path), exist_ok=True)
    with open(path, "w", encoding="utf-8", errors="surrogateescape") as file:
        json.dump(content, file, ensure_ascii=False)


def convert(flatc, schema, folder):
    """Converts all JSON files in the folder and its subfolders."""
    for path in {os.path.dirname(p) for p in glob.glob(f"{folder}/**/*.json", recursive=True)}:
        files = glob.glob(f"{glob.escape(path)}/*.json")
        subprocess.run([flatc, "-b", "--allow-non-utf8", "-o", path, schema, *files], check=True)
        for file in files:
            os.unlink(file)
