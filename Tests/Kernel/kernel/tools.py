import shutil
import subprocess

PACKAGES = {
    "apt-cache": "apt",
    "apt-get": "apt",
    "busybox": "busybox-static",
    "cpio": "cpio",
    "depmod": "kmod",
    "dpkg-deb": "dpkg",
    "modprobe": "kmod",
    "qemu-system-x86_64": "qemu-system-x86",
}

# Where an administrator's tools are, which an ordinary user's path may leave out.
SYSTEM_FOLDERS = "/usr/local/sbin:/usr/sbin:/sbin"


def tool(name):
    """The path of a tool. One that is missing is a failure: a test that did not run has shown nothing."""
    path = shutil.which(name) or shutil.which(name, path=SYSTEM_FOLDERS)
    if path is None:
        raise AssertionError(f"{name} is not installed; this test needs the package {PACKAGES[name]}")
    return path


def output_of(name, *arguments, cwd=None):
    """Runs a tool to its end and returns what it printed; its failure is told with its own words."""
    ended = subprocess.run(
        [tool(name), *map(str, arguments)],
        cwd=cwd,
        stdin=subprocess.DEVNULL,
        capture_output=True,
        text=True,
        check=False,
    )
    if ended.returncode != 0:
        words = " ".join(map(str, arguments))
        raise AssertionError(f"{name} {words} ended with {ended.returncode}:\n{ended.stdout}{ended.stderr}")
    return ended.stdout
