#!/usr/bin/env python3
"""Runs the benchmark and prints its tables.

Within a round every engine is run once, each in a process of its own on a fresh store in the same
folder, in an order that is drawn anew for each round. A time is given as median, minimum and maximum
of the rounds, and as the speed against the bare limit of the same round. System calls and
instructions are counted at two sizes and subtracted, so that starting and stopping drops out.

usage: bench/run.py BUILD_FOLDER [--folder DIR] [--rounds N] [--scale F] [--only TABLE]
"""

import argparse
import calendar
import collections
import os
import random
import re
import shutil
import sqlite3
import statistics
import subprocess
import tempfile
import time
from pathlib import Path

ENTRIES_OFFSET, ENTRY_SIZE = 6064, 1496  # of the log file
STORE = "zuSaHpi_util"
LIMIT = "limit"


def run(command, **options):
    return subprocess.run([str(word) for word in command], check=True, text=True,
                          stdout=subprocess.PIPE, **options).stdout


class Bench:
    def __init__(self, arguments):
        self.build = Path(arguments.build)
        self.driver = self.build / "bench" / "bench_driver"
        self.tool = self.build / "evtlogctl"
        self.rounds = arguments.rounds
        self.scale = arguments.scale
        self.only = arguments.only
        self.folder = Path(tempfile.mkdtemp(prefix="zubench.", dir=arguments.folder))
        self.random = random.Random(1)

    def count(self, number):
        return max(10, int(number * self.scale))

    def wanted(self, name):
        return self.only is None or self.only == name

    def fresh(self):
        folder = self.folder / "store"
        shutil.rmtree(folder, ignore_errors=True)
        folder.mkdir()
        return folder

    def task(self, engine, workload, capacity, count, folder, flags, before=()):
        """Returns the nanoseconds of the timed part and the highest resident memory in KiB."""
        command = [*before, self.driver, engine, workload, capacity, count, folder, *flags]
        nanoseconds, kib = run(command, stderr=subprocess.DEVNULL).split()
        return int(nanoseconds), int(kib)

    def shuffled_rounds(self, names, measure):
        """measure(name) in every round for each name; returns the lists of what it gave."""
        results = {name: [] for name in names}
        for _ in range(self.rounds):
            order = list(names)
            self.random.shuffle(order)
            for name in order:
                os.sync()  # what the one before left to be written is no burden of the next
                results[name].append(measure(name))
        return results


def table(headings, rows):
    print("| " + " | ".join(headings) + " |")
    print("|" + "---|" * len(headings))
    for row in rows:
        print("| " + " | ".join(str(cell) for cell in row) + " |")
    print(flush=True)


def figure(number):
    if number >= 100:
        return f"{number:,.0f}"
    return f"{number:.2f}" if number >= 1 else f"{number:.3f}"


def timed_table(results, limit, unit="µs"):
    """Rows of median, minimum, maximum and the speed against the limit of the same round."""
    rows = []
    for name, times in results.items():
        ratios = [base / time for base, time in zip(results[limit], times)]
        rows.append([name, figure(statistics.median(times)), figure(min(times)), figure(max(times)),
                     f"{statistics.median(ratios):.2f}"])
    table(["engine", f"median {unit}", "minimum", "maximum", "speed, limit = 1"], rows)


# ------------------------------------------------------------------------------------ environment

def version_of(command, pattern):
    found = re.search(pattern, subprocess.run(command, text=True, stdout=subprocess.PIPE,
                                              stderr=subprocess.STDOUT).stdout)
    return found.group(1) if found else "not found"


