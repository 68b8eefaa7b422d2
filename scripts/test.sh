#!/usr/bin/env bash
# Builds everything and runs every test. With --sanitize, builds and runs the tests
# once more under AddressSanitizer and UndefinedBehaviorSanitizer.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh

run_suite() {
  local dir=$1
  shift
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
  ninja -C "$dir"
  (cd "$dir" && ctest --output-on-failure -j 2)
}

run_suite build -DCMAKE_BUILD_TYPE=RelWithDebInfo
if [ "${1:-}" = "--sanitize" ]; then
  ASAN_OPTIONS=detect_leaks=1 UBSAN_OPTIONS=print_stacktrace=1 \
    run_suite build-sanitize -DCMAKE_BUILD_TYPE=Debug -DOSTIN_SANITIZE=ON
fi
