#!/usr/bin/env bash
# tidy.sh ROOT BUILD [FILE...]: clang-tidy 19 over the sources of the project (or the given ones) that BUILD
# compiles, with the checks in .clang-tidy. Headers are checked where they are included.
set -euo pipefail

root="$(cd "$1" && pwd)"
build="$2"
shift 2

tool="$(command -v clang-tidy-19 || command -v clang-tidy)"
if ! "$tool" --version | grep -q 'version 19\.'; then
    echo "$tool is not version 19; others know other checks"
    exit 1
fi

files=("$@")
if ((${#files[@]} == 0)); then
    mapfile -t files < <(sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' "$build/compile_commands.json" |
        grep -F "$root/Sources/" | grep -v -F "$build/" | sort -u)
fi
if ((${#files[@]} == 0)); then
    echo "$build/compile_commands.json lists no source of the project: nothing was checked"
    exit 1
fi

# The commands are those of GCC, some of whose options Clang does not know. It gives way to what runs beside
# it, since it takes minutes of every processor.
printf '%s\0' "${files[@]}" |
    nice -n 19 xargs -0 -n 1 -P "$(getconf _NPROCESSORS_ONLN)" "$tool" -p "$build" --quiet \
        --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-ignored-optimization-argument
echo "${#files[@]} files"
