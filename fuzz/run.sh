#!/usr/bin/env bash
# Runs the fuzz targets built by the fuzz preset, one after another, each for a bounded time, from
# the checked-in seeds in fuzz/corpus/<target>/ plus what earlier runs found (build/fuzz/corpus/).
# Any crash, sanitizer report, leak, failed check or 10-second hang fails the run; the input is
# kept in build/fuzz/findings/.
#
#   bash fuzz/run.sh [seconds per target] [target ...]     (default: 60 s, every target)
#   e.g. bash fuzz/run.sh 600 geometry
# FUZZ_SEED fixes libFuzzer's random seed (default 0: a new one each run). The test command fixes
# it, so that a gate that passed once passes again on the same code, up to how far it gets in time.
set -euo pipefail
cd "$(dirname "$0")/.."
secs=${1:-60}
shift || true
bin=build/fuzz/fuzz
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for f in "$bin"/fuzz_*; do targets+=("${f##*/fuzz_}"); done
fi
mkdir -p build/fuzz/findings build/fuzz/logs
status=0
for t in "${targets[@]}"; do
  mkdir -p "build/fuzz/corpus/$t" "fuzz/corpus/$t"
  log="build/fuzz/logs/$t.log"
  if "$bin/fuzz_$t" -max_total_time="$secs" -timeout=10 -rss_limit_mb=2048 -print_final_stats=1 -seed="${FUZZ_SEED:-0}" \
       -artifact_prefix="build/fuzz/findings/$t-" "build/fuzz/corpus/$t" "fuzz/corpus/$t" >"$log" 2>&1; then
    echo "fuzz_$t: $(grep -Eo 'stat::number_of_executed_units: *[0-9]+' "$log" | grep -Eo '[0-9]+$') runs in ${secs}s, no finding"
  else
    echo "fuzz_$t: FINDING (log: $log)"
    tail -n 60 "$log"
    status=1
  fi
done
exit $status
