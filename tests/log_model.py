"""What lumo-profile-export --statistics must write for a log, computed independently.

Shared by the tests of the statistics and of fleet.py. Nothing here is written for speed
or for damaged logs; figures are exact fractions.
"""

import collections
import fractions
import math
import os
import statistics
import struct

UNITS = {1: "us", 2: "bytes", 3: "cycles", 4: "count"}
NODE = 404
COLUMNS = ("log,kind,graph,level,parent,name,occurrence,unit,"
           "n,mean,stdev,min,median,max").split(",")

Event = collections.namedtuple("Event", "name type value unit below")
Series = collections.namedtuple("Series", "level position name unit parent values parts")


def read_log(path):
    """Returns the messages of a log as [(graph_index, [Event])], read from its bytes."""
    with open(path, "rb") as file:
        data = file.read()

    def number(form, place):
        return struct.unpack_from("<" + form, data, place)[0]

    def field(table, index, form):
        """Returns a number in a table; for an offset, the place that it leads to."""
        slots = table - number("i", table)
        slot = 4 + 2 * index
        offset = number("H", slots + slot) if slot < number("H", slots) else 0
        if offset == 0:
            return 0
        value = number("I" if form == "offset" else form, table + offset)
        return table + offset + value if form == "offset" else value

    def tables(vector):
        places = range(vector + 4, vector + 4 + 4 * number("I", vector), 4) if vector else ()
        return [place + number("I", place) for place in places]

    def text(place):
        return data[place + 4:place + 4 + number("I", place)] if place else b""

    def events(table, index):
        return [Event(text(field(event, 0, "offset")), field(event, 1, "I"),
                      field(event, 2, "Q"), field(event, 3, "I"), events(event, 4))
                for event in tables(field(table, index, "offset"))]

    return [(field(message, 1, "Q"), events(message, 3))
            for message in tables(field(number("I", 0), 4, "offset"))]


def runs_of(messages):
    """Returns {"execute" or "finalize": [(position, graph, events)]}.

    Raises ValueError with the reason if the programs reject the log.
    """
    def count(text):
        return sum(any(text in event.name for event in events) for _, events in messages)

    finalize, execute = count(b"(finalize)"), count(b"(execute)")
    if execute == 0:
        raise ValueError("the log has no execute run")
    graphs = len({index for index, _ in messages})
    runs = {"execute": [], "finalize": []}
    for position, (index, events) in enumerate(messages[:finalize + execute]):
        graph = index % 2**32
        if graph >= graphs:  # the high half is negative
            raise ValueError(f"The message at position {position} has graph_index {index},"
                             f" but graph_count is {graphs}.")
        kind = "finalize" if position < finalize else "execute"
        runs[kind].append((position, graph, events))
    return runs


def collect(kind, runs):
    """Returns the series of the runs of one kind and graph, in the order of the rows."""
    found = {}  # what identifies a series: Series

    def add(event, level, key, position, parent):
        if key not in found:
            unit = UNITS.get(event.unit, "")
            found[key] = Series(level, position, event.name, unit, parent, [], [])
            if level == "part":
                parent.parts.append(found[key])
        found[key].values.append(event.value)
        return found[key]

    def add_below(event, key, series, has_operations):
        ordinal, names = 0, collections.Counter()
        for below in event.below:
            if has_operations and below.type == NODE:
                new_key, level, position = ("operation", ordinal, below.name), "operation", ordinal
                ordinal += 1
            else:
                position, level = names[below.name], "part"
                new_key = ("part", key, below.name, position)
            names[below.name] += 1
            add_below(below, new_key, add(below, level, new_key, position, series), False)

    for _, _, events in runs:
        for position, event in enumerate(events):
            key = ("event", position, event.name)
            series = add(event, "event", key, position, None)
            add_below(event, key, series, kind == "execute")

    def with_parts(series):
        return [series] + [s for part in series.parts for s in with_parts(part)]

    first = sorted((s for s in found.values() if s.level != "part"),
                   key=lambda s: (s.level, s.position, s.name))
    # Parts are counted in the order of their first values, others in that of the rows.
    seen, occurrences = collections.Counter(), {}
    for series in first + [s for s in found.values() if s.level == "part"]:
        above = series.parent.name if series.level == "part" else None
        group = series.level, above, series.unit, series.name
        occurrences[id(series)] = seen[group]
        seen[group] += 1
    return [(s, occurrences[id(s)]) for series in first for s in with_parts(series)]


def figures(values):
    """Returns [n, mean, variance, min, median, max], exact; None if there is none."""
    n, ordered = len(values), sorted(values)
    if n == 0:
        return [0] + [None] * 5
    mean = fractions.Fraction(sum(values), n)
    variance = sum((value - mean) ** 2 for value in values) / (n - 1) if n > 1 else None
    median = fractions.Fraction(ordered[(n - 1) // 2] + ordered[n // 2], 2)
    return [n, mean, variance, ordered[0], median, ordered[-1]]


def statistics_of(messages, num_warmup=1, with_parts=False):
    """Returns the rows of a log without its path: [kind, graph, ..., max].

    Texts are bytes. Raises ValueError as runs_of() does.
    """
    rows = []
    for kind, runs in runs_of(messages).items():
        for graph in sorted({graph for _, graph, _ in runs}):
            own = [run for run in runs if run[1] == graph]
            for series, occurrence in collect(kind, own):
                if series.level == "part" and not with_parts:
                    continue
                values = series.values
                rows.append([kind, graph, series.level,
                             series.parent.name if series.parent else b"", series.name,
                             occurrence, series.unit,
                             *figures(values if len(values) == 1 else values[num_warmup:])])
    return rows


def is_same(text, exact, mean=None):
    """Whether a field is the exact number as a short text, or empty for None.

    With a mean, `exact` is the variance, and the deviation may differ by its last digits
    or by the precision of the mean.
    """
    if exact is None or text == "":
        return exact is None and text == ""
    if isinstance(exact, int) and mean is None:
        return text == str(exact)
    if mean is not None:
        return math.isclose(float(text), math.sqrt(exact), rel_tol=1e-12,
                            abs_tol=float(mean) * 2**-52)
    value = float(exact)
    return float(text) == value and len(text) <= len(repr(value).removesuffix(".0"))


def fleet_rows(paths, group=lambda path: "", num_warmup=1, parts=False):
    """Returns the rows of fleet.py for readable logs. Texts are as in latin-1, numbers are
    texts, except for the mean and the deviation."""
    means = {}
    for path in sorted(paths, key=os.fsencode):
        for kind, graph, level, parent, name, occurrence, unit, _, mean, *_ in \
                statistics_of(read_log(path), num_warmup, parts):
            if kind == "execute":
                key = (os.fsencode(group(path)), graph, level, parent if level == "part" else b"",
                       name, occurrence, unit)
                means.setdefault(key, []).append((mean if mean is None else float(mean),
                                                  os.fsencode(path)))
    for key, logs in sorted(means.items()):
        measured = [log for log in logs if log[0] is not None]
        values = [mean for mean, _ in measured]
        row = [*key, len(logs), *[item for choose in (min, max) if values
                                  for item in choose(measured, key=lambda log: log[0])]]
        row = [item.decode("latin-1") if isinstance(item, bytes) else
               str(item).removesuffix(".0") for item in row]
        yield row[:8] + [statistics.fmean(values) if values else None,
                         statistics.stdev(values) if len(values) > 1 else None] + (
                             row[8:] or [""] * 4)
