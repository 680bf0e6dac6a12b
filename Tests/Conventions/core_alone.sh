#!/usr/bin/env bash
# core_alone.sh ROOT SCRATCH COMPILER: configures and builds the core in a project that cannot find Qt, and
# runs a program that has nothing but the core.
set -euo pipefail

root="$1"
scratch="$2"
compiler="$3"

# From nothing each time: what an earlier run found must not help.
rm -rf "$scratch"
cmake -S "$root/Tests/Conventions/CoreAlone" -B "$scratch" -G Ninja --log-level=WARNING \
    -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_BUILD_TYPE=Debug -DCMAKE_UNITY_BUILD=ON -DTAVRO_WARNINGS_AS_ERRORS=ON
if grep -i 'qt6' "$scratch/CMakeCache.txt" | grep -v '^CMAKE_DISABLE_FIND_PACKAGE_Qt6'; then
    echo "Configuring the core looked for Qt"
    exit 1
fi
cmake --build "$scratch"

# That this one compiles proves that the others fail for want of Qt and for nothing else.
cmake --build "$scratch" --target reaches_0
for number in 1 2 3; do
    if output="$(cmake --build "$scratch" --target "reaches_$number" 2>&1)"; then
        echo "Qt is within reach of the core: this compiles with its include path:"
        cat "$scratch/reaches_$number.cpp"
        exit 1
    elif ! grep -E 'No such file|file not found' <<<"$output"; then
        echo "$output"
        exit 1
    fi
done
"$scratch/core_alone"
