#!/usr/bin/env python3
"""Compares what a module imports with what the framework's interface names.

usage: test_imports.py NM MODULE NAMES

Names with a version are the C and C++ runtimes', weak ones are optional; all others must stand in
NAMES.
"""
import subprocess
import sys


def imports(nm, module):
    listing = subprocess.run([nm, "-DC", "--undefined-only", module],
                             check=True, capture_output=True, text=True).stdout
    for line in listing.splitlines():
        kind, name = line.split(None, 1)
        if kind == "U" and "@" not in name:
            yield name


def main():
    nm, module, names = sys.argv[1:]
    with open(names, encoding="ascii") as file:
        known = {line.strip() for line in file if line.strip() and not line.startswith("#")}
    used = set(imports(nm, module))
    foreign = sorted(used - known)
    for name in foreign:
        print("imported, but not of the framework's interface:", name)
    if not used:
        print("nothing is imported: is this a module?")
    sys.exit(1 if foreign or not used else 0)


if __name__ == "__main__":
    main()
