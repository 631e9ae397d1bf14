#!/usr/bin/python3
"""Real faults against the tests: each patch in faults/ must turn a test red.

    faults.py [--jobs N] [NAME…]

Each patch is put on a copy of HEAD in build/faults, what it changes is built, and the tests of the folders
that its first line names ("Tests: executor program") are run up to the first that fails. Prints a line a
patch; fails when one stays green, does not apply, or does not build.
"""
import argparse
import glob
import os
import subprocess
import sys

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
TREE = os.path.join(ROOT, "build", "faults")
BUILD = os.path.join(TREE, "build", "faults")
ENVIRONMENT = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8"}


def run(*command, cwd=TREE, check=True):
    done = subprocess.run(command, cwd=cwd, env=ENVIRONMENT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          universal_newlines=True)
    if check and done.returncode != 0:
        sys.exit(f"{' '.join(command)}\n{done.stdout[-3000:]}")
    return done


def prepare():
    """A copy of HEAD that is built without optimisation, which costs the least a patch."""
    if os.path.exists(TREE):
        run("git", "checkout", "--quiet", "--force", "--detach", run("git", "rev-parse", "HEAD", cwd=ROOT).stdout.strip())
    else:
        run("git", "worktree", "add", "--quiet", "--detach", TREE, "HEAD", cwd=ROOT)
    run("cmake", "-G", "Ninja", "-S", TREE, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Debug", "-DLUMO_PCH=ON",
        "-DCMAKE_CXX_FLAGS_DEBUG=-O0")


def judge(patch, jobs):
    with open(patch) as file:
        folders = file.readline().split()[1:]
    if run("git", "apply", patch, check=False).returncode != 0:
        return "does not apply"
    try:
        targets = [f if f == "campaign" else f"test_{f}" for f in folders if f != "program"]
        built = run("ninja", "-C", BUILD, f"-j{jobs}", "lumo", "lumo-run", *targets, check=False)
        if built.returncode != 0:
            return "does not build: " + built.stdout[-600:]
        ended = run("ctest", "--test-dir", BUILD, f"-j{jobs}", "--stop-on-failure", "--no-tests=error",
                    "-R", f"^({'|'.join(folders)})(_|$)", "-E", "catalogues", check=False)
        red = [line.split(" - ")[1].split(" ")[0] for line in ended.stdout.splitlines() if "(Failed)" in line or
               "(Timeout)" in line or "(SEGFAULT)" in line or "(Subprocess aborted)" in line]
        return f"red: {', '.join(red)}" if ended.returncode != 0 and red else "STAYS GREEN"
    finally:
        run("git", "checkout", "--quiet", "--force", ".")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("names", nargs="*")
    arguments = parser.parse_args()
    prepare()
    missed = []
    for patch in sorted(glob.glob(os.path.join(HERE, "faults", "*.patch"))):
        name = os.path.basename(patch)[:-len(".patch")]
        if arguments.names and name not in arguments.names:
            continue
        verdict = judge(patch, arguments.jobs)
        print(f"{name}: {verdict}", flush=True)
        if not verdict.startswith("red"):
            missed.append(name)
    if missed:
        sys.exit(f"{len(missed)} missed: {' '.join(missed)}")


if __name__ == "__main__":
    main()
