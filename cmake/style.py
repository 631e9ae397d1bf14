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
from functools import partial
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
BUILD = ROOT / "build/release"
COMMANDS = json.loads((BUILD / "compile_commands.json").read_text())
SOURCES = subprocess.run(["git", "ls-files", "*.cpp", "*.h"], cwd=ROOT, capture_output=True, text=True,
                         check=True).stdout.split()
TESTS = ["tests", "benchmarks"]
PRODUCT = sorted({name.split("/")[0] for name in SOURCES} - {*TESTS, "cmake", "docs"})
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
# Sources are read in groups of about this size, as reading Qt's headers takes longer than reading a source.
GROUP_BYTES = 150_000


def run(command):
    """The output of a command that failed, else an empty text."""
    done = subprocess.run(command, cwd=ROOT, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True)
    return "" if done.returncode == 0 else done.stdout


def compiled(folders):
    names = (os.path.relpath(entry["file"], ROOT) for entry in COMMANDS)
    return sorted({name for name in names if name.split("/")[0] in folders})


def own_names(source):
    """What a source keeps to itself and two sources in one translation unit cannot both have: namespace and name → its
    line. By the layout such a line begins at the margin."""
    found, where, is_hidden = {}, source.split("/")[0], False
    for line in (ROOT / source).read_text().splitlines():
        if opened := re.match(r"namespace (?:(\w+)[\w:]* )?{$", line):
            where, is_hidden = opened[1] or where, not opened[1]
        elif line.startswith("}  // namespace"):
            is_hidden = False
        elif re.match(r"int main\(|LUMO_BRIDGE_", line):
            found["", "main"] = line
        elif is_hidden or re.match("(static|const|constexpr|using) ", line):
            plain = re.sub(r"<[^<>]*(<[^<>]*>[^<>]*)*>", "", line)
            named = re.match(r"(?:using \w+::|} |(?:\w.*?)?[ *&:])(\w+)(?= : |;|,|\(| ?[{[]| =)", plain)
            constants = re.findall(r"\w+(?= = )", plain) if plain.startswith("const") else []
            found.update({(where, name): line for name in [*([named[1]] if named else []), *constants]})
    return found


def groups(sources):
    """The sources in groups that can be one translation unit each."""
    made = []
    for source in sources:
        names, size = own_names(source), (ROOT / source).stat().st_size
        for group in made:
            taken = group["names"]
            if group["size"] + size <= GROUP_BYTES and all(
                    taken[name] == line and line.startswith("using ") for name, line in names.items() if name in taken):
                break
        else:
            group = {"sources": [], "names": {}, "size": 0}
            made.append(group)
        group["sources"].append(source)
        group["names"].update(names)
        group["size"] += size
    return [group["sources"] for group in made]


def options(folders):
    """Of all commands for the sources in these folders together."""
    found = {option: None for entry in COMMANDS if os.path.relpath(entry["file"], ROOT).split("/")[0] in folders
             for option in re.findall(r"-(?:I|isystem )\S+|-D\S+", entry["command"])}
    return ["--", "-std=c++17", "-fPIC", "-include", str(STRLEN), *shlex.split(" ".join(found))]


def tidy_together(number, sources):
    """Each by itself where they do not fit together after all."""
    unit = BUILD / f"style_{number}.cpp"
    unit.write_text("".join(f'#include "{ROOT}/{name}"\n' for name in sources))
    found = run([*CLANG_TIDY, str(unit), *options(PRODUCT)])
    return "".join(map(tidy_alone, sources)) if "clang-diagnostic-error" in found else found


def tidy_alone(source, checks=""):
    return run([*CLANG_TIDY, "-p", str(BUILD), *(["--checks=" + checks] if checks else []),
                f"--extra-arg-before=-include{STRLEN}", source])


def member_names():
    """Members stand in headers: all headers in one source take seconds, each source by itself minutes."""
    headers = [name for name in SOURCES if name.endswith(".h") and name.split("/")[0] in PRODUCT]
    source = BUILD / "all_headers.cpp"
    source.write_text("".join(f'#include "{ROOT}/{name}"\n' for name in headers))
    return run([*CLANG_TIDY, "--checks=-*,readability-identifier-naming", str(source), *options(PRODUCT)])


def constant_names():
    """Constants without a prefix: `limit`, not `kLimit`."""
    found = []
    for name in SOURCES:
        for number, line in enumerate((ROOT / name).read_text().splitlines(), 1):
            if re.search(r"\bk[A-Z]\w*\s*(=|\{|\[)", re.sub(r'"[^"]*"', "", line)):
                found.append(f"{name}:{number}: {line.strip()}\n")
    return "".join(found)


def main(everything):
    jobs = [
        ("cppcheck", lambda: run([*CPPCHECK, *PRODUCT])),
        ("names of members", member_names),
        ("layout", lambda: run(["clang-format-16", "--dry-run", "-Werror", *SOURCES])),
        ("names of constants", constant_names),
    ]
    if everything:
        jobs += [("faults", partial(tidy_alone, name, SLOW)) for name in compiled([*PRODUCT, *TESTS])]
    else:
        jobs += [("faults", partial(tidy_together, number, sources))
                 for number, sources in enumerate(groups(compiled(PRODUCT)))]
    found = {}
    with ThreadPoolExecutor(os.cpu_count()) as pool:
        for (words, _), result in zip(jobs, pool.map(lambda job: job[1](), jobs)):
            found[words] = found.get(words, "") + result
    for words, text in found.items():
        if text:
            print(f"{words}:\n{text}")
    return any(found.values())


sys.exit(main("--all" in sys.argv))
