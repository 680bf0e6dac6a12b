#!/usr/bin/env bash
# tidy.sh ROOT BUILD [FILE...]: clang-tidy 19 over the sources that the change at hand touches (or the given ones, or
# all with TAVRO_TIDY=everything) and that BUILD compiles, with the checks in .clang-tidy. Headers are checked where
# they are included.
set -euo pipefail

root="$(cd "$1" && pwd)"
build="$2"
shift 2

tool="$(command -v clang-tidy-19 || command -v clang-tidy)"
if [[ $("$tool" --version) != *'version 19.'* ]]; then
    echo "$tool is not version 19; others know other checks"
    exit 1
fi

# everySource: those of the project that BUILD compiles.
everySource() {
    sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' "$build/compile_commands.json" |
        awk -v sources="$root/Sources/" -v build="$build/" 'index($0, sources) == 1 && index($0, build) != 1' |
        sort -u
}

# changedFiles: relative to ROOT, since the commit that the change began with.
changedFiles() {
    local base
    # On the main branch itself a change is its last commit.
    base="$(git merge-base HEAD origin/main 2>/dev/null || git merge-base HEAD main 2>/dev/null || true)"
    if [[ -z $base || $base == "$(git rev-parse HEAD)" ]]; then
        base=HEAD~1
    fi
    git diff --name-only "$base" -- Sources
    git ls-files --others --exclude-standard -- Sources
}

# sourcesOf: the lines of everySource that are among the changed files, or that a changed header belongs to: the
# source of its name, or else the first that includes it.
sourcesOf() {
    local file stem source
    while IFS= read -r file; do
        stem="${file%.*}"
        source="$(grep -F -x -e "$root/$stem.cpp" -e "$root/$stem.mm" <<<"$every" || true)"
        if [[ -z $source && $file == *.h ]]; then
            source="$(xargs -d '\n' grep -l -F "\"${file#Sources/}\"" <<<"$every" | awk 'NR == 1' || true)"
        fi
        [[ -z $source ]] || printf '%s\n' "$source"
    done | sort -u
}

every="$(everySource)"
if [[ -z $every ]]; then
    echo "$build/compile_commands.json lists no source of the project: nothing was checked"
    exit 1
fi
files=("$@")
if ((${#files[@]} == 0)); then
    # What cannot tell its changes is checked as a whole.
    if [[ ${TAVRO_TIDY:-changes} == everything ]] || ! (cd "$root" && git rev-parse HEAD~1) >/dev/null 2>&1; then
        mapfile -t files <<<"$every"
    else
        changed="$(cd "$root" && changedFiles)"
        mapfile -t files < <(sourcesOf <<<"$changed")
        if ((${#files[@]} == 0)); then
            echo "The change touches no source"
            exit 0
        fi
    fi
fi

# The commands are those of GCC, some of whose options Clang does not know. It gives way to what runs beside
# it, since it takes minutes of every processor.
printf '%s\0' "${files[@]}" |
    nice -n 19 xargs -0 -n 1 -P "$(getconf _NPROCESSORS_ONLN)" "$tool" -p "$build" --quiet \
        --extra-arg=-Wno-unknown-warning-option --extra-arg=-Wno-ignored-optimization-argument
echo "${#files[@]} files"
