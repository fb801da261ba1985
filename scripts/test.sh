#!/usr/bin/env bash
# Builds quorel from nothing and runs all its tests:
#   1. the whole suite in an optimised build;
#   2. the whole suite under AddressSanitizer + UndefinedBehaviorSanitizer;
#   3. the whole suite again under ThreadSanitizer (threads, allocator, dialogs);
#   4. an outside project built against the installed package, with CMake and pkg-config;
#   5. the fuzz targets (clang, libFuzzer) for QUOREL_FUZZ_SECONDS each (default 60).
# Usage: scripts/test.sh [--quick]   (--quick runs step 1 only)
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/dependencies.sh
install_packages "${QUOREL_BUILD_PACKAGES[@]}" "${QUOREL_TEST_PACKAGES[@]}"

quick=false
[ "${1:-}" = "--quick" ] && quick=true
jobs=$(nproc)

configure_and_build() {
    local dir=$1
    shift
    cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
    cmake --build "$dir" -j "$jobs"
}

echo "== Optimised build, all tests"
configure_and_build build/release -DCMAKE_BUILD_TYPE=RelWithDebInfo
ctest --test-dir build/release --output-on-failure -j "$jobs"
$quick && exit 0

echo "== AddressSanitizer + UndefinedBehaviorSanitizer, all tests"
configure_and_build build/asan -DCMAKE_BUILD_TYPE=Debug -DQUOREL_SANITIZE=address,undefined -DQUOREL_BUILD_EXAMPLES=OFF
ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1 \
    ctest --test-dir build/asan --output-on-failure -j "$jobs"

echo "== ThreadSanitizer, all tests"
configure_and_build build/tsan -DCMAKE_BUILD_TYPE=Debug -DQUOREL_SANITIZE=thread -DQUOREL_BUILD_EXAMPLES=OFF
TSAN_OPTIONS="halt_on_error=1:second_deadlock_stack=1:suppressions=$PWD/scripts/tsan.supp" \
    ctest --test-dir build/tsan --output-on-failure -j "$jobs"

echo "== An outside project against the installed package"
prefix=$PWD/build/install
rm -rf "$prefix" build/consumer
cmake --install build/release --prefix "$prefix" >/dev/null
cmake -S examples/consumer -B build/consumer -G Ninja -DCMAKE_PREFIX_PATH="$prefix" >/dev/null
cmake --build build/consumer
build/consumer/quorel_consumer
PKG_CONFIG_PATH=$(dirname "$(find "$prefix" -name quorel.pc)")
export PKG_CONFIG_PATH
g++ examples/consumer/main.cpp -o build/consumer/quorel_consumer_pc $(pkg-config --cflags --libs quorel) \
    -Wl,-rpath,"$prefix/lib"
build/consumer/quorel_consumer_pc
echo "== Fuzz targets"
scripts/fuzz.sh "${QUOREL_FUZZ_SECONDS:-60}"
echo "== All tests passed"