def environment(bench):
    model = re.search(r"model name\s*: (.*)", Path("/proc/cpuinfo").read_text())
    packages = ["libsqlite3-0", "liblmdb0", "libleveldb1d"]
    versions = run(["dpkg-query", "-W", "-f", "${Package} ${Version}, ", *packages]).rstrip(", ")
    print("## Where it was run\n")
    table(["what", "it"], [
        ["processor", f"{os.cpu_count()} × {model.group(1) if model else os.uname().machine}"],
        ["kernel", os.uname().release],
        ["file system", run(["stat", "-f", "-c", "%T", bench.folder]).strip()],
        ["libraries", versions],
        ["compiler", version_of(["g++", "--version"], r"(g\+\+.*)")],
        ["rounds", bench.rounds],
    ])


# ------------------------------------------------------------------------------------------- adds

ADDS = [
    # name, title, workload, capacity, count, flags, engines beside the limit and the event log
    ("grow", "Adds that the kernel keeps, to a log that grows (Simple)", "grow", 10**6, 60000, [],
     ["SQLite WAL", "LMDB", "LevelDB"]),
    ("wrap", "Adds that the kernel keeps, to a full log that wraps (Circular)", "wrap", 10000, 60000,
     ["wraps"], ["SQLite WAL", "LMDB", "LevelDB"]),
    ("durable-grow", "Adds that the disk keeps, to a log that grows (Linked)", "grow", 10**6, 600,
     ["durable"], ["SQLite journal", "SQLite WAL", "LMDB", "LevelDB"]),
    ("durable-wrap", "Adds that the disk keeps, to a full log that wraps (Linked)", "wrap", 100, 600,
     ["durable", "wraps"], ["SQLite journal", "SQLite WAL", "LMDB", "LevelDB"]),
]


def counted_calls(bench, engine, workload, capacity, count, folder, flags):
    log = bench.folder / "strace"
    bench.task(engine, workload, capacity, count, folder, flags,
               before=["strace", "-f", "-c", "-U", "calls,name", "-o", log])
    calls = collections.Counter()
    for line in log.read_text().splitlines():
        found = re.fullmatch(r"\s*(\d+)\s+(\w+)\s*", line)
        if found and found[2] != "total":
            calls[found[2]] += int(found[1])
    return calls


def counted_instructions(bench, engine, workload, capacity, count, flags):
    log = bench.folder / "callgrind"
    command = ["valgrind", "--tool=callgrind", "--callgrind-out-file=/dev/null", f"--log-file={log}",
               bench.driver, engine, workload, capacity, count, bench.fresh(), *flags]
    run(command)
    return int(re.search(r"Collected : (\d+)", log.read_text())[1])


def per_operation(counted, low, high):
    """What one operation counts, of the counts at two sizes."""
    at_low, at_high = counted(low), counted(high)
    if isinstance(at_low, int):
        return (at_high - at_low) / (high - low)
    names = sorted(set(at_low) | set(at_high))
    each = {name: (at_high[name] - at_low[name]) / (high - low) for name in names}
    return {name: number for name, number in each.items() if abs(number) >= 0.005}


def calls_text(calls):
    return ", ".join(f"{figure_of_calls(number)} {name}" for name, number in sorted(calls.items()))


def figure_of_calls(number):
    return f"{number:.2f}".rstrip("0").rstrip(".")


def adds(bench):
    for name, title, workload, capacity, count, flags, peers in ADDS:
        if not bench.wanted(name):
            continue
        engines = [LIMIT, STORE, *peers]
        times = bench.shuffled_rounds(engines, lambda engine: bench.task(
            engine, workload, capacity, bench.count(count), bench.fresh(), flags)[0]
            / bench.count(count) / 1000)
        print(f"## {title}\n")
        print(f"One add, of {bench.count(count):,} a round.\n")
        timed_table(times, LIMIT)
        small = 40 if "durable" in flags else 400
        rows = []
        for engine in engines:
            calls = per_operation(lambda n: counted_calls(bench, engine, workload, capacity, n,
                                                          bench.fresh(), flags), small, 3 * small)
            instructions = per_operation(lambda n: counted_instructions(
                bench, engine, workload, capacity, n, flags), small, 3 * small)
            rows.append([engine, calls_text(calls), f"{instructions:,.0f}"])
        table(["engine", "system calls an add", "instructions an add"], rows)


