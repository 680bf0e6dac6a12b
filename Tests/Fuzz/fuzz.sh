#!/usr/bin/env bash
# fuzz.sh PROGRAM SCRATCH [OPTION OF libFuzzer...]: runs one fuzzer from its corpus. What it finds on the way
# is collected in SCRATCH/found, what makes it fail lies in SCRATCH as crash-*, slow-unit-* and so on;
# the program with such a file as its only argument shows the failure again.
#
# For long, one after the other, an hour each:
#   cmake --preset fuzz && cmake --build --preset fuzz --target fuzzers
#   for fuzzer in build/fuzz/bin/fuzz_*; do
#       Tests/Fuzz/fuzz.sh "$fuzzer" "build/fuzz/long/${fuzzer##*_}" -max_total_time=3600
#   done
#
# TAVRO_FUZZ_SECONDS: so long instead of what the options say. TAVRO_RANDOM_SEED: "fresh" for other inputs each time,
# or the number of the run to repeat.
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
program="$1"
scratch="$2"
shift 2

name="$(basename "$program")"
name="${name#fuzz_}"
corpus="$here/Corpus/$name"
options=(-timeout=10 -rss_limit_mb=2048 -print_final_stats=1 "-artifact_prefix=$scratch/")
if [[ -f $here/Corpus/$name.dict ]]; then
    options+=("-dict=$here/Corpus/$name.dict")
fi
if [[ -z $(ls -A "$corpus") ]]; then
    echo "$corpus is empty: nothing to begin with"
    exit 1
fi

# From the corpus alone each time, so that a run can be repeated.
rm -rf "$scratch"
mkdir -p "$scratch/found"
# The last of several options of one name counts.
if [[ -n ${TAVRO_FUZZ_SECONDS:-} ]]; then
    set -- "$@" -runs=-1 "-max_total_time=$TAVRO_FUZZ_SECONDS"
fi
if [[ ${TAVRO_RANDOM_SEED:-} == fresh ]]; then
    TAVRO_RANDOM_SEED="$((RANDOM * 32768 + RANDOM + 1))"
fi
if [[ -n ${TAVRO_RANDOM_SEED:-} ]]; then
    echo "Random inputs: TAVRO_RANDOM_SEED=$TAVRO_RANDOM_SEED"
    set -- "$@" "-seed=$TAVRO_RANDOM_SEED"
fi
exec "$program" "${options[@]}" "$@" "$scratch/found" "$corpus"
