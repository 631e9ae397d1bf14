#!/usr/bin/python3
"""Real faults: each patch in faults/ must make a test fail.

    faults.py [--jobs N] [NAME…]

Applies each patch to a copy of HEAD in build/faults, builds the tests of the folders that its first line names ("Tests:
executor program") and runs them up to the first failure. Exits with 1 when no test fails or a patch does not build.
"""
import argparse
import os
import re
import sys

from run import HERE, ROOT, programs_of, run

TREE = ROOT / "build" / "faults"
BUILD = TREE / "build" / "faults"


def prepare():
    """Makes a copy of HEAD, built without optimisation, because every patch is compiled."""
    if TREE.exists():
        run("git", "-C", TREE, "checkout", "-q", "-f", "--detach", run("git", "rev-parse", "HEAD").stdout.strip())
    else:
        run("git", "worktree", "add", "--quiet", "--detach", TREE, "HEAD")
    run("cmake", "-G", "Ninja", "-S", TREE, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Debug", "-DLUMO_PCH=ON",
        "-DCMAKE_CXX_FLAGS_DEBUG=-O0")


def judge(patch, jobs):
    folders = patch.read_text().splitlines()[0].split()[1:]
    if run("git", "apply", patch, cwd=TREE, check=False).returncode != 0:
        return "does not apply"
    try:
        programs = {program for test, program in programs_of(BUILD).items() if test.split("_")[0] in folders}
        built = run("ninja", "-C", BUILD, f"-j{jobs}", "lumo", "lumo-run", *sorted(programs), check=False)
        if built.returncode != 0:
            return "does not build: " + built.stdout[-600:]
        named = f"^({'|'.join(folders)})(_|$)"
        ended = run("ctest", "--test-dir", BUILD, f"-j{jobs}", "--stop-on-failure", "-R", named,
                    "-E", "catalogues", check=False)
        red = re.findall(r" - (\S+) \((?:Failed|Timeout|SEGFAULT|Subprocess aborted)\)", ended.stdout)
        return f"red: {', '.join(red)}" if ended.returncode != 0 and red else "STAYS GREEN"
    finally:
        run("git", "checkout", "--quiet", "--force", ".", cwd=TREE)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("names", nargs="*")
    arguments = parser.parse_args()
    prepare()
    missed = []
    for patch in sorted((HERE / "faults").glob("*.patch")):
        if not arguments.names or patch.stem in arguments.names:
            verdict = judge(patch, arguments.jobs)
            print(f"{patch.stem}: {verdict}", flush=True)
            missed += [] if verdict.startswith("red") else [patch.stem]
    sys.exit(f"{len(missed)} missed: {' '.join(missed)}" if missed else 0)


if __name__ == "__main__":
    main()
