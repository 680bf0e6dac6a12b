# Sourced by ./run and ./test. Installs what Packaging/packages.txt lists and the machine lacks.
#
# Package managers are asked in English whatever the user speaks, and each answer is read to its end before
# it is searched: a reader that stops at its first match ends the writer by a broken pipe, and under pipefail
# a match then counts as none.

packageList="$(dirname "${BASH_SOURCE[0]}")/packages.txt"

# packagesOf MANAGER PURPOSE...: the lines of those sections, each once.
packagesOf() {
    local manager="$1" purpose
    shift
    for purpose in "$@"; do
        awk -v section="[$manager $purpose]" '
            /^\[/ { inside = ($0 == section); next }
            inside && !/^#/ && NF { print }' "$packageList"
    done | awk '!seen[$0]++'
}

# isLine TEXT LINES: whether TEXT is one of the lines.
isLine() {
    [[ $'\n'"$2"$'\n' == *$'\n'"$1"$'\n'* ]]
}

# debianInstalled NAME...: those that are installed, one a line, with and without their architecture.
debianInstalled() {
    local native answer
    native="$(dpkg --print-architecture)"
    # Names that it has never heard of make its status 1.
    answer="$(LC_ALL=C dpkg-query --show --showformat='${Package} ${Architecture} ${Status}\n' "$@" \
        2>/dev/null)" || true
    awk -v native="$native" '
        $4 == "ok" && $5 == "installed" {
            print $1 ":" $2
            if ($2 == native || $2 == "all") print $1
        }' <<<"$answer"
}

# debianKnown NAME...: those that apt-get could install, one a line, with and without their architecture.
debianKnown() {
    local native answer
    native="$(dpkg --print-architecture)"
    answer="$(LC_ALL=C apt-cache policy "$@" 2>/dev/null)" || true
    awk -v native="$native" '
        /^[^ ]+:$/ { name = substr($0, 1, length($0) - 1) }
        /^  Candidate: / && $2 != "(none)" {
            print name
            if (name !~ /:/) { print name ":" native; print name ":all" }
        }' <<<"$answer"
}

# debianMissing LINES INSTALLED KNOWN: the lines of which nothing is installed. A later alternative does only
# where the distribution does not know the earlier ones.
debianMissing() {
    local line name
    while IFS= read -r line; do
        for name in ${line//|/ }; do
            if isLine "$name" "$2"; then
                continue 2
            elif isLine "$name" "$3"; then
                break
            fi
        done
        printf '%s\n' "$line"
    done <<<"$1"
}

# debianChoice LINE KNOWN: the first of the alternatives that apt-get could install; status 1 without any.
debianChoice() {
    local name
    for name in ${1//|/ }; do
        if isLine "$name" "$2"; then
            printf '%s\n' "$name"
            return
        fi
    done
    return 1
}

# debianPlan NAME...: what installing them would bring, as apt-get itself counts it; status 1 when it cannot.
debianPlan() {
    local answer
    # It is told to decline, which makes its status 1, and declining needs no lock that only root may take.
    answer="$(LC_ALL=C apt-get install --assume-no --no-install-recommends -o Debug::NoLocking=1 "$@" \
        2>/dev/null </dev/null)" || true
    awk '
        / newly installed, / { for (i = 2; i < NF; i++) if ($i == "newly") packages = $(i - 1) }
        /^Need to get / { load = $0; sub(/^Need to get /, "", load); sub(/ of archives\.$/, "", load) }
        /^After this operation, / { disk = $4 " " $5; if (/ freed\.$/) disk = "-" disk }
        END {
            if (packages == "") exit 1
            printf "%s packages with what they need", packages
            if (load != "") { sub(/\/.*/, "", load); printf ", %s to download", load }
            if (disk != "") printf ", %s on the disk", disk
            print ""
        }' <<<"$answer"
}

# debianRemoved NAME...: what would have to go if these were installed, one a line.
debianRemoved() {
    local answer
    answer="$(LC_ALL=C apt-get install --simulate --no-install-recommends -o Debug::NoLocking=1 "$@" \
        2>/dev/null </dev/null)" || true
    awk '$1 == "Remv" { print $2 }' <<<"$answer"
}

# debianKept NAME...: those of them that somebody asked for, one a line. The others came along with something that
# would go first if it still needed them.
debianKept() {
    local automatic name
    automatic="$(LC_ALL=C apt-mark showauto "$@")" || automatic=
    for name in "$@"; do
        isLine "$name" "$automatic" || printf '%s\n' "$name"
    done
}

ensureDebianPackages() {
    local lines installed known names=() missing=() wanted=() unknown=() line chosen plan removed=() kept protect=()
    lines="$(packagesOf debian "$@")"
    read -r -d '' -a names <<<"${lines//|/ }" || true
    if ((${#names[@]} == 0)); then
        echo "==> Packages: none are needed"
        return
    fi
    installed="$(debianInstalled "${names[@]}")"
    known="$(debianKnown "${names[@]}")"
    lines="$(debianMissing "$lines" "$installed" "$known")"
    if [[ -z $lines ]]; then
        echo "==> Packages: everything is installed"
        return
    fi
    mapfile -t missing <<<"$lines"

    local become=() refreshed=true
    if (($(id -u) != 0)); then
        if ! sudo -n true 2>/dev/null; then
            for line in "${missing[@]}"; do
                # Of alternatives that are not known yet the first is the one to ask for.
                wanted+=("$(debianChoice "$line" "$known" || printf '%s\n' "${line%% *}")")
            done
            echo "==> Packages: these are missing, and installing them needs an administrator:"
            echo "      apt-get update"
            echo "      apt-get install --no-install-recommends ${wanted[*]}"
            if plan="$(debianPlan "${wanted[@]}")"; then
                echo "    That is $plan."
            fi
            return 1
        fi
        become=(sudo -n)
    fi

    echo "==> Packages: ${#missing[@]} of what is needed are missing; refreshing the package lists"
    # Without this option it is content with whatever lists it has.
    if ! ${become[@]+"${become[@]}"} env LC_ALL=C DEBIAN_FRONTEND=noninteractive \
        apt-get update -q --error-on=any </dev/null; then
        refreshed=false
        echo "==> Packages: the lists could not be refreshed (why, stands above); going on with those from before"
    fi
    known="$(debianKnown "${names[@]}")"
    for line in "${missing[@]}"; do
        if chosen="$(debianChoice "$line" "$known")"; then
            isLine "$chosen" "$(printf '%s\n' ${wanted[@]+"${wanted[@]}"})" || wanted+=("$chosen")
        else
            unknown+=("$line")
        fi
    done
    if ((${#unknown[@]} > 0)); then
        if $refreshed; then
            echo "==> Packages: this distribution does not offer:"
            printf '      %s\n' "${unknown[@]}"
            echo "    Debian 12 and newer do. Install them in another way, or use such a distribution."
        else
            echo "==> Packages: the lists from before do not tell where these come from:"
            printf '      %s\n' "${unknown[@]}"
            echo "    Is there a network, and are the sources in /etc/apt right? Then start this again."
        fi
        return 1
    fi

    plan="$(debianPlan "${wanted[@]}")" || plan="how much that is, apt-get cannot tell beforehand"
    echo "==> Packages: installing ${wanted[*]}"
    echo "==> Packages: $plan"
    # Nobody is asked, so nothing may go that somebody asked for. An older release of a library may: those that came
    # along with others exclude each other now and then.
    protect=(--no-remove)
    mapfile -t removed < <(debianRemoved "${wanted[@]}")
    if ((${#removed[@]} > 0)); then
        kept="$(debianKept "${removed[@]}")"
        if [[ -z $kept ]]; then
            protect=()
            echo "==> Packages: these came along with others and give way: ${removed[*]}"
        else
            echo "==> Packages: these would have to give way, and somebody asked for them:"
            printf '      %s\n' $kept
        fi
    fi
    # Another installation may be under way.
    if ! ${become[@]+"${become[@]}"} env LC_ALL=C DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends ${protect[@]+"${protect[@]}"} -o DPkg::Lock::Timeout=300 \
        "${wanted[@]}" </dev/null; then
        echo "==> Packages: apt-get could not install them (why, stands above)"
        return 1
    fi
}

ensureHomebrewPackages() {
    local name missing=()
    while IFS= read -r name; do
        LC_ALL=C brew list --versions "$name" >/dev/null 2>&1 || missing+=("$name")
    done < <(packagesOf homebrew "$@")
    if ((${#missing[@]} == 0)); then
        echo "==> Packages: everything is installed"
        return
    fi
    echo "==> Packages: installing ${#missing[@]} and what they need: ${missing[*]}"
    if ! LC_ALL=C HOMEBREW_NO_AUTO_UPDATE=1 NONINTERACTIVE=1 brew install "${missing[@]}" </dev/null; then
        echo "==> Packages: Homebrew could not install them (why, stands above)"
        return 1
    fi
}

# ensurePackages PURPOSE...: afterwards everything that the purposes (build, run, test) need is there, or the
# reason stands on the screen and the status is not 0. On a system without a package manager that is known
# here it prints what is needed and goes on.
ensurePackages() {
    if command -v apt-get >/dev/null && command -v dpkg-query >/dev/null; then
        ensureDebianPackages "$@"
    elif command -v brew >/dev/null; then
        ensureHomebrewPackages "$@"
    else
        echo "==> Packages: neither apt-get nor Homebrew is here. Needed are, by their Debian names:"
        packagesOf debian "$@" | sed 's/^/      /'
        echo "    Going on with what is installed."
    fi
}
