#!/usr/bin/python3
"""Computes one table of means and deviations over the logs of many devices.

Dask distributes the logs over the cores of this machine or over the workers of
a cluster. Each worker runs lumo-profile-export on its logs and returns one mean
per log and series. docs/fleet.md describes how to use it.
"""

import argparse
import array
import collections
import concurrent.futures
import csv
import io
import itertools
import logging
import math
import os
import re
import shutil
import socket
import subprocess
import sys

EXPORT = "lumo-profile-export"
EXPORT_COLUMNS = (
    "message,kind,graph_index,run,backend,timestamp,event,parent,level,"
    "position,name,type,value,unit,node_id").split(",")
HEADER = ("group,graph,level,name,occurrence,unit,logs,mean,stdev,"
          "least,least_log,greatest,greatest_log\n")

# Each byte of a name or a path is one character, so that any bytes are written
# as they were read, and texts are sorted by their bytes.
BYTES = "latin-1"


# Functions for the workers. Dask sends them there; workers do not need this file.

def graph_of(graph_index):
    """Returns the number of the graph: the low 32 bits of its index."""
    return int(graph_index) & 0xFFFFFFFF


def collect_series(rows):
    """Returns the series of the execute runs in an export's rows.

    They are a dict from (graph, "event" or "operation", position, name) to
    (unit of the first value, list of values). The position of an operation is
    its ordinal among the node events under its top-level event. Raises
    ValueError for a log without an execute run or with an invalid graph index.
    Messages without events have no rows and are ignored.
    """
    if next(rows, None) != EXPORT_COLUMNS:
        raise ValueError(f"{EXPORT} did not print the expected columns")
    series = {}
    all_indices, run_indices = set(), set()
    has_execute = False
    ordinal = 0
    for (_, kind, graph_index, _, _, _, _, _, depth, position, name, event_type,
         value, unit, _) in rows:
        all_indices.add(graph_index)
        if kind:
            run_indices.add(graph_index)
        if depth == "0":
            has_execute = has_execute or "(execute)" in name
            level, place = "event", int(position)
            ordinal = 0
        elif depth == "1" and event_type == "ORX_PROFILE_EVENTTYPE_NODE":
            level, place = "operation", ordinal
            ordinal += 1
        else:
            continue
        if kind == "execute":
            key = graph_of(graph_index), level, place, name
            series.setdefault(key, (unit, []))[1].append(int(value))
    if not has_execute:
        raise ValueError("no execute run in the log")
    for graph_index in sorted(run_indices, key=int):
        if graph_of(graph_index) >= len(all_indices):
            raise ValueError(f"graph_index {graph_index} in a log with"
                             f" {len(all_indices)} graphs")
    return series


def read_log(path):
    """Returns the series of a log, as collect_series() does.

    Raises ValueError with the reason if the log cannot be read.
    """
    csv.field_size_limit(sys.maxsize)  # a name may have any length
    series, problem = None, None
    with subprocess.Popen([EXPORT, "--input_profile_data=" + path],
                          stdout=subprocess.PIPE, stderr=subprocess.PIPE) as export:
        # Read the rows while they are written, so that they are never all in memory.
        rows = io.TextIOWrapper(export.stdout, BYTES, newline="")
        try:
            series = collect_series(csv.reader(rows))
        except (ValueError, csv.Error) as error:
            problem = str(error)
            collections.deque(rows, maxlen=0)  # let the export write all rows
        message = export.stderr.read().decode(errors="backslashreplace").strip()
    if export.returncode < 0:
        problem = f"{EXPORT} was ended by signal {-export.returncode}"
    elif export.returncode > 0:
        problem = message.removeprefix(f"{EXPORT}: ").removeprefix(f"{path}: ")
    if problem is not None:
        raise ValueError(problem)
    return series


def means_of(series, num_warmup):
    """Yields ((graph, level, name, occurrence, unit), mean) of each series.

    The mean is that of the values after the first `num_warmup`, NaN if there
    are none; a single value is its own mean. Sums are exact.
    """
    seen = collections.Counter()
    for graph, level, place, name in sorted(series):
        unit, values = series[graph, level, place, name]
        occurrence = seen[graph, level, name, unit]
        seen[graph, level, name, unit] += 1
        measured = values if len(values) == 1 else values[num_warmup:]
        mean = sum(measured) / len(measured) if measured else math.nan
        yield (graph, level, name, occurrence, unit), mean


def reduce_logs(logs, num_warmup):
    """Reduces `logs`, a list of (number, group, path).

    Returns a dict from (group, graph, level, name, occurrence, unit) to the
    numbers of the logs that have this series and their means, and a dict from
    the number of each log that cannot be read to the reason.
    """
    table, problems = {}, {}
    for number, group, path in logs:
        try:
            series = read_log(path)
        except ValueError as error:
            problems[number] = f"{error} (on {socket.gethostname()})"
            continue
        except OSError as error:  # not caused by the log: the run fails
            raise OSError(f"{EXPORT} on {socket.gethostname()}:"
                          f" {error.strerror}") from error
        for key, mean in means_of(series, num_warmup):
            add(table, (group, *key), [number], [mean])
    return table, problems


