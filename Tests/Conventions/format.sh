#!/usr/bin/env bash
# format.sh ROOT: every C++ file of the project is formatted as .clang-format says, by clang-format 19.
# To repair: the same with --fix before ROOT.
set -euo pipefail

action=(--dry-run -Werror)
if [[ ${1:-} == --fix ]]; then
    action=(-i)
    shift
fi
cd "$1"

tool="$(command -v clang-format-19 || command -v clang-format)"
if [[ $("$tool" --version) != *'version 19.'* ]]; then
    echo "$tool is not version 19; others format differently"
    exit 1
fi

# New files are checked before they are committed; ignored ones, such as builds, are not looked at.
if git rev-parse --is-inside-work-tree >/dev/null 2>&1; then
    mapfile -d '' -t files < <(git ls-files -z --cached --others --exclude-standard -- \
        '*.h' '*.hpp' '*.cpp' '*.mm')
else
    mapfile -d '' -t files < <(find Sources Tests Benchmarks -type f \
        \( -name '*.h' -o -name '*.hpp' -o -name '*.cpp' -o -name '*.mm' \) -print0)
fi

existing=()
for file in "${files[@]}"; do
    # A file that is deleted and not yet committed so is still listed.
    if [[ -f $file ]]; then
        existing+=("$file")
    fi
done
if ((${#existing[@]} == 0)); then
    echo "No C++ file found: nothing was checked"
    exit 1
fi
"$tool" "${action[@]}" "${existing[@]}"
echo "${#existing[@]} files"
