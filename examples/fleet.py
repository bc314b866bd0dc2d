#!/usr/bin/python3
"""Computes one table of means over the logs of many devices, see docs/fleet.md."""

import argparse, array, contextlib, csv, io, itertools, logging, math, operator, os, re, signal
import multiprocessing.resource_tracker, socket, stat, subprocess, sys, time, warnings

EXPORT = "lumo-profile-export"
EXPORT_COLUMNS = "log kind graph level parent name occurrence unit mean".split()
HEADER = "group,graph,level,parent,name,occurrence,unit,logs,mean,stdev,min,min_log,max,max_log\n"
SIGNALS = signal.SIGINT, signal.SIGTERM
CONTROLS = "[\0-\x1f\x7f-\x9f\u061c\u200e\u200f\u202a-\u202e\u2066-\u2069\udc80-\udc9f]"
BYTES = "latin-1"  # one character per byte: any bytes are kept, and texts sort by bytes


# Functions for the workers. Dask sends them there; workers do not need this file.

def parse(batch, table, lines):
    """Returns the result of read_batch(). Fails if logs have neither rows nor messages."""
    log, means, unread = None, {}, {as_text(entry[2]): entry for entry in batch}
    if table or not lines:
        rows = csv.reader(io.StringIO(table.decode(BYTES), newline=""))
        columns = operator.itemgetter(*map(next(rows).index, EXPORT_COLUMNS))
        for path, kind, graph, level, parent, name, occurrence, unit, mean in map(columns, rows):
            if path != log:
                log, (number, group, _) = path, unread.pop(path)
            if kind == "execute":
                key = (group, int(graph), level, parent if level == "part" else "", name,
                       int(occurrence), unit)
                means.setdefault(key, array.array("d")).extend((number, float(mean or "nan")))
    # The messages are in the order of the logs. A log without events has neither.
    if lines and len(lines) != len(unread) or not table.endswith(b"\n" * bool(table)):
        raise ValueError
    return means, {number: line.removeprefix(EXPORT + ": ")
                   for line, (number, _, _) in zip(lines, unread.values())}


def read_batch(batch, options, timeout):
    """Reads a batch of logs, a list of (number, group, path).

    Returns a dict from (group, graph, level, parent, name, occurrence, unit) to an array with the
    number and mean (or NaN) of each log, and a dict from numbers of unreadable logs to messages.
    """
    csv.field_size_limit(sys.maxsize)  # a name may have any length
    result, on_host = ({}, {}), f" (on {socket.gethostname()})"
    written, is_silent, table, messages = (None, None), False, b"", b""
    with subprocess.Popen(  # with setpriv, it ends if this process is killed
            ["setpriv", "--pdeathsig", "KILL", EXPORT, "--statistics", *options, "--",
             *(path for _, _, path in batch)], stdin=subprocess.DEVNULL,
            stdout=subprocess.PIPE, stderr=subprocess.PIPE) as export:
        while export.returncode is None:
            try:
                table, messages = export.communicate(timeout=timeout)
            except subprocess.TimeoutExpired as running:  # it writes after each log
                is_silent = written == (written := (running.output, running.stderr))
                if is_silent:
                    export.kill()
    status, lines = export.returncode, list(map(os.fsdecode, messages.splitlines()))
    if status == 127:  # there is no such program, so the run fails
        raise OSError(lines[-1] + on_host)
    if is_silent:
        reason = f"took longer than {timeout:g} seconds"
    elif status not in (0, 1) or status > len(lines):
        reason = f"exited with status {status}" if status > 0 else f"was ended by signal {-status}"
    else:
        try:
            means, problems = parse(batch, table, lines if status else [])
            return means, {number: message + on_host for number, message in problems.items()}
        except (ValueError, LookupError, StopIteration, csv.Error):
            reason = "did not print the expected table"
    if len(batch) == 1:
        number, _, path = batch[0]
        result[1][number] = ": ".join([escape(path), f"{EXPORT} {reason}", *lines[-1:]]) + on_host
    else:  # read these logs again, one at a time, to find the cause
        for log in batch:
            merge(result, read_batch([log], options, timeout))
    return result


def merge(result, other):  # adds the result for other logs
    for key, pairs in other[0].items():
        result[0].setdefault(key, array.array("d")).extend(pairs)
    result[1].update(other[1])


def escape(text, characters=CONTROLS + r"|\\"):  # as the programs do in messages
    return re.sub(characters, lambda c: {"\n": r"\n", "\t": r"\t", "\\": r"\\"}.get(c[0]) or (
        f"\\u{ord(c[0]):04x}" if "\x7f" < c[0] < "\ud800" else f"\\x{ord(c[0]) % 256:02x}"), text)