# ------------------------------------------------------------------------------------------ reads

SIZES = [10**3, 10**5, 10**6]


def sized(bench):
    return [max(100, int(size * bench.scale)) if bench.scale < 1 else size for size in SIZES]


def calls_of_reads(bench, engine, workload, size, folder):
    calls = per_operation(lambda n: counted_calls(bench, engine, workload, size, n, folder, []),
                          100, 300)
    return calls_text(calls) or "none"


def reads(bench):
    if not bench.wanted("read"):
        return
    engines = [LIMIT, STORE, "SQLite WAL"]
    for size in sized(bench):
        folders = {}
        for engine in engines:
            folders[engine] = bench.folder / f"{engine.split()[0]}-{size}"
            folders[engine].mkdir()
            bench.task(engine, "fill", size, size, folders[engine], [])
        for workload, title in [("newest", "the newest one again and again"),
                                ("scan", "from the oldest on"), ("random", "in random order")]:
            count = bench.count(200000)
            times = bench.shuffled_rounds(engines, lambda engine: bench.task(
                engine, workload, size, count, folders[engine], [])[0] / count / 1000)
            print(f"## Reading of {size:,} entries: {title}\n")
            timed_table(times, LIMIT)
            print("System calls a read: " + "; ".join(
                f"{engine} {calls_of_reads(bench, engine, workload, size, folders[engine])}"
                for engine in engines) + ".\n")
        for folder in folders.values():
            shutil.rmtree(folder)


# ----------------------------------------------------------------------------------------- growth

# The capacity leaves room for the adds, and stays the same at every start.
GROWING = [("Simple", [], 2000), ("Circular", ["wraps"], 2000), ("Linked", ["durable"], 50)]


CLEARS = 3  # rounds: each fills a log and the limit's file anew


def filled(bench, engine, size, capacity, flags):
    """The folder of a store of that size. A durable one is filled in memory, which takes minutes
    less."""
    folder = bench.fresh()
    if "durable" not in flags:
        bench.task(engine, "fill", capacity, size, folder, flags)
        return folder
    memory = Path(tempfile.mkdtemp(prefix="zubench.", dir="/dev/shm"))
    try:
        bench.task(engine, "fill", capacity, size, memory, flags)
        for file in memory.iterdir():
            shutil.move(file, folder / file.name)
    finally:
        shutil.rmtree(memory)
    return folder


def bare_truncation(file, flags):
    """Microseconds that the kernel takes to cut the file as a clear cuts the log."""
    descriptor = os.open(file, os.O_RDWR | (os.O_SYNC if "durable" in flags else 0))
    try:
        begin = time.perf_counter()
        os.ftruncate(descriptor, ENTRIES_OFFSET)
        return (time.perf_counter() - begin) * 1e6
    finally:
        os.close(descriptor)


def clears(bench, size, capacity, flags):
    """Medians of a clear and of the truncation of a file that grew like the log."""
    cleared, truncated = [], []
    for _ in range(min(bench.rounds, CLEARS)):
        folder = filled(bench, STORE, size, capacity, flags)
        cleared.append(bench.task(STORE, "clear", capacity, 1, folder, flags)[0] / 1000)
        folder = filled(bench, LIMIT, size, capacity, flags)
        truncated.append(bare_truncation(folder / "limit", flags))
    return statistics.median(cleared), statistics.median(truncated)


