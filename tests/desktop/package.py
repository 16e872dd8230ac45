"""A Debian package, installed by dpkg on what seems to be this machine: what that writes is kept in memory and
seen in the mount namespace of the test alone. Needs root's rights."""

import os
import subprocess

WRITTEN = ("etc", "usr", "var")
# What dpkg and what it calls keep of every package, for good.
OF_THE_SYSTEM = ("var/lib/dpkg", "var/log", "var/cache", "etc/ld.so.cache", "etc/mailcap",
                 "usr/share/applications/mimeinfo.cache", "usr/share/icons/hicolor/icon-theme.cache")


class Package:
    def __init__(self, path, folder):
        """`folder` is the caller's to remove."""
        self._name = run(["dpkg-deb", "--field", path, "Package"]).strip()
        self._folder = folder
        run(["mount", "-t", "tmpfs", "-o", "mode=755", "tavin", folder])
        for name in WRITTEN:
            upper, work = (os.path.join(folder, kind, name) for kind in ("written", "work"))
            os.makedirs(upper)
            os.makedirs(work)
            run(["mount", "-t", "overlay", "-o", f"lowerdir=/{name},upperdir={upper},workdir={work}",
                 "tavin", f"/{name}"])
        run(["dpkg", "--install", path])

    def purge(self):
        """Returns the files that are left of it, with its name or not."""
        run(["dpkg", "--purge", self._name])
        written = os.path.join(self._folder, "written")
        files = {os.path.relpath(os.path.join(folder, name), written)
                 for folder, _, names in os.walk(written) for name in names}
        return {name for name in files if not name.startswith(OF_THE_SYSTEM) and os.path.exists("/" + name)}


def run(command):
    return subprocess.run(command, check=True, timeout=120, stdout=subprocess.PIPE, text=True).stdout
