#!/usr/bin/env bash
# Runs the tests from outside again and again on a busy machine, and stops at the first that fails.
#   Tests/EndToEnd/under_load.sh [ROUNDS [LOOPS [FOLDER]]]
# ROUNDS, 5 without a number, run beside so many busy LOOPS, 3 without a number. FOLDER is where the programs
# were built; without it, build/outside.
set -euo pipefail

root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"
rounds="${1:-5}"
loops="${2:-3}"
folder="${3:-$root/build/outside}"
for number in "$rounds" "$loops"; do
    if [[ ! $number =~ ^[0-9]+$ ]]; then
        echo "under_load.sh: $number is not a number" >&2
        exit 2
    fi
done
if ((rounds == 0)); then
    echo "under_load.sh: no round would show nothing" >&2
    exit 2
fi
if [[ ! -f $folder/CTestTestfile.cmake ]]; then
    echo "under_load.sh: nothing with tests was built in $folder" >&2
    exit 2
fi

started=()
endStarted() {
    ((${#started[@]} == 0)) || kill "${started[@]}" 2>/dev/null || true
}
trap endStarted EXIT
trap 'exit 130' INT
trap 'exit 143' TERM
# The loops look for this script themselves too, for it may be killed.
for ((number = 0; number < loops; number++)); do
    bash -c 'while kill -0 "$1" 2>/dev/null; do for ((step = 0; step < 100000; step++)); do :; done; done' busy $$ &
    started+=($!)
done

for ((round = 1; round <= rounds; round++)); do
    echo "==> Round $round of $rounds beside $loops busy loops"
    # A test that reads from the terminal would wait for ever in an unattended run.
    ctest --test-dir "$folder" -L '^e2e$' --no-tests=error --stop-on-failure --output-on-failure \
        --parallel "$(getconf _NPROCESSORS_ONLN)" </dev/null &
    # Waited for, so that a signal to this script is heeded at once.
    started[loops]=$!
    wait "${started[loops]}"
done
