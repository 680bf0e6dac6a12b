import os

from .sandbox import tool

# A folder of devices in which the keyboards, and what makes new ones, are there and closed to whoever has no rights
# beyond a user's, as they are to every user at first. All else is the system's own.
_SCRIPT = """set -e
devices="$1"
shift
mkdir "$devices"
mount -t tmpfs tmpfs "$devices"
for entry in /dev/*; do
    own="$devices/${entry##*/}"
    case "${entry##*/}" in
    input | uinput) continue ;;
    esac
    if [ -L "$entry" ]; then
        cp -P "$entry" "$own"
        continue
    elif [ -d "$entry" ]; then
        mkdir "$own"
    else
        : >"$own"
    fi
    mount --rbind "$entry" "$own"
done
mkdir "$devices/input"
: >"$devices/input/event0"
: >"$devices/uinput"
chmod 0 "$devices/input/event0" "$devices/uinput"
mount --rbind "$devices" /dev
exec "$@"
"""


def with_foreign_devices(sandbox):
    """What is put before a command, for it to run as a user who may not open the keyboards."""
    own = [tool("unshare"), "--mount", *([] if os.geteuid() == 0 else ["--map-root-user"])]
    # A user's rights and no others; and the system forgets with them that it is to end with the test.
    rights = ["--securebits", "+noroot", "--inh-caps", "-all", "--bounding-set", "-all", "--pdeathsig", "TERM"]
    return [*own, "/bin/sh", "-c", _SCRIPT, "sh", sandbox.folder / "devices", tool("setpriv"), *rights]
