"""Checks that each data tool reads a table of extreme values as docs/analysis.md describes.

Runs in a copy of the installed documentation folder in which the commands of the guide have
run: they save the functions that read a table.
"""

import csv
import json
import subprocess
import sys

import pandas
from read_statistics import read_statistics

# Names and numbers that a tool might misread: the statistics of one run.
NAMES = ["(execute)", "", "NA", "nan", "NULL", "TRUE", "007", "1e5", "-inf", "2026-01-01",
         " blank ", "tab\there", "it's", 'a "quoted", name', "two\nlines", "cr\rlf\r\n.",
         "\\n", "#", "Größe", "bytes \udcff\udc80", "zero\0byte"]
NUMBERS = [2**64 - 1, 2**63, 2**63 - 1, 2**53 + 1, 0]

# What each tool reads with the code of the guide: the name as hexadecimal bytes, the
# deviation, which is empty, and the maximum.
SQL = "select hex(name), iif(stdev = '', 'empty', stdev), max from s"
R = r"""source("read_statistics.R")
s <- read_statistics("extreme.csv")
hex <- sapply(s$name, function(x) toupper(paste(charToRaw(x), collapse = "")))
cat(paste(hex, ifelse(is.na(s$stdev), "empty", s$stdev), sprintf("%.0f", s$max), sep = "|"),
    sep = "\n")"""


def run(*command):
    return subprocess.run(command, capture_output=True, check=True, text=True)


def row(name, deviation, maximum):
    return f"{name.hex().upper()}|{deviation}|{maximum}"


def to_bytes(name):
    return name.encode(errors="surrogateescape")


def truncated(name):
    return name.split(b"\0")[0]


def one_line_feed(name):
    return name.replace(b"\r\n", b"\n").replace(b"\r", b"\n")


def read_with_pandas():
    for _, read in read_statistics("extreme.csv").iterrows():
        yield row(to_bytes(read["name"]), "empty" if pandas.isna(read["stdev"]) else read["stdev"],
                  read["max"])


EVENTS = [{"name": name, "value": NUMBERS[i % 5]} for i, name in enumerate(NAMES)]
with open("extreme.json", "w", encoding="utf-8", errors="surrogateescape") as file:
    json.dump({"messages": [{"events": EVENTS}]}, file, ensure_ascii=False)
run("flatc", "-b", "--allow-non-utf8", "schema/profiling_log.fbs", "extreme.json")
run("lumo-profile-export", "--statistics", "--output", "extreme.csv", "extreme.bin")
with open("extreme.csv", encoding="utf-8", errors="surrogateescape", newline="") as file:
    TABLE = [(to_bytes(fields["name"]), fields["max"]) for fields in csv.DictReader(file)]

with_sqlite = run("sqlite3", "-nullvalue", "null", ":memory:", ".import --csv extreme.csv s", SQL)
with_r = run("Rscript", "-e", R)
if "embedded nul" not in with_r.stderr:
    sys.exit("R does not warn about a zero byte")
# The rows that each tool reads, and how the guide says that it changes a name and a maximum.
for tool, rows, change_name, change_maximum in (
        ("sqlite3", with_sqlite.stdout.split("\n")[:-1], truncated, int),
        ("pandas", list(read_with_pandas()), truncated, int),
        ("R", with_r.stdout.split("\n")[:-1], lambda name: truncated(one_line_feed(name)),
         lambda maximum: int(float(maximum)))):
    wanted = [row(change_name(name), "empty", change_maximum(maximum)) for name, maximum in TABLE]
    if rows != wanted:
        sys.exit(f"{tool} reads\n{rows}\ninstead of\n{wanted}")
    print(f"{tool} reads {len(rows)} rows as the guide describes.")
