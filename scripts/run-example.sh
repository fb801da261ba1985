#!/usr/bin/env bash
# Builds quorel and its example host from nothing and runs the host.
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/dependencies.sh
install_packages "${QUOREL_BUILD_PACKAGES[@]}"
cmake -S . -B build/example -G Ninja -DCMAKE_BUILD_TYPE=Release -DQUOREL_BUILD_TESTS=OFF >/dev/null
cmake --build build/example -j "$(nproc)"
build/example/examples/quorel_example_host
