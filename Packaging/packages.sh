# Sourced by ./run and ./test. Installs what Packaging/packages.txt lists and the machine lacks.

packageList="$(dirname "${BASH_SOURCE[0]}")/packages.txt"

# packagesOf MANAGER PURPOSE: the lines of that section.
packagesOf() {
    awk -v section="[$1 $2]" '
        /^\[/ { inside = ($0 == section); next }
        inside && !/^#/ && NF { print }' "$packageList"
}

debianHas() {
    dpkg-query --show --showformat='${Status}' "$1" 2>/dev/null | grep -q 'ok installed$'
}

debianKnows() {
    apt-cache policy "$1" 2>/dev/null | grep -q '^  Candidate: [^(]'
}

# Prints the packages of the sections that are not installed; alternatives stay as they are written. A later
# alternative does only where the distribution does not know the earlier ones.
debianMissing() {
    local purpose line name found
    for purpose in "$@"; do
        while IFS= read -r line; do
            found=false
            for name in ${line//|/ }; do
                if debianHas "$name"; then
                    found=true
                    break
                elif [[ $line == *'|'* ]] && debianKnows "$name"; then
                    break
                fi
            done
            $found || printf '%s\n' "$line"
        done < <(packagesOf debian "$purpose")
    done
}

ensureDebianPackages() {
    local missing=() wanted=() unknown=() line name chosen
    mapfile -t missing < <(debianMissing "$@")
    if ((${#missing[@]} == 0)); then
        echo "==> Packages: everything is installed"
        return
    fi
    local become=()
    if ((EUID != 0)); then
        if sudo -n true 2>/dev/null; then
            become=(sudo -n)
        else
            echo "==> Packages: these are missing, and installing them needs an administrator:"
            # The first of several alternatives is the one to ask for.
            printf '      apt-get install --no-install-recommends'
            printf ' %s' "${missing[@]%% *}"
            printf '\n'
            return 1
        fi
    fi
    echo "==> Packages: refreshing the package lists"
    "${become[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q
    for line in "${missing[@]}"; do
        chosen=
        for name in ${line//|/ }; do
            if debianKnows "$name"; then
                chosen="$name"
                break
            fi
        done
        if [[ -n $chosen ]]; then
            wanted+=("$chosen")
        else
            unknown+=("$line")
        fi
    done
    if ((${#unknown[@]} > 0)); then
        echo "==> Packages: this distribution does not offer:"
        printf '      %s\n' "${unknown[@]}"
        echo "    Debian 12 and newer do. Install them in another way, or use such a distribution."
        return 1
    fi
    echo "==> Packages: installing ${wanted[*]}"
    "${become[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -q -y --no-install-recommends "${wanted[@]}" </dev/null
}

ensureHomebrewPackages() {
    local purpose name missing=()
    for purpose in "$@"; do
        while IFS= read -r name; do
            brew list --versions "$name" >/dev/null 2>&1 || missing+=("$name")
        done < <(packagesOf homebrew "$purpose")
    done
    if ((${#missing[@]} == 0)); then
        echo "==> Packages: everything is installed"
        return
    fi
    echo "==> Packages: installing ${missing[*]}"
    HOMEBREW_NO_AUTO_UPDATE=1 NONINTERACTIVE=1 brew install "${missing[@]}" </dev/null
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
        local purpose
        echo "==> Packages: neither apt-get nor Homebrew is here. Needed are, by their Debian names:"
        for purpose in "$@"; do
            packagesOf debian "$purpose" | sed 's/^/      /'
        done
        echo "    Going on with what is installed."
    fi
}
