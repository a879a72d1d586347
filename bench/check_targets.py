#!/usr/bin/env python3
"""Prints a table per benchmark JSON, every target met or missed, and a summary line at the end;
exits non-zero when a target is missed.

    check_targets.py [--allow-missing] build-bench/bench_*.json

A target whose benchmark is not in the JSON counts as missed ("not run"), unless --allow-missing
is given (a run filtered to some benchmarks). A run with --benchmark_repetitions is read from its
median aggregates (names ending in _median); other runs from their single result.
"""
import fnmatch
import json
import os
import sys

# benchmark program: {benchmark name (without /iterations and /manual_time): (counter, limit)};
# a limit of None reports the figure without a target. A name may be a pattern (fnmatch: *, ?):
# every benchmark it matches has the target, and it is missed when it matches none.
TARGETS = {
    # Ratios are medians of per-iteration ratios (bench/benchsupport.h, reportMedians).
    "bench_textselect": {
        "BM_Bind/1000": ("ratio", 1.0), "BM_Bind/10000": ("ratio", 1.0),
        "BM_Bind/100000": ("ratio", 1.0), "BM_ItemMoved/10000": ("ratio", 1.5),
        "BM_MouseMove/10000": ("control_ms", 2.0),
    },
    "bench_lineitems": {
        "BM_Bind/744": ("ratio", 0.7), "BM_Bind/100": ("ratio", None),
        "BM_Rebind/744": ("ratio", 1.0), "BM_ScrollStep/744": ("control_ms", 2.0),
        "BM_RowMemory/744": ("ratio", None), "BM_TableView/744": ("ratio", None),
    },
    "bench_custselect": {
        "BM_Bind/1000": ("ratio", 1.0), "BM_Bind/10000": ("ratio", 1.0),
        "BM_Bind/32767": ("ratio", 1.0), "BM_RemoveAll/1000": ("ratio", 1.0),
        "BM_RemoveAll/10000": ("ratio", 1.0), "BM_RemoveAll/32767": ("ratio", 1.0),
    },
    "bench_package": {},
    # The whole export with 60 four-page cut sheets, written in at most 2 s.
    "bench_cutsheets": {"BM_ExportWithCutSheets": ("control_ms", 2000.0)},
    # Opening the 744-line job: the page the user sees painted within 60 ms (the other pages are
    # bound in idle time after that paint); once idle, every page shown within 50 ms, the first
    # time and later. A tab clicked right after the first paint is reported.
    "bench_workstation": {
        "BM_OpenJob/744": ("control_ms", 60.0),
        "BM_SwitchPage/744/*": ("control_ms", 50.0),
        "BM_SwitchBack/744/*": ("control_ms", 50.0),
        "BM_SwitchAfterFirstPaint/744/*": ("control_ms", None),
    },
    "bench_issue": {"BM_Issue/744": ("ratio", 1.5)},
    # Parse, check, preview and commit 10,000 CSV lines against a plain INSERT loop of them.
    "bench_import": {"BM_ImportLines/10000": ("ratio", 2.0), "BM_ImportLines/1000": ("ratio", None)},
    "bench_store": {
        "BM_ControlWrite": ("control_ms", 2.0), "BM_FillSampleOffice": ("control_ms", None),
        "BM_OpenLargeJob": ("ratio", None),
    },
    # Binding from the SQLite store against the same data in the stand-alone objects.
    # Remove All is a write to the file against a removal in memory: reported, no target.
    "bench_storebind": {
        "BM_LineItems/744": ("ratio", 1.5), "BM_Paragraphs/5000": ("ratio", 1.5),
        "BM_Customers/32767": ("ratio", 1.5), "BM_RemoveAll/1000": ("ratio", None),
        "BM_RemoveAll/32767": ("ratio", None),
    },
}

# Growth counters: (counter, limit, label).
GROWTH = [
    ("growth_100k_over_10k", 12.0, "growth 100k/10k"),
    ("growth_744_over_100", 9.7, "growth 744/100"),
    ("growth_32767_over_10k", 4.3, "growth 32767/10k"),
    ("growth_744_over_20", None, "growth 744/20 lines"),
    ("store_statements", None, "store statements"),
    ("store_statements_per_item", None, "  per item"),
    ("sqlite_read_ms", None, "SQLite's own read, ms"),
    ("ratio_floor", None, "  least ratio with that read"),
]

SUFFIXES = ("/iterations", "/manual_time", "/real_time", "/repeats", "/threads")


def base_name(run):
    """The benchmark's name without Google Benchmark's run options."""
    name = run.get("run_name") or run["name"]
    if run.get("run_type") == "aggregate" and name == run["name"]:
        name = name.rsplit("_", 1)[0]
    for suffix in SUFFIXES:
        name = name.split(suffix)[0]
    return name


