#!/usr/bin/env python3
"""Prints a table per benchmark JSON and exits non-zero when a target is missed."""
import json
import os
import sys

# benchmark program: {benchmark name (without /iterations and /manual_time): (counter, limit)};
# a limit of None reports the figure without a target.
TARGETS = {
    "bench_textselect": {
        "BM_Bind/1000": ("ratio", 1.5), "BM_Bind/10000": ("ratio", 1.5),
        "BM_Bind/100000": ("ratio", 1.5), "BM_ItemMoved/10000": ("ratio", 1.5),
        "BM_MouseMove/10000": ("control_ms", 2.0),
    },
    "bench_lineitems": {
        "BM_Bind/744": ("ratio", 1.0), "BM_Bind/100": ("ratio", None),
        "BM_Rebind/744": ("ratio", 1.0), "BM_ScrollStep/744": ("control_ms", 2.0),
        "BM_RowMemory/744": ("ratio", None), "BM_TableView/744": ("ratio", None),
    },
    "bench_custselect": {
        "BM_Bind/1000": ("ratio", 1.5), "BM_Bind/10000": ("ratio", 1.5),
        "BM_Bind/32767": ("ratio", 1.5), "BM_RemoveAll/1000": ("ratio", 1.5),
        "BM_RemoveAll/10000": ("ratio", 1.5), "BM_RemoveAll/32767": ("ratio", 1.5),
    },
    "bench_package": {},
    # The whole export with 60 four-page cut sheets, written in at most 2 s.
    "bench_cutsheets": {"BM_ExportWithCutSheets": ("control_ms", 2000.0)},
    "bench_workstation": {},
    "bench_issue": {"BM_Issue/744": ("ratio", 1.5)},
    "bench_store": {
        "BM_ControlWrite": ("control_ms", 2.0), "BM_FillSampleOffice": ("control_ms", None),
        "BM_OpenLargeJob": ("ratio", None),
    },
    # Binding from the SQLite store against the same data in the stand-alone objects.
    "bench_storebind": {
        "BM_LineItems/744": ("ratio", 1.5), "BM_Paragraphs/5000": ("ratio", 1.5),
        "BM_Customers/32767": ("ratio", 1.5), "BM_RemoveAll/1000": ("ratio", 1.5),
        "BM_RemoveAll/32767": ("ratio", 1.5),
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
]


def base_name(run):
    return run["name"].split("/iterations")[0].split("/manual_time")[0].split("/real_time")[0]


def check(path):
    program = os.path.splitext(os.path.basename(path))[0]
    targets = TARGETS.get(program, {})
    runs = json.load(open(path))["benchmarks"]
    ok = True
    print()
    print(program)
    print(f"{'benchmark':<24}{'control ms':>12}{'Qt ms':>10}{'ratio':>8}  target")
    for r in runs:
        name = base_name(r)
        field, limit = targets.get(name, ("ratio", None))
        value = r.get(field)
        if limit is None:
            target = "reported"
        else:
            met = value is not None and value <= limit
            ok = ok and met
            target = f"{field} <= {limit}: {'met' if met else 'MISSED'}"
        if "control_kib_per_row" in r:
            print(f"{name:<24}  KiB per row: resident {r['control_kib_per_row']:.2f} vs "
                  f"{r['baseline_kib_per_row']:.2f}, heap {r['control_heap_kib_per_row']:.2f} vs "
                  f"{r['baseline_heap_kib_per_row']:.2f}  {target}")
        elif "control_ms" in r and "baseline_ms" in r:
            print(f"{name:<24}{r['control_ms']:>12.3f}{r['baseline_ms']:>10.3f}"
                  f"{r.get('ratio', 0):>8.2f}  {target}")
        elif "control_ms" in r:
            print(f"{name:<24}{r['control_ms']:>12.3f}{'':>18}  {target}")
        else:
            figures = ", ".join(f"{k} {v:.2f}" for k, v in r.items()
                                if k.endswith(("_ms", "pages", "pages_100", "pages_744")))
            print(f"{name:<24}  {figures}")
        for counter, limit, label in GROWTH:
            if counter in r:
                if limit is None:
                    print(f"{'  ' + label:<24}{r[counter]:>30.2f}  reported")
                    continue
                met = r[counter] <= limit
                ok = ok and met
                print(f"{'  ' + label:<24}{r[counter]:>30.2f}  growth <= {limit}: "
                      f"{'met' if met else 'MISSED'}")
    return ok


if __name__ == "__main__":
    results = [check(p) for p in sys.argv[1:]]
    sys.exit(0 if all(results) else 1)
