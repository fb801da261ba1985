#!/usr/bin/env bash
# Builds quorel's libFuzzer targets with clang (AddressSanitizer and
# UndefinedBehaviorSanitizer on the whole build) and runs each for a bounded
# time, starting from its seed corpus: every directory fuzz/corpus/<target>/
# belongs to the executable quorel_fuzz_<target>.  New inputs go
# to build/fuzz/corpus/<target>/; a crash, leak or sanitizer report fails the
# script and leaves the input behind in build/fuzz/artifacts/.
# Usage: scripts/fuzz.sh [SECONDS_PER_TARGET]   (default 60)
set -euo pipefail
cd "$(dirname "$0")/.."
source scripts/dependencies.sh
install_packages "${QUOREL_BUILD_PACKAGES[@]}" clang libclang-rt-14-dev

seconds=${1:-60}
targets=(calculate utf8_number bytestream_rle bytestream_values)

CC=clang CXX=clang++ cmake -S . -B build/fuzz -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DQUOREL_BUILD_FUZZERS=ON -DQUOREL_SANITIZE=address,undefined \
    -DQUOREL_BUILD_TESTS=OFF -DQUOREL_BUILD_EXAMPLES=OFF >/dev/null
cmake --build build/fuzz -j "$(nproc)" --target "${targets[@]/#/quorel_fuzz_}"

mkdir -p build/fuzz/artifacts
for target in "${targets[@]}"; do
    echo "== Fuzzing $target for ${seconds} s"
    mkdir -p "build/fuzz/corpus/$target"
    ASAN_OPTIONS=detect_leaks=1:abort_on_error=1 UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1 \
        "build/fuzz/fuzz/quorel_fuzz_$target" -max_total_time="$seconds" -max_len=4096 -timeout=30 \
        -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="build/fuzz/artifacts/$target-" \
        "build/fuzz/corpus/$target" "fuzz/corpus/$target"
done
echo "== Fuzzing found nothing"
