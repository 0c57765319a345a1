#!/usr/bin/env python3
"""Measures the program as whole processes beside their yardsticks, and says which promises of speed hold.

    bench/promises.py build/bench/bin             the table of promises
    bench/promises.py build/bench/bin --growth    how cost grows with months, machines and files

Time is processor time, of the user and of the system, as wait4 tells it. A command and its yardstick take turns, and
the median of the pairs is what counts, so that other work on the machine disturbs both alike. The folders are those
of `tappora demo`, in memory where there is such a place.
"""
import argparse
import glob
import os
import shutil
import statistics
import sys
import tempfile
import time

LAST = "2026-09-20"


def run(arguments):
    """The processor time and the time on the clock of a process, in milliseconds."""
    start = time.monotonic()
    quiet = [(os.POSIX_SPAWN_OPEN, 1, os.devnull, os.O_WRONLY, 0)]
    process = os.posix_spawnp(arguments[0], arguments, os.environ, file_actions=quiet)
    _, status, used = os.wait4(process, 0)
    if status != 0:
        sys.exit("failed: " + " ".join(arguments[:4]))
    return (used.ru_utime + used.ru_stime) * 1000, (time.monotonic() - start) * 1000


def beside(command, yardstick, pairs):
    """The medians of both, and of the ratio of each pair."""
    run(command), run(yardstick)
    taken = [(run(command)[0], run(yardstick)[0]) for _ in range(pairs)]
    ratio = statistics.median(a / b for a, b in taken if b > 0)
    return statistics.median(a for a, _ in taken), statistics.median(b for _, b in taken), ratio


class Folder:
    """A made-up data folder; `start` is the first day of so many days up to the last one."""

    def __init__(self, programs, parent, months, machines):
        self.path = os.path.join(parent, f"{months}-{machines}")
        self.tappora = os.path.join(programs, "tappora")
        run([self.tappora, "demo", self.path, "--months", str(months), "--machines", str(machines), "--today", LAST])

    def files(self, first="0"):
        found = sorted(glob.glob(os.path.join(self.path, "*", "days", "*.org")))
        return [file for file in found if os.path.basename(file) >= first]

    def cat(self, first="0"):
        return ["cat", *self.files(first)]

    def command(self, *words, first=None):
        span = ["--from", first, "--to", LAST] if first else []
        return [self.tappora, *words, "--folder", self.path, *span]

    def megabytes(self):
        return sum(os.path.getsize(file) for file in self.files()) / 1e6


def table(header, rows):
    lines = [header, ["-" * len(cell) for cell in header], *rows]
    widths = [max(len(str(line[i])) for line in lines) for i in range(len(header))]
    for line in lines:
        fill = "-" if line is lines[1] else " "
        print("| " + " | ".join(str(cell).ljust(width, fill) for cell, width in zip(line, widths)) + " |")


def promises(programs, parent, pairs):
    three = Folder(programs, parent, 14, 3)
    ten = Folder(programs, parent, 120, 1)
    year, days400 = "2025-09-21", "2025-08-17"
    page = os.path.join(parent, "page.html")
    rows = []

    def ratio(name, command, yardstick, words, most):
        mine, other, times = beside(command, yardstick, pairs)
        rows.append([name, f"{mine:.1f} ms", f"{words}: {other:.1f} ms", f"{times:.2f} times", f"{most} times",
                     "yes" if times <= most else "NO"])

    def time_of(name, command, most):
        mine, other, _ = beside(command, ["true"], pairs)
        rows.append([name, f"{mine:.1f} ms", f"true: {other:.1f} ms", f"{mine:.1f} ms", f"{most} ms",
                     "yes" if mine < most else "NO"])

    summary = three.command("summary", first=year)
    ratio("summary of 400 days of three machines", three.command("summary", first=days400), three.cat(days400),
          "cat of the files", 1.3)
    ratio("heat map of a year of three machines", three.command("heatmap", first=year), three.cat(year),
          "cat of the files", 1.5)
    ratio("export of 400 days of three machines", three.command("export", first=days400), three.cat(days400),
          "cat of the files", 3)
    ratio("page of a year of three machines", three.command("report", "-o", page, first=year), summary,
          "summary of the year", 5)
    time_of("tappora (a glance)", three.command("--today", LAST), 5)
    time_of("practice record over 10 years", ten.command("practice", "record", "--today", LAST), 50)
    size = os.path.getsize(page) / 1000
    rows.append(["size of that page", f"{size:.0f} kB", "", "", "500 kB", "yes" if size <= 500 else "NO"])
    table(["promise", "measured", "yardstick", "which is", "at most", "holds"], rows)
    return all(row[-1] == "yes" for row in rows)


def cold(folder):
    """The time on the clock of a summary whose files are not in the system's cache."""
    for file in folder.files():
        descriptor = os.open(file, os.O_RDONLY)
        os.posix_fadvise(descriptor, 0, 0, os.POSIX_FADV_DONTNEED)
        os.close(descriptor)
    return run(folder.command("summary", first="1996-01-01"))[1]


def growth(programs, parent, pairs):
    rows = []
    with tempfile.TemporaryDirectory(prefix="tappora-bench-") as disk:
        for months, machines in [(1, 1), (12, 1), (120, 1), (360, 1), (12, 3), (12, 10)]:
            folder = Folder(programs, parent, months, machines)
            command = folder.command("summary", first="1996-01-01")
            mine, other, times = beside(command, folder.cat(), pairs)
            report = statistics.median(
                run(folder.command("report", "-o", os.path.join(parent, "p.html"), first="1996-01-01"))[0]
                for _ in range(3))
            size = folder.megabytes()
            folder.path = shutil.move(folder.path, disk)
            os.sync()
            run(folder.command("summary", first="1996-01-01"))
            warm = run(folder.command("summary", first="1996-01-01"))[1]
            rows.append([months, machines, len(folder.files()), f"{size:.1f}", f"{other:.1f}", f"{mine:.1f}",
                         f"{times:.2f}", f"{mine / size:.1f}", f"{report:.0f}", f"{warm:.0f}", f"{cold(folder):.0f}"])
            shutil.rmtree(folder.path)
    table(["months", "machines", "files", "MB", "cat, ms", "summary, ms", "times cat", "ms a MB", "page, ms",
           "clock, warm", "clock, cold"], rows)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("programs")
    parser.add_argument("--growth", action="store_true")
    parser.add_argument("--pairs", type=int, default=21)
    chosen = parser.parse_args()
    place = "/dev/shm" if os.path.isdir("/dev/shm") else None
    with tempfile.TemporaryDirectory(prefix="tappora-bench-", dir=place) as parent:
        os.environ.update(HOME=parent, LC_ALL="C.UTF-8", TZ="UTC")
        if chosen.growth:
            growth(chosen.programs, parent, chosen.pairs)
        elif not promises(chosen.programs, parent, chosen.pairs):
            sys.exit(1)


if __name__ == "__main__":
    main()
