#!/usr/bin/env python3
"""Runs our program and those of other plotting libraries in turn; prints one table of medians and ratios.

A ratio is theirs divided by ours: above 1 we are faster, or smaller. Every line of every program, with the
smallest time and the number of repetitions, is kept in results.tsv beside the programs.
"""
import argparse
import os
import pathlib
import re
import resource
import statistics
import subprocess
import time
from typing import NamedTuple

OURS = "bench_qvgraph"
LIMIT = "bench_floor"  # plain C++ without axes and text: a limit, not a library
PROGRAMS = {
    "bench_qcustomplot": "QCustomPlot",
    "bench_qwt": "Qwt",
    "bench_qtcharts": "Qt Charts",
    "bench_kchart": "KD Chart",
    "bench_gnuplot": "gnuplot",
    LIMIT: "(plain C++)",
}
LOAD_LIMIT = 20 << 30  # bytes of address space


class Workload(NamedTuple):
    work: str
    title: str
    sizes: list
    variants: dict = dict.fromkeys([OURS, *PROGRAMS], "")  # of each program that can do it
    limit_rows: str = ""  # how the rows of plain C++ begin that do the same


SIZES = [10**e for e in range(3, 8)]
WORKLOADS = [
    Workload("W1", "load, one by one", SIZES,
             {OURS: "point", "bench_qcustomplot": "point", "bench_qtcharts": "point", "bench_kchart": "point",
              LIMIT: ""}, "one by one"),
    Workload("W1", "load in bulk", SIZES,
             {OURS: "bulk", "bench_qcustomplot": "bulk", "bench_qwt": "copy", "bench_qtcharts": "bulk",
              "bench_kchart": "bulk", "bench_gnuplot": "binary", LIMIT: ""}, "bulk"),
    Workload("W2", "line", SIZES),
    Workload("W3", "symbols", SIZES),
    Workload("W4", "100 sets", [10**6]),
    Workload("W5", "zoomed", [10**6]),
    Workload("W6", "12 graphs", [1000], dict.fromkeys([OURS, *list(PROGRAMS)[:-1]], "")),
]


class Row(NamedTuple):
    """One measured quantity; what the table has a line for."""
    workload: str
    size: int
    unit: str


