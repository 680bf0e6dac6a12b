#!/usr/bin/env bash
# fresh.sh [bookworm|trixie]: proves that ./run holds on a machine that has nothing. Makes a Debian with its base
# system alone in a temporary folder, clones the commit that is checked out into it, and runs ./run there as an
# ordinary user, first in German. Needs root and Debian's archive. Prints what each step took; whatever happens,
# the folder is removed.
#
# The archive is the one that this machine uses; TAVRO_FRESH_SOURCES names another list of sources.
set -euo pipefail

here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
root="$(cd "$here/../.." && pwd)"
user=player
home=/home/$user
clone=$home/tavro

fail() {
    echo "==> Fresh: $*" >&2
    exit 1
}

suite="${1:-bookworm}"

checkThatItCanBe() {
    case "$suite" in
    bookworm | trixie) ;;
    *) fail "the suite is bookworm or trixie, not \"$suite\"" ;;
    esac
    if (($(id -u) != 0)); then
        fail "a bare system can only be made as root"
    fi
    if ! commit="$(git -C "$root" rev-parse --verify 'HEAD^{commit}' 2>/dev/null)"; then
        fail "$root is no clone of the repository, so there is no commit to try"
    fi
    if [[ -n $(git -C "$root" status --porcelain) ]]; then
        echo "==> Fresh: what is not committed takes no part"
    fi

    # shellcheck source=../../Packaging/packages.sh
    source "$root/Packaging/packages.sh"
    ensurePackages fresh
    if ! unshare --mount --pid --fork true; then
        fail "this system forbids mount and process namespaces, in which the bare one is to run"
    fi
}

# sourcesOf SUITE: the machine's own list of Debian's archive, for that suite; status 1 without any.
sourcesOf() {
    local own file
    if [[ -n ${TAVRO_FRESH_SOURCES:-} ]]; then
        cat "$TAVRO_FRESH_SOURCES"
        return
    fi
    own="$(. /etc/os-release && echo "${VERSION_CODENAME:-}")"
    for file in /etc/apt/sources.list.d/*.sources /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
        if [[ -n $own && -f $file ]] && grep -q "^[^#]*/debian/*\( \|$\)" "$file" &&
            grep -q "^[^#]* $own\( \|$\)" "$file"; then
            sed "s/\b$own\b/$1/g" "$file"
            return
        fi
    done
    return 1
}

child=
times=()

cleanUp() {
    local status=$?
    trap '' INT TERM HUP
    if [[ -n $child ]]; then
        kill -KILL -- "-$child" 2>/dev/null || true
        wait "$child" 2>/dev/null || true
    fi
    # What is mounted in there is so in namespaces that have ended. Should one not have, nothing is removed
    # across it.
    if [[ $(</proc/self/mounts) == *" $work/"* ]]; then
        echo "==> Fresh: something is still mounted in $work, which stays therefore" >&2
        status=1
    else
        rm -rf --one-file-system "$work"
        echo "==> Fresh: $work is removed"
    fi
    exit "$status"
}

# step TITLE COMMAND...: in the background, so that a signal ends it at once.
step() {
    local title="$1" began=$SECONDS
    shift
    echo "==> Fresh: $title"
    "$@" </dev/null &
    child=$!
    local status=0
    wait "$child" || status=$?
    child=
    times+=("$(printf '%4d s  %s' "$((SECONDS - began))" "$title")")
    if ((status != 0)); then
        fail "failed: $title (status $status)"
    fi
}

# inside COMMAND...: as root in the bare system, with processes, mounts and shared memory of its own, all of which
# end with the command. Of this machine's environment it knows nothing.
inside() {
    # shellcheck disable=SC2016
    unshare --mount --pid --ipc --fork --kill-child=KILL bash -euc '
        bare="$1"
        shift
        mount --make-rprivate /
        mount -t proc proc "$bare/proc"
        mount --bind /dev "$bare/dev"
        mount -t devpts -o newinstance,ptmxmode=666 devpts "$bare/dev/pts"
        mount -t tmpfs tmpfs "$bare/dev/shm"
        cd /
        exec env -i HOME=/root PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin \
            chroot "$bare" "$@"' bash "$bare" "$@"
}

# asUser FOLDER COMMAND...: as the ordinary user, with an environment that holds nothing of anybody's.
asUser() {
    local folder="$1"
    shift
    # shellcheck disable=SC2016
    inside runuser -u "$user" -- env -i HOME="$home" USER="$user" PATH=/usr/local/bin:/usr/bin:/bin \
        bash -c 'cd "$0" && exec "$@"' "$folder" "$@"
}

makeBareSystem() {
    local options=() file
    for file in /etc/apt/apt.conf.d/99*; do
        if [[ -f $file ]]; then
            options+=("--aptopt=$file")
        fi
    done
    # sudo and a second language are what the users here are to have; ca-certificates, what some archives need.
    unshare --mount --pid --fork --mount-proc --kill-child=KILL \
        mmdebstrap --variant=minbase --include=ca-certificates,sudo,locales "${options[@]}" "$suite" \
        "$bare" "$work/archive"
    cp /etc/resolv.conf /etc/hosts "$bare/etc/"
    chroot "$bare" localedef -i de_DE -f UTF-8 de_DE.UTF-8
    chroot "$bare" useradd --create-home --shell /bin/bash "$user"
    echo "$user ALL=(ALL) NOPASSWD: ALL" >"$bare/etc/sudoers.d/$user"
    chmod 440 "$bare/etc/sudoers.d/$user"
    git clone --quiet --no-hardlinks --no-checkout "$root" "$bare$clone"
    git -C "$bare$clone" -c advice.detachedHead=false checkout --quiet --detach "$commit"
    mkdir -p "$bare$home/music/"{german,plain}
    chroot "$bare" chown -R "$user:$user" "$home"
}

# That it is bare and speaks German is what the rest relies on.
checkBareSystem() {
    local name answer
    for name in gcc g++ cmake ninja ccache; do
        if [[ -e $bare/usr/bin/$name ]]; then
            fail "$name is in the bare system already"
        fi
    done
    answer="$(inside env LANG=de_DE.UTF-8 apt-cache policy sudo)"
    if [[ $answer != *Installationskandidat:* ]]; then
        fail "apt-cache does not answer in German there: $answer"
    fi
}

# logged NAME COMMAND...: with what it prints in a file of that name.
logged() {
    local log="$work/$1.log"
    shift
    ("$@") 2>&1 | tee "$log"
}

# checkRun NAME FOLDER: ./run has told what it installs, has built without a complaint and left the demo.
checkRun() {
    local log="$work/$1.log" built
    if ! grep '^==> Packages: [0-9]* packages with what they need, .* to download, .* on the disk$' "$log"; then
        fail "it did not say how much it would install"
    fi
    built="$(sed -n '/^==> Configure/,$p' "$log")"
    if grep -iE 'warning|warnung' <<<"$built"; then
        fail "configuring and building were not without a warning"
    fi
    checkDemo "$1" "$2"
}

# The package manager installs the reader for the distribution's own Python.
checkDemo() {
    /usr/bin/python3 "$root/Tests/Conventions/demo.py" --check "$work/$1.log" "$bare$2/demo.mid"
}

checkProgress() {
    if ! grep '^\[[0-9]*/[0-9]*, ' "$work/$1.log" >"$work/progress"; then
        fail "ninja's progress was not shown"
    fi
    echo "$(wc -l <"$work/progress") lines of progress"
}

