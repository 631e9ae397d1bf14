#!/usr/bin/env python3
"""Checks all sources for layout (.clang-format), names and faults (.clang-tidy, cppcheck). Needs the release
build, for its commands and generated headers. `--all` adds slow checks and the tests' sources."""

import json
import os
import re
import shlex
import subprocess
import sys
from concurrent.futures import ThreadPoolExecutor
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build/release"
PRODUCT = ["app", "bridge", "conform", "host", "kinematics", "look", "lumo", "program", "runner", "simulator", "telemetry", "tools", "workcell"]
# Findings in headers count, but not in those that are generated.
CLANG_TIDY = ["clang-tidy-16", "--quiet", f"--header-filter=^{ROOT}/({'|'.join([*PRODUCT, 'tests'])})/"]
STRLEN = ROOT / "cmake/clang_strlen.h"
# These take most of the time: only with --all. Those left out do not know invariants between functions, or that a
# listener may destroy what a reference refers to.
SLOW = ",".join([
    "bugprone-*", "clang-analyzer-*", "performance-*", "misc-unused-using-decls", "readability-redundant-*",
    "-bugprone-easily-swappable-parameters", "-bugprone-integer-division", "-bugprone-narrowing-conversions",
    "-bugprone-unchecked-optional-access", "-clang-analyzer-cplusplus.NewDeleteLeaks",
    "-clang-analyzer-optin.cplusplus.VirtualCall", "-performance-unnecessary-copy-initialization",
    "-readability-redundant-access-specifiers"])
# Objects on the stack announce themselves to their owner; singletons are never copied.
CPPCHECK = ["cppcheck", "--enable=warning,performance,portability", "--std=c++17", "--library=qt", "--quiet",
            "--inline-suppr", "--error-exitcode=1", "--suppress=danglingLifetime", "--suppress=noCopyConstructor",
            "--suppress=noOperatorEq", "--suppress=returnTempReference", "--suppress=unknownMacro",
            "--suppress=CastIntegerToAddressAtReturn", "-I.", "-Ihost", "-Ilumo"]


def run(command):
    """The output of a command that failed, else an empty text."""
    done = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return "" if done.returncode == 0 else done.stdout


def in_parallel(commands):
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        return "".join(pool.map(run, commands))


def tidy(folders, more):
    checks = ["--checks=" + more] if more else []
    return in_parallel([*CLANG_TIDY, "-p", str(BUILD), *checks, f"--extra-arg-before=-include{STRLEN}", name]
                       for name in compiled(folders))


def compiled(folders):
    names = (os.path.relpath(entry["file"], ROOT) for entry in COMMANDS)
    return sorted({name for name in names if name.split("/")[0] in folders})


def member_names():
    """Members stand in headers: all headers in one source take seconds, each source by itself minutes."""
    options = {option: None for entry in COMMANDS for option in
               re.findall(r"-(?:I|isystem )\S+|-DQT\S+", entry["command"])}
    headers = [name for name in SOURCES if name.endswith(".h") and name.split("/")[0] in PRODUCT]
    source = BUILD / "all_headers.cpp"
    source.write_text("".join(f'#include "{ROOT}/{name}"\n' for name in headers))
    return run([*CLANG_TIDY, "--checks=-*,readability-identifier-naming", str(source), "--", "-std=c++17", "-fPIC",
                "-include", str(STRLEN), *shlex.split(" ".join(options))])


def constant_names():
    """Constants without a prefix: `limit`, not `kLimit`."""
    found = []
    for name in SOURCES:
        for number, line in enumerate((ROOT / name).read_text().splitlines(), 1):
            if re.search(r"\bk[A-Z]\w*\s*(=|\{|\[)", re.sub(r'"[^"]*"', "", line)):
                found.append(f"{name}:{number}: {line.strip()}\n")
    return "".join(found)


def main(everything):
    stages = [
        ("layout", lambda: run(["clang-format-16", "--dry-run", "-Werror", *SOURCES])),
        ("names of constants", constant_names),
        ("names of members", member_names),
        ("cppcheck", lambda: run([*CPPCHECK, *PRODUCT])),
        ("faults", lambda: tidy(PRODUCT, "")),
    ]
    if everything:
        stages[-1] = ("faults", lambda: tidy([*PRODUCT, "tests", "benchmarks"], SLOW))
    failed = False
    for words, check in stages:
        found = check()
        if found:
            failed = True
            print(f"{words}:\n{found}")
    return failed


COMMANDS = json.loads((BUILD / "compile_commands.json").read_text())
SOURCES = subprocess.run(["git", "ls-files", "*.cpp", "*.h"], cwd=ROOT, capture_output=True, text=True,
                         check=True).stdout.split()
sys.exit(main("--all" in sys.argv))