class Comparison:
    def __init__(self, build, options):
        self.build, self.options = build, options
        self.medians = {}  # Row -> program -> [median of a call]
        self.reasons = {}  # (workload, size, program) -> why there is no figure
        self.seconds = {}  # the same -> how long the call took
        self.started = time.monotonic()
        self.log = open(build / "results.tsv", "w", encoding="utf-8")

    def run(self):
        """Rounds go over everything, so that a cap on the time costs repetitions before it costs rows."""
        for number in range(self.options.rounds):
            for workload in WORKLOADS:
                for size in workload.sizes:
                    if re.search(self.options.filter, f"{workload.work} {workload.title} {size}"):
                        self.measure(workload, size, number)

    def measure(self, workload, size, number):
        """Ours before and after the others, so that a change of the machine's load hits all alike."""
        others = [program for program in PROGRAMS if program in workload.variants]
        for program in [OURS, *others, OURS]:
            reason = self.why_not(workload, size, program, number)
            if reason:
                self.reasons.setdefault((workload.title, size, program), reason)
            else:
                self.call(workload, size, program)

    def why_not(self, workload, size, program, number):
        if size > self.options.largest:
            return "not run"
        if not (self.build / program).exists():
            return "not built"
        if time.monotonic() - self.started > self.options.cap:
            return "no time left"
        key = (workload.title, size, program)
        if number > 0 and (key in self.reasons or self.seconds.get(key, 0) > 10):
            return "once only"
        before = [(workload.title, smaller, program) for smaller in workload.sizes if smaller < size]
        if any(self.reasons.get(other) == self.too_long() for other in before):
            return self.too_long()
        if before and self.seconds.get(before[-1], 0) > self.options.longest / 4:
            return self.too_long()
        return None

    def too_long(self):
        return f"over {self.options.longest} s"

    def call(self, workload, size, program):
        key = (workload.title, size, program)
        work = "a" if program == LIMIT and workload.work == "W1" else workload.work
        command = [self.build / program, work, str(size), "1", workload.variants[program]]
        began = time.monotonic()
        try:
            done = subprocess.run(command, cwd=self.build, timeout=self.options.longest, text=True,
                                  stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, preexec_fn=limit_memory)
        except subprocess.TimeoutExpired:
            self.reasons[key] = self.too_long()
            return
        self.seconds[key] = time.monotonic() - began
        print(f"[{began - self.started:4.0f} s] {program} {workload.title} {size}", file=self.options.progress)
        if done.returncode != 0:
            self.reasons[key] = f"failed ({done.returncode})"
        self.keep(workload, size, program, done.stdout)

    def keep(self, workload, size, program, text):
        """The first figure of each unit counts; of plain C++, the best."""
        found = {}
        for line in text.splitlines():
            self.log.write(f"{line}\t{program}\n")
            mark, work, _, _, what, _, median, _, unit, _ = line.split("\t")
            if mark != "R" or work != workload.work or "once" in what or "peak" in what:
                continue
            if program == LIMIT and not what.startswith(workload.limit_rows):
                continue
            value = float(median)
            found[unit] = min(value, found.get(unit, value)) if program == LIMIT else found.get(unit, value)
        for unit, value in found.items():
            figures = self.medians.setdefault(Row(workload.title, size, unit), {})
            figures.setdefault(program, []).append(value)

    def table(self):
        yield "| | N | unit | ours | spread | " + " | ".join(PROGRAMS.values()) + " |"
        yield "|---|---:|---|---:|---:|" + "---:|" * len(PROGRAMS)
        for row, figures in self.medians.items():
            if OURS not in figures:
                continue
            ours = statistics.median(figures[OURS])
            spread = max(figures[OURS]) / min(figures[OURS])
            cells = [self.cell(row, program, figures, ours) for program in PROGRAMS]
            yield (f"| {row.workload} | {row.size:.0e} | {row.unit} | {ours:.3g} | {spread:.2f} | "
                   + " | ".join(cells) + " |").replace("e+0", "e")

    def cell(self, row, program, figures, ours):
        if program not in figures:
            return self.reasons.get((row.workload, row.size, program), "")
        theirs = statistics.median(figures[program])
        return f"{theirs:.3g} ({theirs / ours:.2f})"


def limit_memory():
    resource.setrlimit(resource.RLIMIT_AS, (LOAD_LIMIT, LOAD_LIMIT))


def parse_options():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("build", type=pathlib.Path, help="where the programs are")
    parser.add_argument("--filter", default=".", help="regular expression on, for example, 'W2 line 1000000'")
    parser.add_argument("--quick", action="store_true", help="one round, sizes up to 1e6, calls up to 15 s")
    options = parser.parse_args()
    options.rounds, options.largest, options.longest = (1, 10**6, 15) if options.quick else (2, 10**7, 75)
    options.cap = 1300  # seconds, after which nothing new is started
    options.progress = open(os.devnull if not os.isatty(2) else "/dev/stderr", "w", encoding="utf-8")
    return options


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as text:
        names = re.findall(r"^model name\s*:\s*(.*)$", text.read(), re.MULTILINE)
    load = " ".join(f"{value:.1f}" for value in os.getloadavg())
    return f"{os.cpu_count()} x {names[0] if names else 'unknown processor'}, load {load}"


def main():
    options = parse_options()
    os.environ.update(QT_QPA_PLATFORM="offscreen", LC_ALL="C.UTF-8")
    runtime = options.build / "runtime"
    runtime.mkdir(mode=0o700, exist_ok=True)
    os.environ["XDG_RUNTIME_DIR"] = str(runtime)
    print(machine())
    comparison = Comparison(options.build, options)
    comparison.run()
    print(f"{machine()}; {time.monotonic() - comparison.started:.0f} s in all")
    print("Medians; in brackets theirs divided by ours. Spread: our largest median over our smallest.\n")
    print("\n".join(comparison.table()))


if __name__ == "__main__":
    main()
