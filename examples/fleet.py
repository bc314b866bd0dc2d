#!/usr/bin/python3
"""Computes one table of means and deviations over the logs of many devices.

Dask spreads the logs over the cores of this machine or over the workers of a
cluster. Each worker runs lumo-profile-export on the logs that it is given and
returns one mean per log and series. docs/fleet.md describes how to use it.
"""

import argparse
import array
import collections
import csv
import io
import itertools
import math
import os
import re
import socket
import subprocess
import sys
import tempfile

EXPORT = "lumo-profile-export"
EXPORT_COLUMNS = (
    "message,kind,graph_index,run,backend,timestamp,event,parent,level,"
    "position,name,type,value,unit,node_id").split(",")
HEADER = ("group,graph,level,name,occurrence,unit,logs,mean,stdev,"
          "least,least_log,greatest,greatest_log\n")

# One byte of a name or path is one character here, so that any bytes come out
# as they came in and texts sort by their bytes.
BYTES = "latin-1"


# Functions that run on the workers. Dask sends them there with their constants;
# a worker does not need this file.

def collect_series(rows):
    """Returns the series of the execute runs in an export's rows.

    They are a dict from (graph, "event" or "operation", position, name) to
    (unit of the first value, list of values). The position of an operation is
    its ordinal among the node events under its top-level event. Raises
    ValueError for a log without an execute run or with an invalid graph index.
    A message without events has no row, so its graph index is unknown here.
    """
    if next(rows, None) != EXPORT_COLUMNS:
        raise ValueError(f"{EXPORT} did not print the expected columns")
    series = {}
    graph_indices = set()
    graph_indices_of_runs = set()
    has_execute = False
    ordinal = 0
    for (_, kind, graph_index, _, _, _, _, _, depth, position, name, event_type,
         value, unit, _) in rows:
        graph_indices.add(graph_index)
        if kind:
            graph_indices_of_runs.add(graph_index)
        if depth == "0":
            ordinal = 0
            has_execute = has_execute or "(execute)" in name
            level, place = "event", int(position)
        elif depth == "1" and event_type == "ORX_PROFILE_EVENTTYPE_NODE":
            level, place = "operation", ordinal
            ordinal += 1
        else:
            continue
        if kind == "execute":
            key = graph_of(graph_index), level, place, name
            series.setdefault(key, (unit, []))[1].append(int(value))
    if not has_execute:
        raise ValueError("the log has no execute run")
    for graph_index in sorted(graph_indices_of_runs, key=int):
        if graph_of(graph_index) >= len(graph_indices):
            raise ValueError(f"graph_index {graph_index} is not below the number"
                             f" of graphs, {len(graph_indices)}")
    return series


def graph_of(graph_index):
    """Returns the number of the graph: the low 32 bits of its index."""
    return int(graph_index) & 0xFFFFFFFF


def means_of(series, num_warmup):
    """Yields ((graph, level, name, occurrence, unit), mean) for each series.

    The mean is that of the values after the first `num_warmup`, NaN if there
    are none. A single value is its own mean. Sums are exact.
    """
    seen = collections.Counter()
    for key in sorted(series):
        graph, level, _, name = key
        unit, values = series[key]
        occurrence = seen[graph, level, name, unit]
        seen[graph, level, name, unit] += 1
        measured = values if len(values) == 1 else values[num_warmup:]
        mean = sum(measured) / len(measured) if measured else math.nan
        yield (graph, level, name, occurrence, unit), mean


def read_log(path):
    """Returns the series of the log, as collect_series() does.

    Raises ValueError with the reason if the log cannot be read.
    """
    # The rows are read while the program writes them; they are never all in
    # memory. A name may be longer than the csv module expects.
    csv.field_size_limit(sys.maxsize)
    series, problem = None, None
    with subprocess.Popen([EXPORT, "--input_profile_data=" + path],
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE) as export:
        rows = io.TextIOWrapper(export.stdout, BYTES, newline="")
        try:
            series = collect_series(csv.reader(rows))
        except (ValueError, csv.Error) as error:
            problem = str(error)
            collections.deque(rows, maxlen=0)  # lets the program end by itself
        message = export.stderr.read().decode(errors="backslashreplace").strip()
    if export.returncode < 0:
        problem = f"{EXPORT} was ended by signal {-export.returncode}"
    elif export.returncode > 0:
        problem = message.removeprefix(f"{EXPORT}: ").removeprefix(f"{path}: ")
    if problem is not None:
        raise ValueError(problem)
    return series


def reduce_logs(logs, num_warmup):
    """Reduces `logs`, a list of (number, group, path).

    Returns a dict from (group, graph, level, name, occurrence, unit) to the
    numbers of the logs that have this series and their means, and a dict from
    the number of each log that cannot be read to the reason and the host.
    """
    table, problems = {}, {}
    for number, group, path in logs:
        try:
            series = read_log(path)
        except FileNotFoundError as error:
            # Not the log's fault: the export reports a missing log itself.
            raise OSError(f"{EXPORT} is not installed on"
                          f" {socket.gethostname()}") from error
        except ValueError as error:
            problems[number] = str(error), socket.gethostname()
            continue
        for key, mean in means_of(series, num_warmup):
            numbers, means = table.setdefault(
                (group, *key), (array.array("Q"), array.array("d")))
            numbers.append(number)
            means.append(mean)
    return table, problems


