#!/usr/bin/env bash
# Sets up, builds every test with AddressSanitizer and UndefinedBehaviorSanitizer, runs them all.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/setup.sh
cmake -S . -B build-asan -G Ninja -DCMAKE_BUILD_TYPE=Debug -DORV_SANITIZE=ON \
      -DORV_BUILD_BENCH=OFF -DORV_BUILD_EXAMPLES=OFF -DCMAKE_CXX_FLAGS_DEBUG="-g1 -O1"
cmake --build build-asan
export ASAN_OPTIONS=detect_leaks=1:abort_on_error=1
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1
ctest --test-dir build-asan --output-on-failure -j "$(nproc)"
