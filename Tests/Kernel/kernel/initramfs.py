"""Builds the small file system that the kernel starts with."""

import pathlib
import shutil
import subprocess
import tempfile

from .package import version_of
from .tools import output_of, tool

FOLDERS = ("bin", "dev", "lower", "modules", "new", "proc", "sys", "upper")


def build_initramfs(kernel, modules, share, target):
    """Writes it to the file `target`: init, busybox, and the modules with what they need, in load order."""
    with tempfile.TemporaryDirectory() as temporary:
        root = pathlib.Path(temporary)
        for name in FOLDERS:
            (root / name).mkdir()
        shutil.copy(tool("busybox"), root / "bin/busybox")
        shutil.copy(pathlib.Path(__file__).with_name("init"), root / "init")
        (root / "init").chmod(0o755)
        (root / "share.path").write_text(f"{share}\n", encoding="utf-8")
        for number, module in enumerate(_in_load_order(kernel, modules)):
            # The shell inside loads them in alphabetical order.
            shutil.copy(module, root / "modules" / f"{number:03}-{module.name}")
        names = "\n".join(str(path.relative_to(root)) for path in sorted(root.rglob("*")))
        with open(target, "wb") as archive:
            subprocess.run(
                [tool("cpio"), "--quiet", "-o", "-H", "newc", "-R", "0:0"],
                cwd=root,
                input=names.encode(),
                stdout=archive,
                check=True,
            )


def _in_load_order(kernel, modules):
    order = []
    version = version_of(kernel)
    for name in modules:
        # The host's own settings have no say.
        lines = output_of("modprobe", "-C", "/dev/null", "-d", kernel, "-S", version, "--show-depends", name)
        for line in lines.splitlines():
            kind, _, path = line.strip().partition(" ")
            module = pathlib.Path(path)
            if kind == "insmod" and module not in order:
                order.append(module)
    return order
