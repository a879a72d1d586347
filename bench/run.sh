#!/usr/bin/env bash
# Builds the benchmarks in a Release tree and runs the paragraph list's benchmark, then the line
# item viewer's, on the offscreen platform. JSON goes to build-bench/bench_textselect.json and
# build-bench/bench_lineitems.json; a table of the ratios follows each. Exits non-zero when any
# target is missed.
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"
root="$ZEB_ROOT"
build="$root/build-bench"
zeb_ensure_packages "${ZEB_PACKAGES[@]}" libbenchmark-dev python3

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZEB_BUILD_BENCH=ON \
      -DZEB_BUILD_TESTS=OFF -DZEB_BUILD_WORKBENCH=OFF >/dev/null
ninja -C "$build" -j2 bench_textselect bench_lineitems
status=0

QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='zeb.*=false' "$build/bench/bench_textselect" \
    --benchmark_out="$build/bench_textselect.json" --benchmark_out_format=json "$@"

if python3 - "$build/bench_textselect.json" <<'PY'
import json, sys

runs = json.load(open(sys.argv[1]))["benchmarks"]
limits = {"BM_Bind": ("ratio", 1.5), "BM_ItemMoved": ("ratio", 1.5),
          "BM_MouseMove": ("control_ms", 2.0)}
print()
print(f"{'benchmark':<22}{'control ms':>12}{'Qt ms':>10}{'ratio':>8}  target")
ok = True
for r in runs:
    name = r["name"].split("/manual_time")[0].split("/iterations")[0]
    base = name.split("/")[0]
    field, limit = limits.get(base, ("ratio", None))
    value = r.get(field)
    met = value is not None and limit is not None and value <= limit
    ok = ok and met
    target = f"{field} <= {limit}: {'met' if met else 'MISSED'}"
    print(f"{name:<22}{r['control_ms']:>12.3f}{r['baseline_ms']:>10.3f}{r['ratio']:>8.2f}  {target}")
    if "growth_100k_over_10k" in r:
        growth = r["growth_100k_over_10k"]
        met = growth <= 12
        ok = ok and met
        print(f"{'  growth 100k/10k':<22}{growth:>30.2f}  growth <= 12: {'met' if met else 'MISSED'}")
sys.exit(0 if ok else 1)
PY
then :; else status=1; fi

QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='zeb.*=false' "$build/bench/bench_lineitems" \
    --benchmark_out="$build/bench_lineitems.json" --benchmark_out_format=json "$@"

if python3 - "$build/bench_lineitems.json" <<'PY'
import json, sys

runs = json.load(open(sys.argv[1]))["benchmarks"]
# benchmark: (counter, limit); None reports without a target.
limits = {"BM_Bind/744": ("ratio", 1.0), "BM_Bind/100": ("ratio", None),
          "BM_Rebind/744": ("ratio", 1.0), "BM_ScrollStep/744": ("control_ms", 2.0),
          "BM_RowMemory/744": ("ratio", None), "BM_TableView/744": ("ratio", None)}
print()
print(f"{'benchmark':<22}{'control ms':>12}{'Qt ms':>10}{'ratio':>8}  target")
ok = True
for r in runs:
    name = r["name"].split("/iterations")[0].split("/manual_time")[0]
    field, limit = limits.get(name, ("ratio", None))
    value = r.get(field)
    if limit is None:
        target = "reported"
    else:
        met = value is not None and value <= limit
        ok = ok and met
        target = f"{field} <= {limit}: {'met' if met else 'MISSED'}"
    if name.startswith("BM_RowMemory"):
        print(f"{name:<22}  KiB per row: resident {r['control_kib_per_row']:.2f} vs "
              f"{r['baseline_kib_per_row']:.2f}, heap {r['control_heap_kib_per_row']:.2f} vs "
              f"{r['baseline_heap_kib_per_row']:.2f}  {target}")
        continue
    print(f"{name:<22}{r['control_ms']:>12.3f}{r['baseline_ms']:>10.3f}{r['ratio']:>8.2f}  {target}")
    if "growth_744_over_100" in r:
        growth = r["growth_744_over_100"]
        met = growth <= 9.7
        ok = ok and met
        print(f"{'  growth 744/100':<22}{growth:>30.2f}  growth <= 9.7: {'met' if met else 'MISSED'}"
              f" (hand-written: {r.get('baseline_growth_744_over_100', 0):.2f})")
sys.exit(0 if ok else 1)
PY
then :; else status=1; fi
exit $status
