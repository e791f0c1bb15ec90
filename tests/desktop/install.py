"""Installs the program into temporary folders, as a person and as a package would, and looks at
what is there. Exits with 1 if anything is not as it should be.

usage: install.py CMAKE BUILD VERSION"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile
import xml.etree.ElementTree

ICONS = "share/icons/hicolor"
ENTRY = "share/applications/org.brimlo.Brimlo.desktop"
METAINFO = "share/metainfo/org.brimlo.Brimlo.metainfo.xml"
AUTOSTART = "etc/xdg/autostart/org.brimlo.Brimlo.desktop"
BELOW_PREFIX = {
    "bin/brimlo", "libexec/brimlo/brimlo-fetch", ENTRY, METAINFO, "share/man/man1/brimlo.1.gz",
    "share/doc/brimlo/changelog.gz", "share/doc/brimlo/copyright",
    f"{ICONS}/scalable/apps/brimlo.svg", f"{ICONS}/symbolic/apps/brimlo-symbolic.svg",
    *(f"{ICONS}/{n}x{n}/apps/brimlo.png" for n in (16, 22, 24, 32, 48, 64, 128, 256))}

faults = 0


def check(what, holds, details=""):
    global faults
    print(f"  ok    {what}" if holds else f"  FAULT {what}: {details}")
    faults += not holds


def approves(validator, *arguments):
    done = subprocess.run([validator, *arguments], capture_output=True, text=True)
    said = done.stdout + done.stderr
    # desktop-file-validate ends with 0 after mere hints too; appstreamcli always says something.
    silent = not said or validator == "appstreamcli"
    check(f"{validator} approves of {arguments[-1].name}", done.returncode == 0 and silent, said)


def installed(cmake, build, prefix, root=""):
    subprocess.run([cmake, "--install", build, "--prefix", prefix], check=True,
                   stdout=subprocess.DEVNULL, env=dict(os.environ, DESTDIR=str(root)))
    top = pathlib.Path(root or prefix)
    return {str(path.relative_to(top)) for path in top.rglob("*") if not path.is_dir()}


def entry(prefix, file):
    approves("desktop-file-validate", file)
    for key, name in re.findall(r"^(Exec|TryExec|Icon)=(\S+)", file.read_text(), re.M):
        there = (any((prefix / ICONS).rglob(f"{name}.*")) if key == "Icon"
                 else os.access(prefix / "bin" / name, os.X_OK))
        check(f"{key} {name} is there", there)


def main():
    cmake, build, version = sys.argv[1:]
    with tempfile.TemporaryDirectory() as folder:
        prefix, root = pathlib.Path(folder, "a prefix"), pathlib.Path(folder, "root")
        for what, found, expected in (
                ("below a prefix", installed(cmake, build, prefix), BELOW_PREFIX | {AUTOSTART}),
                ("as the system's", installed(cmake, build, "/usr", root),
                 {f"usr/{name}" for name in BELOW_PREFIX} | {AUTOSTART})):
            check(f"what is installed {what}", found == expected, sorted(found ^ expected))
        entry(prefix, prefix / ENTRY)
        entry(prefix, prefix / AUTOSTART)
        approves("appstreamcli", "validate", "--no-net", "--strict", prefix / METAINFO)
        release = xml.etree.ElementTree.parse(prefix / METAINFO).find("releases/release")
        newest = release.get("version")
        check(f"the newest release is {version}", newest == version, newest)
    print("all is well" if not faults else f"{faults} faults")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
