#!/usr/bin/env bash
# Benchmarks against the anchor libraries, in one command: installs the anchors when they are
# missing (as root), builds the `bench` preset, runs every benchmark with repetitions and writes
# build/bench/report.md with the LU chart build/bench/lu_scaling.svg beside it.
#
# Arguments go to the benchmark program, e.g. `bash scripts/bench.sh --benchmark_filter=lu/`.
# BENCH_REPETITIONS (default 5) sets the repetitions whose median the report shows.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/deps.sh libeigen3-dev libopenblas-dev liblapacke-dev libgsl-dev libboost-math-dev \
  libocct-foundation-dev libcgal-dev python3

cmake --preset bench
cmake --build --preset bench

out=build/bench
# One thread for OpenBLAS, as ours runs on the caller's thread (the program also sets it).
export OPENBLAS_NUM_THREADS=1
"$out/bench/znmt64_bench" \
  --benchmark_repetitions="${BENCH_REPETITIONS:-5}" \
  --benchmark_report_aggregates_only=true --benchmark_enable_random_interleaving=true \
  --benchmark_out="$out/results.json" --benchmark_out_format=json \
  "$@"
python3 bench/report.py "$out/results.json" "$out/report.md" "$out/lu_scaling.svg"
echo "report: $out/report.md (chart: $out/lu_scaling.svg)"
