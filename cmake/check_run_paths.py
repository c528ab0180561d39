#!/usr/bin/env python3
"""Checks where programs and libraries look for the libraries that they need.

usage: check_run_paths.py FILE...

Fails if a run path has an element that does not begin with $ORIGIN, the folder of the file itself. The dynamic loader takes an
empty or relative element for the current folder, where anybody may have put a library, and an absolute one names a folder of
the machine that built the file. Files that are neither programs nor libraries are passed over.
"""
import pathlib
import re
import subprocess
import sys


def run_paths(file: str) -> list[str]:
    dynamic = subprocess.run(["readelf", "--dynamic", "--wide", file], capture_output=True, text=True, check=True).stdout
    return re.findall(r"\((?:RPATH|RUNPATH)\).*\[(.*)\]", dynamic)


def main() -> int:
    status = 0
    for file in sys.argv[1:]:
        if pathlib.Path(file).read_bytes()[:4] != b"\x7fELF":
            continue
        for path in run_paths(file):
            if not all(element.startswith("$ORIGIN") for element in path.split(":")):
                print(f"{file}: its run path [{path}] leads out of its own folders; set INSTALL_RPATH and "
                      "BUILD_WITH_INSTALL_RPATH of its target", file=sys.stderr)
                status = 1
    return status


if __name__ == "__main__":
    sys.exit(main())
