#!/usr/bin/env bash
# without_updates.sh ROOT SCRATCH COMPILER: configures the program without updates of its own, compiles what puts
# the program together, and looks whether anything of them would be linked into it.
set -euo pipefail

root="$1"
scratch="$2"
compiler="$3"

# From nothing each time: what an earlier run found must not help.
rm -rf "$scratch"
configure() {
    cmake -S "$root" -B "$scratch/$1" -G Ninja --log-level=WARNING -DCMAKE_CXX_COMPILER="$compiler" \
        -DCMAKE_BUILD_TYPE=Debug -DTAVRO_WARNINGS_AS_ERRORS=ON -DTAVRO_SELF_UPDATE="$1"
}

# updatesIn ON|OFF: what of the updates stands in the commands that make the program.
updatesIn() {
    ninja -C "$scratch/$1" -t commands bin/tavro |
        grep -oE 'Sources/Updates/[A-Za-z/_.]+\.cpp\.o|UpdateQuick[A-Za-z]+\.cpp\.o|AppMainUpdates\.cpp\.o|TAVRO_UPDATE_FEED_URL' |
        sort -u
}

configure OFF
configure ON
# That they are found in the other program proves that this looks in the right place.
if [[ -z $(updatesIn ON) ]]; then
    echo "Nothing of the updates was found where they are on: nothing was checked"
    exit 1
fi
if [[ -n $(updatesIn OFF) ]]; then
    echo "This is part of the program although the updates are off:"
    updatesIn OFF
    exit 1
fi
# Only what puts the program together knows whether there are updates; the rest would take minutes.
commands="$(sed -n 's/^ *"command": "\(.*Programs\/tavro\/AppMain[A-Za-z]*\.cpp\)",$/\1 -fsyntax-only/p' \
    "$scratch/OFF/compile_commands.json" | sed 's/\\"/"/g; s/\\\\/\\/g')"
if [[ -z $commands ]]; then
    echo "Nothing to compile was found: nothing was checked"
    exit 1
fi
cd "$scratch/OFF"
while IFS= read -r command; do
    bash -c "$command"
done <<<"$commands"
echo "$(wc -l <<<"$commands") files"