def add(table, key, numbers, means):
    """Appends the numbers of logs and their means to a series of the table."""
    row = table.setdefault(key, (array.array("I"), array.array("d")))
    row[0].extend(numbers)
    row[1].extend(means)


# Functions for the main process.

def find_logs(arguments):
    """Returns the logs and the folders that cannot be read.

    The logs are [(path as found, path for the workers)], sorted by their bytes;
    the folders are [(path, reason)]. A folder stands for the files below it that are
    named *.bin. A log that is found twice, even through a link, counts once.
    """
    found, problems, ignored = [], [], 0
    for argument in arguments:
        if not os.path.isdir(argument):
            found.append((argument, os.path.realpath(argument)))
            continue
        for folder, _, names in os.walk(
                argument, onerror=lambda e: problems.append((e.filename, e.strerror))):
            real_folder = os.path.realpath(folder)
            for name in names:
                path, real = os.path.join(folder, name), os.path.join(real_folder, name)
                if not name.endswith(".bin"):
                    ignored += 1
                elif os.path.islink(real):
                    found.append((path, os.path.realpath(real)))
                else:
                    found.append((path, real))
    if ignored:
        say(f"files ignored because they are not named *.bin: {ignored}")
    logs = {}
    for path, real in sorted(found, key=lambda log: os.fsencode(log[0])):
        logs.setdefault(real, path)
    return [(path, real) for real, path in logs.items()], problems


def results(client, batches, num_warmup):
    """Yields (batch, what reduce_logs() returns for it) in any order.

    The result is None if the workers that got the batch died repeatedly.
    """
    from distributed import KilledWorker, as_completed
    batch_of = {}

    def submit(batch):
        # Not pure: the log may have changed since an earlier run.
        future = client.submit(reduce_logs, batch, num_warmup, pure=False, retries=2)
        batch_of[future.key] = batch
        return future

    # Submit only as many batches as keep the workers busy.
    batches = iter(batches)
    ahead = 32 + 4 * sum(client.nthreads().values())
    running = as_completed(map(submit, itertools.islice(batches, ahead)))
    for future in running:
        try:
            result = future.result()
        except KilledWorker:
            result = None
        except concurrent.futures.CancelledError as error:
            raise OSError("lost the connection to the scheduler") from error
        yield batch_of.pop(future.key), result
        for batch in itertools.islice(batches, 1):
            running.add(submit(batch))