def growth(bench):
    if not bench.wanted("growth"):
        return
    print("## One operation at different sizes of the log\n")
    print("Microseconds; the memory is what the process holds above one with an empty log.\n")
    _, empty = bench.task(STORE, "start", 1, 1, bench.fresh(), [])
    rows = []
    for kind, flags, count in GROWING:
        for size in sized(bench):
            capacity = size + count
            folder = filled(bench, STORE, size, capacity, flags)
            times = collections.defaultdict(list)
            resident = 0
            for _ in range(bench.rounds):
                for workload, number in [("start", 1), ("grow", count), ("delete", count)]:
                    taken, kib = bench.task(STORE, workload, capacity, number, folder, flags)
                    times[workload].append(taken / number / 1000)
                    resident = max(resident, kib - empty)
            cleared, truncated = clears(bench, size, capacity, flags)
            medians = [figure(statistics.median(times[workload]))
                       for workload in ["start", "grow", "delete"]]
            rows.append([kind, f"{size:,}", *medians, figure(cleared),
                         figure(truncated), f"{resident} KiB"])
    table(["type", "entries", "start-up", "add", "delete", "clear", "bare ftruncate", "memory"],
          rows)


# --------------------------------------------------------------------------------------- printing

def timed_command(command):
    before = time.perf_counter()
    subprocess.run([str(word) for word in command], check=True, stdout=subprocess.DEVNULL)
    return time.perf_counter() - before


def throughput(bench, commands, amount, unit):
    """`commands`: name to command. Rows of the median, least and most of amount / seconds."""
    times = bench.shuffled_rounds(list(commands), lambda name: timed_command(commands[name]))
    rows = []
    for name, seconds in times.items():
        rates = [amount / second for second in seconds]
        rows.append([name, f"{statistics.median(rates):,.0f}", f"{min(rates):,.0f}",
                     f"{max(rates):,.0f}"])
    table(["command", f"median {unit}", "minimum", "maximum"], rows)


SEVERITIES = ["critical", "major", "minor", "informational", "ok"]


def columns_of(line):
    """What a line of `list` says: number, time in nanoseconds, severity, source, event."""
    number, moment, severity, rest = line.split(None, 3)
    seconds = calendar.timegm(time.strptime(moment[:19], "%Y-%m-%dT%H:%M:%S"))
    milliseconds = int(moment[20:23] or 0) if moment[19] == "." else 0
    source, event = rest.split("  ", 1)
    return (int(number), (seconds * 1000 + milliseconds) * 10**6, SEVERITIES.index(severity),
            source, event)


def fill_databases(bench, log, folder):
    """The log as tables: one of values with each entry's record beside them, one of its lines."""
    lines = run([bench.tool, "list", log]).splitlines()
    contents = log.read_bytes()
    values, ready = folder / "values.sqlite", folder / "lines.sqlite"
    with sqlite3.connect(values) as database:
        database.execute("CREATE TABLE log(number INTEGER PRIMARY KEY, time INTEGER, "
                         "severity INTEGER, source TEXT, event TEXT, record BLOB)")
        for i, line in enumerate(lines):
            begin = ENTRIES_OFFSET + i * ENTRY_SIZE
            database.execute("INSERT INTO log VALUES(?, ?, ?, ?, ?, ?)",
                             (*columns_of(line), contents[begin:begin + ENTRY_SIZE]))
    with sqlite3.connect(ready) as database:
        database.execute("CREATE TABLE log(number INTEGER PRIMARY KEY, line TEXT)")
        database.executemany("INSERT INTO log(line) VALUES(?)", [(line,) for line in lines])
    return values, ready


# Gives the very lines of `list`.
FORMATTED = """SELECT printf('%6d  %-24s  %-13s  %-15s  %s', number,
    strftime('%Y-%m-%dT%H:%M:%S', time / 1000000000, 'unixepoch') ||
    CASE WHEN time % 1000000000 = 0 THEN 'Z' ELSE printf('.%03dZ', time / 1000000 % 1000) END,
    CASE severity WHEN 0 THEN 'critical' WHEN 1 THEN 'major' WHEN 2 THEN 'minor'
        WHEN 3 THEN 'informational' ELSE 'ok' END,
    source, event) FROM log"""


