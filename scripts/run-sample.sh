#!/usr/bin/env bash
# Builds the converter and exports the piano sample of data/examples.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
ninja -C build ostin ostinlight
output=${1:-sample.xml}
./build/bin/ostin export data/examples/piano.json -o "$output" --yes
echo "wrote $output"
