#!/usr/bin/env bash
# Installs the Debian packages the build and the tests need, where they are missing.
set -euo pipefail

packages=(cmake ninja-build g++ libxml2-dev libxslt1-dev nlohmann-json3-dev libgtest-dev libgmock-dev libbenchmark-dev clang-format)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -eq 0 ]; then
  exit 0
fi

if [ "$(id -u)" -ne 0 ]; then
  echo "setup: missing packages: ${missing[*]}" >&2
  echo "setup: install them as root with: apt-get update && apt-get install -y ${missing[*]}" >&2
  exit 1
fi

echo "setup: installing ${missing[*]}"
export DEBIAN_FRONTEND=noninteractive
apt-get update -qq
apt-get install -y -qq "${missing[@]}" >/dev/null
