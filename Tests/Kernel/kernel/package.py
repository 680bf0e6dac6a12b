"""Fetches the distribution's kernel and unpacks of it what the tests need."""

import hashlib
import lzma
import os
import pathlib
import re
import shutil
import subprocess
import tarfile
import tempfile

from .tools import output_of, tool

# Every module that a test may ask for is or lies below one of these, and so does what it needs itself.
MODULES = (
    "drivers/input",
    "drivers/virtio",
    "fs/9p",
    "fs/fscache",
    "fs/netfs",
    "fs/overlayfs",
    "net/9p",
    "sound/core",
    "sound/drivers",
    "sound/soundcore.ko",
)

WANTED = re.compile(
    r"(boot/vmlinuz-.*"
    r"|lib/modules/[^/]+/modules\.(order|builtin|builtin\.modinfo)"
    rf"|lib/modules/[^/]+/kernel/({'|'.join(MODULES)})(/.*\.ko)?(\.xz)?)"
)
XZ_START = b"\xfd7zXZ\x00"


def unpacked_kernel(cache):
    """The folder with the unpacked kernel in the cache folder; it is fetched when it is not there.

    It holds `vmlinux` (or `vmlinuz` where that holds no xz stream) and lib/modules/VERSION. The environment
    variable TAVRO_TEST_KERNEL may name a kernel package to take instead of fetching one.
    """
    # Another choice of files is another folder, or an old one would be taken for complete.
    choice = hashlib.sha256(WANTED.pattern.encode()).hexdigest()[:8]
    folder = pathlib.Path(cache) / f"kernel-{choice}"
    if folder.is_dir():
        return folder
    folder.parent.mkdir(parents=True, exist_ok=True)
    with tempfile.TemporaryDirectory(dir=folder.parent, prefix="unpacking-") as temporary:
        work = pathlib.Path(temporary)
        package = os.environ.get("TAVRO_TEST_KERNEL") or _fetch(work)
        unpacked = work / "kernel"
        _unpack(package, unpacked)
        try:
            # Whoever finds the folder finds all of it.
            unpacked.rename(folder)
        except OSError:
            if not folder.is_dir():
                raise
    return folder


def _fetch(folder):
    # The package without a version is empty and depends on the one of today.
    dependencies = output_of("apt-cache", "depends", "linux-image-amd64")
    found = re.search(r"Depends: (linux-image-[0-9]\S*)", dependencies)
    if found is None:
        raise AssertionError(f"linux-image-amd64 depends on no kernel here:\n{dependencies}")
    try:
        output_of("apt-get", "download", found[1], cwd=folder)
    except AssertionError as error:
        raise AssertionError(
            f"{error}\nOld package lists may name a package that is gone: apt-get update helps. Without a "
            "network, let TAVRO_TEST_KERNEL name a kernel package (.deb)."
        ) from None
    return next(folder.glob("*.deb"))


def _unpack(package, target):
    with subprocess.Popen(
        [tool("dpkg-deb"), "--fsys-tarfile", package], stdout=subprocess.PIPE
    ) as archive, tarfile.open(fileobj=archive.stdout, mode="r|") as members:
        for member in members:
            # Newer distributions keep the modules below usr/.
            name = member.name.removeprefix("./").removeprefix("usr/")
            if member.isfile() and WANTED.fullmatch(name):
                _write(members.extractfile(member), target / name)
    if archive.returncode != 0:
        raise AssertionError(f"dpkg-deb could not read {package}")
    images = list(target.glob("boot/vmlinuz-*"))
    if len(images) != 1:
        raise AssertionError(f"{package} holds {len(images)} kernels; one was expected")
    _decompress(images[0], target)
    output_of("depmod", "-b", target, version_of(target))


def _write(source, target):
    target.parent.mkdir(parents=True, exist_ok=True)
    if target.suffix == ".xz":
        target = target.with_suffix("")
        source = lzma.open(source)
    with open(target, "wb") as file:
        shutil.copyfileobj(source, file)


def _decompress(image, target):
    data = image.read_bytes()
    start = data.find(XZ_START)
    if start < 0:
        image.rename(target / "vmlinuz")
        return
    # What follows the stream is no part of it. Uncompressed, the kernel starts in half the time.
    (target / "vmlinux").write_bytes(lzma.LZMADecompressor().decompress(data[start:]))
    image.unlink()


def version_of(folder):
    """The version of an unpacked kernel, as it names itself."""
    versions = [entry.name for entry in (pathlib.Path(folder) / "lib/modules").iterdir()]
    if len(versions) != 1:
        raise AssertionError(f"{folder} holds the modules of {versions}; one version was expected")
    return versions[0]
