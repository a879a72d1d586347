#!/usr/bin/env bash
# Builds the benchmarks in a Release tree and runs them on the offscreen platform: the paragraph
# list, the line item viewer, the customer panel, the package export (also with cut sheets), the SQLite store and the
# workstation opening a job. Each writes its JSON to
# build-bench/<name>.json; bench/check_targets.py prints the table of each and exits non-zero when
# a target is missed. Arguments go to every benchmark program (e.g. --benchmark_filter=BM_Bind);
# BENCHES="bench_lineitems" runs only the ones named.
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"
root="$ZEB_ROOT"
build="$root/build-bench"
zeb_ensure_packages "${ZEB_PACKAGES[@]}" libbenchmark-dev python3

benches=(${BENCHES:-bench_textselect bench_lineitems bench_custselect bench_package bench_cutsheets bench_store bench_storebind bench_workstation bench_issue})

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZEB_BUILD_BENCH=ON \
      -DZEB_BUILD_TESTS=OFF -DZEB_BUILD_WORKBENCH=ON >/dev/null
ninja -C "$build" -j2 "${benches[@]}"

jsons=()
for bench in "${benches[@]}"; do
  QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='zeb.*=false' "$build/bench/$bench" \
      --benchmark_out="$build/$bench.json" --benchmark_out_format=json "$@"
  jsons+=("$build/$bench.json")
done

python3 "$root/bench/check_targets.py" "${jsons[@]}"