def compute(client, logs, num_warmup):
    """Returns the table and the problems of all logs, as reduce_logs() does."""
    table, problems, suspects = {}, {}, []
    done = 0

    def merge(batch, part, part_problems):
        nonlocal done
        for key, (numbers, means) in part.items():
            add(table, key, numbers, means)
        problems.update(part_problems)
        done += len(batch)
        show_progress(done, len(logs))

    # Batches small enough that the workers finish together, and large enough
    # that the scheduler has little to do.
    threads = max(1, sum(client.nthreads().values()))
    size = max(1, min(200, len(logs) // (8 * threads)))
    batches = (logs[i:i + size] for i in range(0, len(logs), size))
    for batch, result in results(client, batches, num_warmup):
        if result is None:
            suspects += batch
        else:
            merge(batch, *result)
    # Read these logs again, one at a time, to find those that kill workers.
    for log in suspects:
        for batch, result in results(client, [[log]], num_warmup):
            died = {}, {log[0]: "each worker that read it died"}
            merge(batch, *(result or died))
    return table, problems


def show_progress(done, total):
    """Draws a bar on standard error if that is a terminal."""
    if sys.stderr.isatty():
        end = "\n" if done == total else ""
        print(f"\r[{'#' * (40 * done // total):40}] {done} of {total} logs", end=end,
              file=sys.stderr, flush=True)


def table_rows(table, paths):
    """Yields the rows of the result, sorted by group and series.

    The figures do not depend on the order in which the means arrived: fsum()
    rounds once, and of several logs with an equal mean, the first is named.
    """
    for key in sorted(table):
        group, graph, level, name, occurrence, unit = key
        numbers, means = table[key]
        measured = [(mean, -number) for mean, number in zip(means, numbers)
                    if not math.isnan(mean)]
        row = [group, graph, level, name, occurrence, unit, len(means)]
        if measured:
            mean = math.fsum(m for m, _ in measured) / len(measured)
            squares = math.fsum((m - mean) ** 2 for m, _ in measured)
            least, greatest = min(measured, key=lambda m: (m[0], -m[1])), max(measured)
            row += [mean,
                    math.sqrt(squares / (len(measured) - 1)) if measured[1:] else "",
                    least[0], as_text(paths[-least[1]]),
                    greatest[0], as_text(paths[-greatest[1]])]
        else:
            row += [""] * 6
        yield ",".join(map(field, row)) + "\n"


def field(value):
    """Returns a field of the CSV, quoted as lumo-profile-export does.

    Numbers have the fewest digits that read back to the same number.
    """
    text = repr(value).removesuffix(".0") if isinstance(value, float) else str(value)
    return '"' + text.replace('"', '""') + '"' if re.search('[",\r\n]', text) else text


def as_text(path):
    """Returns a path, or a part of one, with one character per byte."""
    return os.fsencode(path).decode(BYTES)


def write_whole(path, content):
    """Writes the bytes to the file atomically. Raises OSError.

    An existing file keeps its mode. A device or a pipe is written directly.
    """
    if os.path.exists(path) and not os.path.isfile(path):
        with open(path, "wb") as stream:
            stream.write(content)
        return
    path = os.path.realpath(path)
    temporary = f"{path}.{os.getpid()}.part"
    stream = open(temporary, "xb")
    try:
        with stream:
            stream.write(content)
        if os.path.exists(path):
            shutil.copymode(path, temporary)
        os.replace(temporary, path)
    except BaseException:
        os.unlink(temporary)
        raise


def say(text):
    """Prints a line on standard error, with control characters escaped."""
    text = re.sub(r"[\x00-\x1f\x7f\\]", lambda c: f"\\x{ord(c[0]):02x}", text)
    print(f"fleet.py: {text}", file=sys.stderr)


def parse_arguments():
    """Returns the options; exits with status 2 if the command line is wrong."""
    parser = argparse.ArgumentParser(description=(
        "Computes one table of means and deviations over many profiling logs."))
    parser.add_argument("--scheduler", metavar="ADDRESS",
                        help="Dask scheduler, such as tcp://10.0.0.1:8786"
                        " (default: use the cores of this machine)")
    parser.add_argument("--num_warmup", metavar="W", type=int, default=1,
                        help="first runs of each series to exclude (default: 1)")
    parser.add_argument("--group", metavar="REGEX", default="()",
                        help="group the logs by the text that the first"
                        " parentheses match in their paths")
    parser.add_argument("--output", metavar="FILE",
                        help="write the table to FILE, not to standard output")
    parser.add_argument("logs", metavar="FOLDER_OR_LOG", nargs="+",
                        help="a log, or a folder with logs named *.bin")
    options = parser.parse_args()
    if options.num_warmup < 0:
        parser.error("--num_warmup must not be negative")
    try:
        options.group = re.compile(options.group)
    except re.error as error:
        parser.error(f"--group: {error}")
    if options.group.groups == 0:
        parser.error("--group has no parentheses")
    return options


def connect(scheduler):
    """Returns a client of the scheduler or, if it is None, of local processes."""
    # Suppress the log messages of the worker processes; main() prints the errors.
    os.environ.setdefault("DASK_LOGGING__DISTRIBUTED", "critical")
    try:
        from dask.system import CPU_COUNT
        from distributed import Client
    except ImportError as error:
        raise OSError(f"{error}; install python3-distributed, and run"
                      " /usr/bin/python3 fleet.py") from error
    logging.disable()
    if scheduler is None:
        return Client(n_workers=CPU_COUNT, threads_per_worker=1,
                      dashboard_address="127.0.0.1:0", silence_logs=logging.CRITICAL)
    try:
        client = Client(scheduler)
    except ValueError as error:
        raise OSError(f"--scheduler {scheduler}: {error}") from error
    client.wait_for_workers(1, timeout=60)
    return client


def main():
    """Returns the exit status."""
    options = parse_arguments()
    found, failures = find_logs(options.logs)
    for path, reason in failures:
        say(f"{path}: {reason}")
    if not found:
        say("no logs found")
        return 1
    if options.output:
        target = os.path.realpath(options.output)
        if target in {real for _, real in found}:
            say(f"{options.output}: the table would replace a log")
            return 1
        if not os.path.isdir(os.path.dirname(target)):
            say(f"{options.output}: no such folder")
            return 1

    logs, paths, without_group = [], [], 0
    for number, (path, real_path) in enumerate(found):
        match = options.group.search(path)
        group = match.group(1) if match else None
        without_group += group is None
        logs.append((number, as_text(group or ""), real_path))
        paths.append(path)
    if without_group:
        say(f"logs that do not match --group, in a group with an empty name:"
            f" {without_group}")

    with connect(options.scheduler) as client:
        table, problems = compute(client, logs, options.num_warmup)
    for number, reason in sorted(problems.items()):
        say(f"{paths[number]}: {reason}")
    if len(problems) == len(logs):
        say("no log could be read")
        return 1
    unmeasured = sum(map(math.isnan, itertools.chain.from_iterable(
        means for _, means in table.values())))
    if unmeasured:
        say("means missing because no values are left after the warm-up:"
            f" {unmeasured}")

    content = (HEADER + "".join(table_rows(table, paths))).encode(BYTES)
    try:
        if options.output:
            write_whole(options.output, content)
        else:
            sys.stdout.buffer.write(content)
            sys.stdout.flush()
    except OSError as error:
        say(f"{options.output or 'standard output'}: {error.strerror}")
        return 1
    if problems:
        say(f"logs that could not be read: {len(problems)} of {len(found)}")
    return 1 if failures or problems else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except OSError as error:
        say(str(error))
        sys.exit(1)
    except KeyboardInterrupt:
        sys.exit(130)
