#!/usr/bin/env python3
"""shares.py [--most PERCENT]: lines of the tests beside those of the product, folder by folder: C++, Python,
shell and CMake that git knows, no data. Fails when the tests are more than this share of the product."""
import argparse
import collections
import os
import subprocess
import sys

PRODUCT = ("app", "bridge", "conform", "flight", "host", "kinematics", "look", "lumo", "program", "runner", "simulator", "telemetry", "tools", "workcell")
ENDINGS = (".cpp", ".h", ".py", ".sh", ".cmake", "CMakeLists.txt")


def is_code(path):
    """A script without an ending says in its first line what it is."""
    if path.endswith(ENDINGS):
        return True
    with open(path, "rb") as file:
        return "." not in os.path.basename(path) and file.read(2) == b"#!"


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--most", type=float, help="per cent")
    arguments = parser.parse_args()
    os.chdir(os.path.dirname(os.path.dirname(os.path.abspath(__file__))))
    listed = subprocess.run(["git", "ls-files", "tests", *PRODUCT], check=True, stdout=subprocess.PIPE)
    lines = collections.Counter()
    for path in listed.stdout.decode().splitlines():
        if os.path.isfile(path) and is_code(path):
            top, *rest = path.split("/")
            with open(path, "rb") as file:
                lines[f"tests/{rest[0]}" if top == "tests" and len(rest) > 1 else top] += file.read().count(b"\n")
    product = sum(lines[folder] for folder in PRODUCT)
    tests = sum(lines.values()) - product
    for folder, count in sorted(lines.items()):
        print(f"{count:7} {folder}")
    share = 100 * tests / product
    print(f"tests: {tests} lines, {share:.1f} % of the product's {product}, {100 * tests / (tests + product):.1f} % of all")
    if arguments.most and share > arguments.most:
        sys.exit(f"more than {arguments.most} %")


if __name__ == "__main__":
    main()