def results(runs):
    """One result per benchmark: the median aggregate where there are repetitions."""
    medians = {base_name(r): r for r in runs
               if r.get("run_type") == "aggregate" and r.get("aggregate_name") == "median"}
    out = {}
    for r in runs:
        name = base_name(r)
        if name in medians:
            out[name] = medians[name]
        elif r.get("run_type", "iteration") == "iteration" and name not in out:
            out[name] = r
    return out


def target_of(targets, name):
    if name in targets:
        return name, targets[name]
    for pattern, target in targets.items():
        if fnmatch.fnmatchcase(name, pattern):
            return pattern, target
    return None, ("ratio", None)


class Tally:
    def __init__(self):
        self.count = 0
        self.missed = []
        self.not_run = []

    def record(self, label, met):
        self.count += 1
        if not met:
            self.missed.append(label)


def figure(value):
    return "-" if value is None else f"{value:.3f}"


def check(path, tally):
    program = os.path.splitext(os.path.basename(path))[0]
    targets = TARGETS.get(program, {})
    try:
        runs = json.load(open(path))["benchmarks"]
    except (OSError, ValueError, KeyError) as e:
        print(f"\n{program}: no results ({e})")
        for name, (_, limit) in targets.items():
            if limit is not None:
                tally.not_run.append(f"{program} {name}")
        return
    found = results(runs)
    matched = set()
    print()
    print(program)
    print(f"{'benchmark':<36}{'control ms':>12}{'Qt ms':>10}{'ratio':>8}  target")
    for name, r in found.items():
        key, (field, limit) = target_of(targets, name)
        if key:
            matched.add(key)
        value = r.get(field)
        label = f"{program} {name}"
        if r.get("error_occurred"):
            target = f"ERROR: {r.get('error_message', '')}"
            if limit is not None:
                tally.record(label, False)
        elif limit is None:
            target = "reported"
        else:
            met = value is not None and value <= limit
            tally.record(f"{label} ({field} {figure(value)} > {limit})" if not met else label, met)
            target = f"{field} <= {limit}: {'met' if met else 'MISSED'}"
        if "control_kib_per_row" in r:
            print(f"{name:<36}  KiB per row: resident {r['control_kib_per_row']:.2f} vs "
                  f"{r['baseline_kib_per_row']:.2f}, heap {r['control_heap_kib_per_row']:.2f} vs "
                  f"{r['baseline_heap_kib_per_row']:.2f}  {target}")
        elif "control_ms" in r and "baseline_ms" in r:
            print(f"{name:<36}{r['control_ms']:>12.3f}{r['baseline_ms']:>10.3f}"
                  f"{r.get('ratio', 0):>8.2f}  {target}")
        elif "control_ms" in r:
            slowest = f" (max {r['control_max_ms']:.1f})" if "control_max_ms" in r else ""
            print(f"{name:<36}{r['control_ms']:>12.3f}{'':>18}  {target}{slowest}")
        else:
            figures = ", ".join(f"{k} {v:.2f}" for k, v in r.items()
                                if isinstance(v, (int, float)) and
                                k.endswith(("_ms", "pages", "pages_100", "pages_744")))
            print(f"{name:<36}  {figures}  {target}")
        for counter, limit, text in GROWTH:
            if counter in r:
                if limit is None:
                    print(f"{'  ' + text:<36}{r[counter]:>30.2f}  reported")
                    continue
                met = r[counter] <= limit
                tally.record(f"{program} {name} {text} ({r[counter]:.2f} > {limit})"
                             if not met else f"{program} {name} {text}", met)
                print(f"{'  ' + text:<36}{r[counter]:>30.2f}  growth <= {limit}: "
                      f"{'met' if met else 'MISSED'}")
    for key, (_, limit) in targets.items():
        if limit is not None and key not in matched:
            print(f"{key:<36}{'':>30}  not run")
            tally.not_run.append(f"{program} {key}")


def main(argv):
    allow_missing = "--allow-missing" in argv
    paths = [a for a in argv if a != "--allow-missing"]
    if not paths:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    tally = Tally()
    for path in paths:
        check(path, tally)
    print()
    not_run = "" if allow_missing or not tally.not_run else \
        f"; not run: {', '.join(tally.not_run)}"
    missed = ", ".join(tally.missed) if tally.missed else "none"
    total = tally.count + (0 if allow_missing else len(tally.not_run))
    print(f"{total} targets, {tally.count - len(tally.missed)} met, missed: {missed}{not_run}")
    failed = tally.missed or (tally.not_run and not allow_missing)
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
