import os
import subprocess

from .sandbox import tool


class SignedPackages:
    """Packages of TAVRO that hold nothing, and signatures, by keys that were made for one test."""

    def __init__(self, folder):
        self._folder = folder
        self._keys = folder / "keys"
        self._keys.mkdir(parents=True, mode=0o700)
        for name in ("maker", "stranger"):
            self._gpg("--quick-generate-key", name, "ed25519", "sign", "never")

    def close(self):
        # The keys were given to an agent of their own, which would stay.
        self._run(tool("gpgconf"), "--kill", "all")

    def keyring(self):
        """What is shipped with the program: the maker's key."""
        return self._gpg("--export", "maker")

    def package(self, version):
        tree = self._folder / "tree"
        (tree / "DEBIAN").mkdir(parents=True)
        (tree / "DEBIAN" / "control").write_text(
            f"Package: tavro\nVersion: {version}\nArchitecture: all\n"
            "Maintainer: Nobody <nobody@updates.example>\nDescription: nothing\n",
            encoding="utf-8",
        )
        path = self._folder / "tavro.deb"
        self._run(tool("dpkg-deb"), "--root-owner-group", "--build", tree, path)
        return path.read_bytes()

    def signature(self, package, key="maker"):
        path = self._folder / "signed"
        path.write_bytes(package)
        return self._gpg("--local-user", key, "--armor", "--detach-sign", "--output", "-", path)

    def _gpg(self, *arguments):
        return self._run(tool("gpg"), "--batch", "--no-tty", "--pinentry-mode", "loopback", "--passphrase", "", *arguments)

    def _run(self, *command):
        done = subprocess.run(
            [str(word) for word in command],
            env=os.environ | {"GNUPGHOME": str(self._keys)},
            stdin=subprocess.DEVNULL,
            capture_output=True,
            check=False,
        )
        if done.returncode != 0:
            raise AssertionError(f"{command[0]}: {done.stderr.decode(errors='replace')}")
        return done.stdout
