#!/usr/bin/env bash
# Builds the benchmarks in a Release tree and runs every one of them on the offscreen platform:
# each bench_* target the build defines (the paragraph list, the line item viewer, the customer
# panel, the package export, the cut sheets, the store, the import, the workstation opening a
# job, the issue, ...). Each writes its JSON to build-bench/<name>.json; bench/check_targets.py
# then prints the table of each, every target met or missed and a summary line, and exits
# non-zero when a target is missed.
#   bench/run.sh                                   every benchmark
#   BENCHES="bench_lineitems bench_store" bench/run.sh   only those named
#   bench/run.sh --benchmark_filter=BM_Bind        arguments go to every benchmark program
# A run limited by BENCHES or by arguments checks only the targets of what ran.
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/common.sh"
root="$ZEB_ROOT"
build="$root/build-bench"
zeb_ensure_packages "${ZEB_PACKAGES[@]}" libbenchmark-dev python3

cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DZEB_BUILD_BENCH=ON \
      -DZEB_BUILD_TESTS=OFF -DZEB_BUILD_WORKBENCH=ON >/dev/null

# The benchmark programs this tree defines: the executables the build links in bench/.
mapfile -t defined < <(ninja -C "$build" -t targets all |
  sed -n 's|^bench/\(bench_[A-Za-z0-9_]*\): CXX_EXECUTABLE_LINKER.*|\1|p' | sort -u)
if [ "${#defined[@]}" -eq 0 ]; then
  echo "bench/run.sh: the build in $build defines no benchmark" >&2
  exit 1
fi
partial=()
if [ -n "${BENCHES:-}" ]; then
  benches=()
  for bench in $BENCHES; do
    if printf '%s\n' "${defined[@]}" | grep -qx "$bench"; then
      benches+=("$bench")
    else
      echo "bench/run.sh: no benchmark named $bench (there are: ${defined[*]})" >&2
      exit 1
    fi
  done
  partial=(--allow-missing)
else
  benches=("${defined[@]}")
fi
[ "$#" -gt 0 ] && partial=(--allow-missing)

ninja -C "$build" -j2 "${benches[@]}"

jsons=()
status=0
for bench in "${benches[@]}"; do
  echo "== $bench" >&2
  rm -f "$build/$bench.json"
  # A program that fails still leaves the others to run; its targets then count as not run.
  QT_QPA_PLATFORM=offscreen QT_LOGGING_RULES='zeb.*=false' "$build/bench/$bench" \
      --benchmark_out="$build/$bench.json" --benchmark_out_format=json "$@" || {
    status=$?
    echo "bench/run.sh: $bench exited with $status" >&2
  }
  jsons+=("$build/$bench.json")
done

python3 "$root/bench/check_targets.py" "${partial[@]}" "${jsons[@]}" && exit "$status"