# As if they had never been there: the next run meets a machine that lacks some.
takePackagesAway() {
    inside apt-get purge -q -y ninja-build libutf8proc-dev qt6-wayland fonts-inter
}

checkNothingBuilt() {
    if ! grep '^ninja: no work to do' "$work/$1.log"; then
        fail "it built something again"
    fi
}

checkNothingInstalled() {
    if ! grep '^==> Packages: everything is installed' "$work/$1.log"; then
        fail "it installed something again"
    fi
}

# The programs say themselves whether they are whole.
selfTest() {
    asUser "$home" env QT_QPA_PLATFORM=offscreen "$clone/build/release/bin/tavro" --self-test
}

installWhatDrivesWindows() {
    inside env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends \
        python3 sway xvfb openbox xdotool x11-utils x11-xserver-utils jackd2
    if inside apt-cache show jack-example-tools >"$work/known" 2>/dev/null; then
        inside env DEBIAN_FRONTEND=noninteractive apt-get install -q -y --no-install-recommends jack-example-tools
    fi
}

# driveWindow TEST...: tests from outside, of the program as ./run starts it.
driveWindow() {
    asUser "$clone/Tests/EndToEnd" env PYTHONDONTWRITEBYTECODE=1 TAVRO_PROGRAM="$clone/run" \
        python3 -m unittest -v "$@"
}

# Bash reads a function to its end before it begins: a change of this file disturbs no run of it.
main() {
    checkThatItCanBe
    work="$(mktemp -d "${TMPDIR:-/tmp}/tavro-fresh.XXXXXX")"
    bare="$work/root"
    trap cleanUp EXIT
    trap 'exit 130' INT
    trap 'exit 143' TERM HUP
    # Each step is a process group, which ends as a whole.
    set -m
    # The package manager fetches as a user of its own.
    chmod 711 "$work"

    if ! sourcesOf "$suite" >"$work/archive"; then
        fail "this machine does not use Debian's archive; name a list of sources with TAVRO_FRESH_SOURCES"
    fi
    step "a bare $suite" makeBareSystem
    step "it holds nothing and speaks German" checkBareSystem
    step "./run as a user, in German" logged german asUser "$home/music/german" \
        env LANG=de_DE.UTF-8 LANGUAGE=de "$clone/run"
    step "what it told, built and left" checkRun german "$home/music/german"
    step "ninja's progress" checkProgress german
    step "the self-test of the window" selfTest
    step "some packages are taken away" takePackagesAway
    step "./run as a user, in no language" logged plain asUser "$home/music/plain" "$clone/run"
    step "what it told and left" checkRun plain "$home/music/plain"
    step "nothing was built again" checkNothingBuilt plain
    step "what drives windows is installed" installWhatDrivesWindows
    step "./run opens the window in a Wayland session" driveWindow test_wayland
    step "./run opens the window on X11" driveWindow \
        test_without_server.WithoutServerTest.test_window_tells_the_failure_and_keeps_running
    step "some packages are taken away again" takePackagesAway
    step "./run as root" logged root inside bash -c "cd && exec $clone/run"
    step "what it told and left" checkRun root /root
    step "nothing was built again" checkNothingBuilt root
    step "./run as root once more" logged again inside bash -c "cd && exec $clone/run"
    step "nothing was installed again" checkNothingInstalled again
    step "nor built" checkNothingBuilt again
    step "and the demo is there" checkDemo again /root

    echo "==> Fresh: ./run holds on a bare $suite, at $(git -C "$root" rev-parse --short "$commit")"
    printf '    %s\n' "${times[@]}"
    exit
}

main
