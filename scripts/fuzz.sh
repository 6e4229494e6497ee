#!/usr/bin/env bash
# Installs what is missing, builds the fuzz targets under AddressSanitizer and UndefinedBehaviorSanitizer, and runs each for SECONDS, 30 if
# nothing is said: scripts/fuzz.sh [SECONDS [TARGET...]]. What stops one lies in build/fuzz/found.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

seconds=${1:-30}
shift || true
need build sanitize
build fuzz

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for source in fuzz/*.cpp; do
        target=$(basename "$source" .cpp)
        [ ! -x "build/fuzz/fuzz/fuzz_$target" ] || targets+=("$target")
    done
fi
mkdir -p build/fuzz/found
export UBSAN_OPTIONS=print_stacktrace=1
run() {
    local target=$1 log=build/fuzz/$1.log seeds=fuzz/seeds/$1
    mkdir -p "build/fuzz/corpus/$target" "$seeds"
    "build/fuzz/fuzz/fuzz_$target" -max_total_time="$seconds" -timeout=20 -rss_limit_mb=2048 -max_len=65536 -print_final_stats=1 \
        -artifact_prefix="build/fuzz/found/$target-" "build/fuzz/corpus/$target" "$seeds" >"$log" 2>&1 || {
        grep -v '^#' "$log" | tail -60
        return 1
    }
    printf '%-16s %10s inputs, %6s places reached\n' "$target" "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" \
        "$(sed -n 's/.* cov: \([0-9]*\) .*/\1/p' "$log" | tail -1)"
}
export -f run
export seconds
say "fuzzing ${#targets[@]} targets, $seconds s each"
printf '%s\n' "${targets[@]}" | xargs -n 1 -P "$(nproc)" bash -c 'run "$1"' run || fail "a fuzz target has found something: build/fuzz/found"
