#!/usr/bin/env bash
# Builds in Release and runs the benchmarks: a generated score of 40 staves and 400
# measures, made in memory and exported. Prints Google Benchmark's table, then one line per
# benchmark: "export 40 staves x 400 measures: 1.23 s, peak 456 MB". Arguments go to the
# benchmark program (for example --benchmark_filter=Export); JOBS limits the build's
# parallel jobs.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
cmake -S . -B build-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF -DOSTIN_WERROR=ON >/dev/null
ninja -C build-release ${JOBS:+-j "$JOBS"} ostin_bench
./build-release/bin/ostin_bench "$@"
