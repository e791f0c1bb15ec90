"""Holds the arrows between the folders of src/ against the includes, and finds test and benchmark
files that no target builds. Prints what is wrong; exits with 1 if anything is."""

import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent

LOGIC = {"platform", "base"}
MAY_INCLUDE = {
    "base": set(),
    "platform": {"base"},
    "store": LOGIC,
    "capture": LOGIC | {"store"},
    "palette": LOGIC | {"store"},
    "sync": LOGIC | {"store"},
    "onboarding": LOGIC | {"store"},
    "menu": LOGIC | {"store"},
    "updates": LOGIC,
    "app": LOGIC | {"store", "capture", "palette", "sync", "onboarding", "menu"},
    "platform/cloud": LOGIC,
    "platform/posix": LOGIC,
    "platform/freedesktop": LOGIC | {"platform/posix"},
    "platform/qt": LOGIC | {"fetch"},
    "platform/x11": LOGIC | {"platform/posix", "platform/freedesktop", "platform/qt"},
    "fetch": set(),
    "ui": {"platform"},
}
# The views in the folders of logic.
VIEWS = {
    "palette/quick_paste_rows",
    "palette/quick_paste_view",
    "onboarding/onboarding_view",
    "menu/menu_content_view",
    "menu/menu_popover",
    "menu/menu_rows",
    "updates/updates_view",
}
# What is built into the executable alone, and knows concrete classes. Only main knows a session's.
SESSIONS = {"platform/x11"}
EXECUTABLE = set(MAY_INCLUDE) - SESSIONS
MAIN = {
    "app/main.cpp": EXECUTABLE | SESSIONS,
    "app/program.h": EXECUTABLE,
    "app/program.cpp": EXECUTABLE,
    "app/tray_item.h": EXECUTABLE,
    "app/tray_item.cpp": EXECUTABLE,
}
MAY_USE_QT = {"fetch", "platform/freedesktop", "platform/qt", "platform/x11", "ui"}


def folder_of(path):
    return str(pathlib.PurePosixPath(path).parent)


def main():
    faults = []
    for source in sorted((ROOT / "src").rglob("*.*")):
        if source.suffix not in (".h", ".cpp"):
            continue
        name = source.relative_to(ROOT / "src").as_posix()
        folder = folder_of(name)
        if folder not in MAY_INCLUDE:
            faults.append(f"{name}: the folder is not in the list of layers")
            continue
        is_view = name.rsplit(".", 1)[0] in VIEWS
        allowed = MAIN.get(name, MAY_INCLUDE[folder] | {folder} | ({"ui"} if is_view else set()))
        for included in re.findall(r'^#include "(.*)"', source.read_text(), re.M):
            if folder_of(included) not in allowed:
                faults.append(f"{name}: must not include {included}")
        qt = re.findall(r"^#include <(Q\w+)>", source.read_text(), re.M)
        if qt and folder not in MAY_USE_QT and name not in MAIN and not is_view:
            faults.append(f"{name}: must not use Qt ({', '.join(qt)})")
    for area in ("tests", "benchmarks"):
        lists = (ROOT / area / "CMakeLists.txt").read_text()
        for source in sorted((ROOT / area).rglob("*")):
            name = source.relative_to(ROOT / area).as_posix()
            if source.suffix in (".cpp", ".py") and name not in lists:
                faults.append(f"{area}/{name}: no target builds or runs it")
    print("\n".join(faults) or "the layers hold")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
