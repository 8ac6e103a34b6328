#!/usr/bin/env bash
# Sets up, builds the release tree and runs the main program with the arguments given.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake -S . -B build -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build build
exec build/examples/orv_example_customers "$@"