def find_logs(arguments):
    """Returns {(inode, device): path} of the logs, and [(path, reason)] of bad folders."""
    found, bad = {}, []
    for argument in arguments:
        paths, before = [argument], len(bad)
        if os.path.isdir(argument):  # it stands for the same files as for the programs
            walk = os.walk(argument, onerror=lambda error: bad.append(
                (error.filename, f"cannot be read: {error.strerror}")))
            paths = [os.path.join(folder, name) for folder, _, names in walk for name in names
                     if name.endswith(".bin") and name[0] != "."]
            if not paths and len(bad) == before:
                bad.append((argument, "the folder has no logs (files named *.bin)"))
        for path in paths:
            file = path  # if there is no file, the export prints the reason
            with contextlib.suppress(OSError):
                file = os.stat(path)[1:3]
            found[file] = min(path, found.get(file, path), key=os.fsencode)
    return found, bad


def compute(client, batches, options, result):
    """Adds the results of read_batch() for all batches to `result`."""
    from distributed import KilledWorker, as_completed
    futures = client.map(  # not pure: a log may have changed since the last run
        read_batch, batches, timeout=options.timeout, batch_size=100, pure=False,
        options=[f"--num_warmup={options.num_warmup}"] + ["--parts"] * options.parts)
    batch_of = {future.key: batch for future, batch in zip(futures, batches)}
    running = as_completed(futures, with_results=True, raise_errors=False)
    del futures  # so that results are released when they have been read
    pauses, suspects, count = itertools.count(1), [], sum(map(len, batches))
    while batch_of:
        if not running.has_ready():
            time.sleep(0.02)
            if next(pauses) % 3000 == 0:  # about a minute
                client.wait_for_workers(1, timeout=60)  # fails if none is left
            continue
        future, outcome = next(running)
        batch = batch_of.pop(future.key)
        if future.status == "finished":
            merge(result, outcome)
        elif future.status == "cancelled":
            raise OSError("lost the connection to the scheduler")
        elif future.status != "error":  # a worker died with it; it is computed again
            batch_of[future.key] = batch
            running.add(future)
        elif not isinstance(future.exception(), KilledWorker):
            raise future.exception()
        elif len(batches) == len(batch) == 1:
            result[1][batch[0][0]] = f"{escape(batch[0][2])}: each worker that read it died"
        else:
            suspects += batch
        if sys.stderr.isatty():
            done = count - sum(map(len, batch_of.values()))
            bar = f"\r[{'#' * (40 * done // count):40}] {done} of {count} logs"
            print(bar, end="\n" * (done == count), file=sys.stderr, flush=True)
    for log in suspects:  # read one at a time, to find those that kill their workers
        compute(client, [[log]], options, result)


