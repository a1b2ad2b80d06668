#!/usr/bin/env bash
# Runs each fuzz target for the given number of seconds; stops at the first crash, leak or undefined
# behaviour (libFuzzer exits non-zero and leaves the input as BUILD_DIR/crash-* or leak-*).
# Usage: scripts/run-fuzzers.sh BUILD_DIR SECONDS
set -euo pipefail
build=$1
seconds=$2
cd "$(dirname "$0")/.."
export ASAN_OPTIONS=detect_leaks=1:halt_on_error=1
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
# libFuzzer cuts every seed to max_len on loading: it must exceed the largest example (67 KB) or the
# module example would only ever be seen truncated.
max_len=131072

run() {
    local target=$1
    shift
    local corpus="$build/corpus-${target#fuzz_}"
    mkdir -p "$corpus"
    echo "== $target for ${seconds}s"
    local log="$build/$target.log"
    if ! "$build/fuzz/$target" -max_total_time="$seconds" -dict=fuzz/xml.dict -max_len=$max_len -timeout=20 \
        -print_final_stats=1 -artifact_prefix="$build/" "$corpus" "$@" > "$log" 2>&1; then
        grep -v "^#[0-9]" "$log" | tail -n 60
        echo "$target failed; the input that did it is in $build/ (crash-*, leak-*, timeout-*)" >&2
        return 1
    fi
    grep -E "^(Done|stat::)" "$log" | sed 's/^/   /'
    echo "   corpus: $(ls "$corpus" | wc -l) files in $corpus"
}

run fuzz_product fuzz/seeds/product examples/module examples/ic
run fuzz_esi fuzz/seeds/esi examples/esi