def printing(bench):
    if not bench.wanted("print"):
        return
    entries = bench.count(100000)
    folder = bench.fresh()
    bench.task(STORE, "fill", entries, entries, folder, [])
    log = folder / "log"
    size = log.stat().st_size
    print(f"## A log of {entries:,} entries as hexadecimal digits\n")
    throughput(bench, {"evtlogctl dump": [bench.tool, "dump", log],
                       "hexdump -C": ["hexdump", "-C", log],
                       "xxd": ["xxd", log]}, size / 1e6, "MB/s")
    values, ready = fill_databases(bench, log, folder)
    listing = run([bench.tool, "list", log])
    if run(["sqlite3", values, FORMATTED]) != listing:
        raise RuntimeError("sqlite3 and evtlogctl list print different lines")
    print(f"## A log of {entries:,} entries as lines\n")
    throughput(bench, {
        "evtlogctl list": [bench.tool, "list", log],
        "sqlite3: the same lines, of values that stand beside the record": ["sqlite3", values,
                                                                            FORMATTED],
        "sqlite3: the values, not formatted": ["sqlite3", values, "SELECT number, time, severity, "
                                               "source, event FROM log"],
        "sqlite3: a table of ready-made lines and nothing else": ["sqlite3", ready,
                                                                  "SELECT line FROM log"],
        "evtlogctl list -o json": [bench.tool, "list", "-o", "json", log],
        "evtlogctl list -o verbose": [bench.tool, "list", "-o", "verbose", log],
        "evtlogctl print": [bench.tool, "print", log],
        "evtlogctl check": [bench.tool, "check", log],
    }, entries, "entries/s")


def imports(bench):
    if not bench.wanted("import"):
        return
    # The list of a real server again and again, as long as a controller's may get.
    records = Path("examples/server.sel").read_bytes()
    count = bench.count(65535)
    sel = bench.folder / "import.sel"
    sel.write_bytes((records * (count * 16 // len(records) + 1))[:count * 16])
    config = bench.folder / "import.conf"
    config.write_text("EventLog=circular {\n    Filename=events.log\n    Size=100000\n}\n")
    print(f"## An import of {count:,} records into a Circular log\n")
    times = []
    for _ in range(bench.rounds):
        times.append(timed_command([bench.tool, "--root", bench.fresh(), "--config", config,
                                    "import", "--all", sel]))
    rates = [count / second for second in times]
    table(["median records/s", "minimum", "maximum"],
          [[f"{number:,.0f}" for number in (statistics.median(rates), min(rates), max(rates))]])


# ------------------------------------------------------------------------------------------- size

def sizes(bench):
    if not bench.wanted("size"):
        return
    print("## Size of the shared library\n")
    rows = []
    for build in [bench.build, bench.build.parent / (bench.build.name + "-i386")]:
        library = build / "libzuSaHpi_util.so.1"
        if not library.exists():
            continue
        stripped = bench.folder / "stripped.so"
        run(["strip", "-o", stripped, library])
        listed = run(["readelf", "-rW", library])
        packed = sum(int(number) for number in re.findall(r"(\d+) offsets", listed))
        relocations = f"{listed.count(' R_')} and {packed} packed"
        kib = run([build / "bench" / "bench_load"]).strip()
        rows.append([build.name, f"{stripped.stat().st_size:,}", relocations, kib])
    table(["build", "bytes, stripped", "relocations", "KiB in memory after loading"], rows)


def main():
    parser = argparse.ArgumentParser(description=__doc__,
                                     formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("build")
    parser.add_argument("--folder", help="where the stores are made")
    parser.add_argument("--rounds", type=int, default=11)
    parser.add_argument("--scale", type=float, default=1.0, help="of the numbers of operations")
    parser.add_argument("--only", help="one table alone")
    os.environ["TZ"] = "UTC0"  # as the lines that sqlite3 prints have their times
    bench = Bench(parser.parse_args())
    try:
        environment(bench)
        adds(bench)
        reads(bench)
        growth(bench)
        printing(bench)
        imports(bench)
        sizes(bench)
    finally:
        shutil.rmtree(bench.folder)


if __name__ == "__main__":
    main()
