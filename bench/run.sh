#!/usr/bin/env bash
# Builds the benchmarks in a Release tree and runs the paragraph list's and the customer panel's
# benchmarks on the offscreen platform. JSON goes to build-bench/bench_textselect.json and
# build-bench/bench_custselect.json; a table of the ratios follows each. Exits non-zero when any
# target is missed.
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"
root="$ZEB_ROOT"
build="$root/build-bench"
zeb_ensure_packages "${ZEB_PACKAGES[@]}" libbenchmark-dev python3

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZEB_BUILD_BENCH=ON \
      -DZEB_BUILD_TESTS=OFF -DZEB_BUILD_WORKBENCH=OFF >/dev/null
ninja -C "$build" -j2 bench_textselect bench_custselect
status=0

QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='zeb.*=false' "$build/bench/bench_textselect" \
    --benchmark_out="$build/bench_textselect.json" --benchmark_out_format=json "$@"

python3 - "$build/bench_textselect.json" <<'PY' || status=1
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

QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='zeb.*=false' "$build/bench/bench_custselect" \
    --benchmark_out="$build/bench_custselect.json" --benchmark_out_format=json "$@"

python3 - "$build/bench_custselect.json" <<'PY' || status=1
import json, sys

runs = json.load(open(sys.argv[1]))["benchmarks"]
print()
print(f"{'benchmark':<22}{'control ms':>12}{'Qt ms':>10}{'ratio':>8}  target")
ok = True
for r in runs:
    name = r["name"].split("/manual_time")[0].split("/iterations")[0]
    met = r["ratio"] <= 1.5
    ok = ok and met
    print(f"{name:<22}{r['control_ms']:>12.3f}{r['baseline_ms']:>10.3f}{r['ratio']:>8.2f}  "
          f"ratio <= 1.5: {'met' if met else 'MISSED'}")
    if "growth_32767_over_10k" in r:
        growth = r["growth_32767_over_10k"]
        met = growth <= 4.3
        ok = ok and met
        print(f"{'  growth 32767/10k':<22}{growth:>30.2f}  growth <= 4.3: {'met' if met else 'MISSED'}")
sys.exit(0 if ok else 1)
PY
exit "$status"