# Functions that run in this process.

def find_logs(arguments, report):
    """Returns [(path as found, path for the workers)], sorted by their bytes.

    A folder stands for the files below it that are named *.bin. A log that is
    found twice counts once. Calls `report` for a folder that cannot be read.
    """
    logs = {}
    passed_over = 0

    def add(folder, real_folder, name):
        logs.setdefault(os.path.join(real_folder, name), os.path.join(folder, name))

    for argument in arguments:
        if not os.path.isdir(argument):
            folder, name = os.path.split(argument)
            add(folder, os.path.realpath(folder), name)
            continue
        for folder, _, names in os.walk(
                argument, onerror=lambda e: report(e.filename, e.strerror)):
            real_folder = os.path.realpath(folder)
            for name in names:
                if name.endswith(".bin"):
                    add(folder, real_folder, name)
                else:
                    passed_over += 1
    if passed_over:
        say(f"ignored {passed_over} files in folders that are not named *.bin")
    return sorted(((found, real) for real, found in logs.items()),
                  key=lambda log: os.fsencode(log[0]))


def group_of(pattern, path):
    """Returns what the pattern's first group matches in the path, or None."""
    match = pattern.search(path)
    return match and match.group(1)


def results(client, batches, num_warmup):
    """Yields (batch, what reduce_logs() returns for it) in any order.

    Instead of the result there is None if the workers that were given the
    batch died one after another.
    """
    from distributed import KilledWorker, as_completed

    # A few batches ahead of the workers, so that neither the scheduler nor this
    # process holds all of them.
    ahead = 4 * sum(client.nthreads().values()) + 32
    batches = iter(batches)
    batch_of = {}

    def submit(batch):
        # pure=False: a log may have changed since the scheduler last saw its name.
        future = client.submit(reduce_logs, batch, num_warmup, pure=False, retries=2)
        batch_of[future.key] = batch
        return future

    running = as_completed(map(submit, itertools.islice(batches, ahead)))
    for future in running:
        try:
            result = future.result()
        except KilledWorker:
            result = None
        yield batch_of.pop(future.key), result
        for batch in itertools.islice(batches, 1):
            running.add(submit(batch))


