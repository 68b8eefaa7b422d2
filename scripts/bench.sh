#!/usr/bin/env bash
# Builds in Release and runs the benchmarks: a generated score of 40 staves and 400
# measures, made in memory and exported. Arguments go to the benchmark program (for
# example --benchmark_filter=Export); JOBS limits the build's parallel jobs.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
# Warnings stay warnings here: GCC 12 at -O3 reports false -Wrestrict hits in std::string.
cmake -S . -B build-release -G Ninja -DCMAKE_BUILD_TYPE=Release -DBUILD_TESTING=OFF -DOSTIN_WERROR=OFF >/dev/null
ninja -C build-release ${JOBS:+-j "$JOBS"} ostin_bench
./build-release/bin/ostin_bench "$@"
