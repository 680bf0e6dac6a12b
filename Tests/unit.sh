#!/usr/bin/env bash
# unit.sh REPORT TRIALS PROGRAM [ARGUMENT...]: runs a program of unit tests, each property with so many trials, and
# leaves what became of its cases in REPORT.
#
# TAVRO_RANDOM_SEED: not set, the same trials each time, so that a failure is one of the change it comes with;
# "fresh", others each time, and the cases in another order; a number, those of the run that printed it.
set -euo pipefail

report="$1"
trials="$2"
shift 2

seed="${TAVRO_RANDOM_SEED:-1}"
order=()
if [[ $seed == fresh ]]; then
    seed="$((RANDOM * 32768 + RANDOM))"
fi
if [[ -n ${TAVRO_RANDOM_SEED:-} ]]; then
    echo "Random trials and order of the cases: TAVRO_RANDOM_SEED=$seed"
    order=(--gtest_shuffle "--gtest_random_seed=$((seed % 99999 + 1))")
fi
export RC_PARAMS="seed=$seed max_success=$trials${RC_PARAMS:+ $RC_PARAMS}"

# What an earlier run left must not be taken for this one's.
rm -f "$report"
exec "$@" "--gtest_output=xml:$report" --gtest_brief=1 ${order[@]+"${order[@]}"}