def table_rows(means, paths):
    """Yields the sorted rows of the table, which do not depend on the order of the means."""
    for key, pairs in sorted(means.items()):
        values = [mean for mean in pairs[1::2] if not math.isnan(mean)]
        row = [*key, len(pairs) // 2] + [""] * 6
        if values:
            row[8] = mean = math.fsum(values) / len(values)
            if len(values) > 1:
                row[9] = math.sqrt(math.fsum((v - mean) ** 2 for v in values) / (len(values) - 1))
            for column, extreme in (10, min(values)), (12, max(values)):
                first = min(n for n, value in zip(pairs[::2], pairs[1::2]) if value == extreme)
                row[column:column + 2] = extreme, as_text(paths[int(first)])
        yield ",".join(map(field, row)) + "\n"


def as_text(path):
    return os.fsencode(path).decode(BYTES)


def field(value):
    text = repr(value).removesuffix(".0") if isinstance(value, float) else str(value)
    return '"' + text.replace('"', '""') + '"' if re.search('[",\r\n]', text) else text


def write_whole(path, content):
    """Replaces a file in its folder; writes directly to a stream, a device or a pipe."""
    older = os.stat(path) if os.path.exists(path) else None
    if older and (not stat.S_ISREG(older.st_mode) or os.path.samestat(older, os.fstat(1))):
        with open(path, "wb") as stream:
            stream.write(content)
        return
    if older:
        open(path, "ab").close()  # fails if it is not writable
    path = os.path.realpath(path)
    new = os.path.join(os.path.dirname(path), f".lumo-{os.getpid()}")
    try:
        with open(new, "xb") as stream:
            stream.write(content)
            os.fsync(stream.fileno())
        if older:
            for owner, group in (-1, older.st_gid), (older.st_uid, -1):
                with contextlib.suppress(PermissionError):
                    os.chown(new, owner, group)
            os.chmod(new, stat.S_IMODE(older.st_mode))
        os.replace(new, path)
    finally:
        with contextlib.suppress(OSError):
            os.unlink(new)


def say(text):
    line = escape(f"fleet.py: {text}", CONTROLS) + "\n"
    with contextlib.suppress(OSError):
        os.write(sys.stderr.fileno(), os.fsencode(line))


def parse_arguments():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.error = lambda text, error=parser.error: error(escape(text, CONTROLS))
    add = parser.add_argument
    add("--scheduler", metavar="ADDRESS", help="Dask scheduler, such as tcp://10.0.0.1:8786")
    add("--num_warmup", metavar="W", type=int, default=1, help="values to exclude (default: 1)")
    add("--parts", action="store_true", help="add the events below events and operations")
    add("--group", metavar="REGEX", default="()", help="group by the match in the first ()")
    add("--timeout", metavar="S", type=float, default=600, help="seconds a log (default: 600)")
    add("--output", metavar="FILE", help="write the table to FILE, not to standard output")
    add("--verbose", action="store_true", help="show the warnings of Dask")
    add("logs", metavar="FOLDER_OR_LOG", nargs="+", help="a log, or a folder with logs")
    options = parser.parse_args()
    try:
        options.group = re.compile(options.group)
        if options.group.groups == 0:
            raise re.error("no parentheses")
    except re.error as error:
        parser.error(f"--group: {error}")
    if not 0 <= options.num_warmup < 2**31 or not 0 < options.timeout < 2**20:
        parser.error("--num_warmup or --timeout is out of range")
    return options


def connect(options):
    """Returns a client of the scheduler or, if there is none, of local processes."""
    import dask, distributed
    if not options.verbose:  # discard what Dask and the local workers print
        sys.stderr = open(os.dup(2), "w")
        os.dup2(os.open(os.devnull, os.O_WRONLY), 2)
        warnings.simplefilter("ignore")
        logging.disable()
    # Ctrl-C in a terminal must not end the local workers before the client closes them.
    multiprocessing.resource_tracker.ensure_running()  # later, it would unblock the signals
    signal.pthread_sigmask(signal.SIG_BLOCK, () if options.scheduler else SIGNALS)
    # Otherwise, a local worker that takes 15 seconds to restart is given up for good.
    dask.config.set({"distributed.deploy.lost-worker-timeout": "1h"})
    client = distributed.Client(options.scheduler) if options.scheduler else distributed.Client(
        n_workers=dask.system.CPU_COUNT, threads_per_worker=1, dashboard_address="127.0.0.1:0")
    signal.pthread_sigmask(signal.SIG_UNBLOCK, SIGNALS)
    client.wait_for_workers(1, timeout=60)
    return client


def main():
    while os.open(os.devnull, os.O_RDONLY) <= 2:
        pass  # so that no other file becomes a standard stream that is closed
    sys.stderr = sys.stderr or open(os.devnull, "w")
    for number in SIGNALS:  # end the workers, too
        signal.signal(number, lambda signum, _: sys.exit(128 + signum))
    options = parse_arguments()
    found, bad = find_logs(options.logs)
    for path, reason in sorted(bad):
        say(f"{escape(path)}: {reason}")
    if not found:
        return 1
    output = options.output or 1
    log = os.path.exists(output) and found.get(os.stat(output)[1:3])
    if log:
        raise OSError(f"{escape(log)}: the table would be written to the log itself")
    os.stat(os.path.dirname(os.path.realpath(options.output or ".")))  # fails without this folder
    paths = sorted(found.values(), key=os.fsencode)
    matches = [options.group.search(path) for path in paths]
    groups = [as_text(match and match.group(1) or "") for match in matches]
    if None in matches:
        say(f"logs that do not match --group: {matches.count(None)}")
    logs = [(i, groups[i], os.path.join(os.getcwd(), path)) for i, path in enumerate(paths)]
    means, problems = {}, {}
    with connect(options) as client:
        size = max(1, min(200, len(logs) // (8 * max(1, sum(client.nthreads().values())))))
        batches = [logs[i:i + size] for i in range(0, len(logs), size)]
        compute(client, batches, options, (means, problems))
    for _, message in sorted(problems.items()):
        say(message.removeprefix(escape(os.getcwd()) + "/"))  # the path as found
    if len(problems) == len(logs):
        raise OSError("no log could be read")
    missing = sum(map(math.isnan, itertools.chain.from_iterable(means.values())))
    if missing:
        say(f"means missing because no values are left after the warm-up: {missing}")
    try:
        write_whole(output, (HEADER + "".join(table_rows(means, paths))).encode(BYTES))
    except OSError as error:
        raise OSError(f"{escape(options.output or 'standard output')}: {error.strerror}") from error
    if problems:
        say(f"logs that could not be read: {len(problems)} of {len(logs)}")
    return 1 if bad or problems else 0


if __name__ == "__main__":
    try:
        sys.exit(main())
    except (ImportError, OSError, ValueError) as failure:
        file = getattr(failure, "filename", None)
        say("the cluster has no worker" if isinstance(failure, TimeoutError) else
            f"{escape(file)}: {failure.strerror}" if file else failure)
        sys.exit(1)
