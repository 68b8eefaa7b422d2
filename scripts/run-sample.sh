#!/usr/bin/env bash
# Builds the converter and exports the sample document that ships in data/.
set -euo pipefail
cd "$(dirname "$0")/.."
./scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
ninja -C build ostin ostinlight
output=${1:-sample.xml}
./build/bin/ostin export data/sample.json -o "$output" --yes
echo "wrote $output"