def compute(client, logs, num_warmup, show_progress):
    """Returns the table and the problems of all logs, as reduce_logs() does."""
    table, problems = {}, {}
    suspects = []

    def merge(batch, part, part_problems):
        for key, (numbers, means) in part.items():
            row = table.setdefault(key, (array.array("Q"), array.array("d")))
            row[0].extend(numbers)
            row[1].extend(means)
        problems.update(part_problems)
        show_progress(len(batch))

    # Batches small enough that the workers finish together, and large enough
    # that the scheduler has little to do.
    threads = sum(client.nthreads().values())
    size = max(1, min(50, len(logs) // (8 * max(1, threads))))
    batches = (logs[i:i + size] for i in range(0, len(logs), size))
    for batch, result in results(client, batches, num_warmup):
        if result is None:
            suspects += batch
        else:
            merge(batch, *result)
    # Again, one log at a time, so that none is blamed for another.
    for log in suspects:
        for batch, result in results(client, [[log]], num_warmup):
            died = {}, {log[0]: ("the workers that read it died", "")}
            merge(batch, *(result or died))
    return table, problems


def figure(value):
    """Returns the number with the fewest digits that read back; empty for None."""
    return "" if value is None else repr(value).removesuffix(".0")


def field(text):
    """Returns the text as a CSV field, quoted as lumo-profile-export does."""
    return '"' + text.replace('"', '""') + '"' if re.search('[",\r\n]', text) else text


def table_rows(table, paths):
    """Yields the rows of the result, sorted by group and series.

    Figures do not depend on the order in which the means arrived: fsum() rounds
    once, and of equal means the one of the first log is taken.
    """
    for key in sorted(table):
        group, graph, level, name, occurrence, unit = key
        numbers, means = table[key]
        measured = [(m, number) for m, number in zip(means, numbers) if m == m]
        mean = stdev = least = greatest = None
        least_log = greatest_log = ""
        if measured:
            count = len(measured)
            mean = math.fsum(m for m, _ in measured) / count
            if count > 1:
                stdev = math.sqrt(
                    math.fsum((m - mean) ** 2 for m, _ in measured) / (count - 1))
            least, first = min(measured)
            least_log = as_text(paths[first])
            greatest, first = max(measured, key=lambda pair: (pair[0], -pair[1]))
            greatest_log = as_text(paths[first])
        yield ",".join([
            field(group), str(graph), level, field(name), str(occurrence), unit,
            str(len(means)), figure(mean), figure(stdev), figure(least),
            field(least_log), figure(greatest), field(greatest_log)]) + "\n"


def as_text(path):
    """Returns a path or a part of it with one character per byte."""
    return os.fsencode(path).decode(BYTES)


def write_whole(path, content):
    """Writes the bytes to the file, whole or not at all.

    A regular file is replaced and keeps its mode; a device or a pipe is written
    to. Raises OSError.
    """
    path = os.path.realpath(path)
    if os.path.exists(path) and not os.path.isfile(path):
        with open(path, "wb") as stream:
            stream.write(content)
        return
    if os.path.exists(path):
        mode = os.stat(path).st_mode & 0o7777
    else:
        mode = 0o666 & ~os.umask(0o077)
        os.umask(0o666 & ~mode)
    handle, temporary = tempfile.mkstemp(prefix=".fleet.", dir=os.path.dirname(path))
    try:
        with open(handle, "wb") as stream:
            stream.write(content)
            os.fchmod(handle, mode)
        os.replace(temporary, path)
    except BaseException:
        os.unlink(temporary)
        raise


def say(text):
    """Prints a line on standard error, with control characters escaped."""
    text = re.sub(r"[\x00-\x1f\x7f\\]", lambda c: f"\\x{ord(c[0]):02x}", text)
    print(f"fleet.py: {text}", file=sys.stderr)


def progress(total):
    """Returns a function that adds to the bar on the terminal, if there is one."""
    if not sys.stderr.isatty():
        return lambda count: None
    done = 0

    def show(count):
        nonlocal done
        done += count
        bar = "#" * (40 * done // total)
        end = "\n" if done == total else ""
        print(f"\r[{bar:40}] {done} of {total} logs", end=end, file=sys.stderr,
              flush=True)
    return show


def pattern(text):
    """Returns the regular expression for --group, compiled."""
    try:
        compiled = re.compile(text)
    except re.error as error:
        raise argparse.ArgumentTypeError(f"{text}: {error}") from error
    if compiled.groups < 1:
        raise argparse.ArgumentTypeError(f"{text} has no group in parentheses")
    return compiled


def run_count(text):
    """Returns the number for --num_warmup."""
    if not re.fullmatch("[0-9]+", text):
        raise argparse.ArgumentTypeError(f"{text} is not a number of runs")
    return int(text)


def parse_arguments():
    """Returns the options; ends with status 2 for a wrong command line."""
    parser = argparse.ArgumentParser(description=(
        "Computes one table of means and deviations over many profiling logs."))
    parser.add_argument("--scheduler", metavar="ADDRESS",
                        help="Dask scheduler, such as tcp://10.0.0.1:8786"
                        " (default: use the cores of this machine)")
    parser.add_argument("--num_warmup", metavar="W", type=run_count, default=1,
                        help="first runs of each series to exclude (default: 1)")
    parser.add_argument("--group", metavar="REGEX", type=pattern,
                        help="group the logs by what the first group in"
                        " parentheses matches in their paths")
    parser.add_argument("--output", metavar="FILE",
                        help="write the table to FILE, not to standard output")
    parser.add_argument("logs", metavar="FOLDER_OR_LOG", nargs="+",
                        help="a log, or a folder with logs named *.bin")
    return parser.parse_args()


def connect(scheduler):
    """Returns a client of the scheduler or, without one, of local processes."""
    try:
        from distributed import Client
    except ImportError as error:
        raise OSError("needs the package python3-distributed and the Python that"
                      " it belongs to: run /usr/bin/python3 fleet.py") from error
    if not scheduler:
        from dask.system import CPU_COUNT
        return Client(n_workers=CPU_COUNT, threads_per_worker=1,
                      dashboard_address=None)
    client = Client(scheduler)
    client.wait_for_workers(1, timeout=60)
    return client


def main():
    """Returns the exit status."""
    options = parse_arguments()
    failures = 0

    def report(path, reason):
        nonlocal failures
        failures += 1
        say(f"{path}: {reason}")

    found = find_logs(options.logs, report)
    if not found:
        say("no logs found")
        return 1
    paths = [path for path, _ in found]
    groups = [group_of(options.group, path) if options.group else "" for path in paths]
    if None in groups:
        say(f"--group does not match {groups.count(None)} of {len(paths)} logs;"
            " their group is empty")
    logs = [(number, as_text(group or ""), real)
            for number, (group, (_, real)) in enumerate(zip(groups, found))]
    if options.output and os.path.realpath(options.output) in {r for _, _, r in logs}:
        say(f"{options.output}: the table would replace a log")
        return 1

    with connect(options.scheduler) as client:
        table, problems = compute(client, logs, options.num_warmup,
                                  progress(len(logs)))
    for number, (reason, host) in sorted(problems.items()):
        report(paths[number], f"{reason} (on {host})" if host and options.scheduler
               else reason)
    content = (HEADER + "".join(table_rows(table, paths))).encode(BYTES)
    if options.output:
        write_whole(options.output, content)
    else:
        sys.stdout.buffer.write(content)
        sys.stdout.flush()
    if failures:
        say(f"{failures} of {len(paths)} logs could not be read")
    return 1 if failures else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except OSError as error:
        say(str(error))
        sys.exit(1)
