#!/usr/bin/python3
"""Mutation test: how many small changes of the code the tests see, area by area.

    run.py [--seed N] [--sample N] [--area A …] [--operator O] [--jobs N] [--retry] [--matrix]
           [--write-baseline] [--stage mutate|build|cover|kill|report|compare …] [--self-check]

Stages, the first five when none is named: `mutate` writes the mutated copies, `build` builds the tests with
them, `cover` runs each test once and notes which mutants it comes past, `kill` runs each mutant of the
sample against the tests that come past it, quickest first, up to the first that fails, crashes or does
not end, `report` prints the tables. The sample (N mutants an area) stays the same for a seed when code
elsewhere changes. Results are kept as they come (build/mutants/results.jsonl), so that a run that was
stopped goes on where it was; --retry runs survivors again, after a test was added. Results of other code
or tests count too: remove the file for a run that is to be quoted.

--matrix, after `kill`: runs each mutant that died against every test that comes past it and notes which of
its functions fail (matrix.jsonl); with `report` it tells which tests and functions nobody would miss.
`report --write-baseline` keeps all fates that are known in baseline.tsv. `compare` kills again what died there, and fails
if something lives that survivors.md does not explain. --self-check proves, with what was built, that the
dead are told from the living.
"""
import argparse
import collections
import fnmatch
import glob
import hashlib
import json
import multiprocessing.pool
import os
import re
import signal
import subprocess
import sys
import tempfile
import time

HERE = os.path.dirname(os.path.abspath(__file__))
ROOT = os.path.dirname(os.path.dirname(HERE))
BUILD = os.path.join(ROOT, "build", "mutants")
COPIES = os.path.join(BUILD, "mutated")
MUTANTS = os.path.join(COPIES, "mutants.json")
COVERAGE = os.path.join(BUILD, "coverage.json")
RESULTS = os.path.join(BUILD, "results.jsonl")
MATRIX = os.path.join(BUILD, "matrix.jsonl")
BASELINE = os.path.join(HERE, "baseline.tsv")

AREAS = {
    "executor": ["lumo/executor/*.cpp", "program/*/*.cpp"],
    "devices": ["lumo/devices/*.cpp"],
    "stations": ["lumo/binding/*.cpp"],
    "editor": ["lumo/editor/*.cpp"],
    "panel": ["lumo/panel/*.cpp", "lumo/module/*.cpp", "lumo/params/*.cpp"],
    "host": ["host/*/*.cpp"],
    "simulator": ["simulator/*.cpp"],
    "runner": ["runner/*.cpp", "recording/*.cpp"],
    "app": ["app/*.cpp", "app/*/*.cpp"],
}
# main() is in no library; the pictures have no test among those below.
UNCHANGED = ("*/main.cpp", "app/shots/*")
# Tests that are no measure of the others (random schedules, damaged files), or that need a display of
# their own, an installation or a debugger's rights.
LEFT_OUT = re.compile(r"campaign|long|packaging|fuzz|disk_|display|panel_randomclicks")
SLOWEST_S = 8.0
LIMITS = ["prlimit", f"--as={4 << 30}", f"--fsize={64 << 20}", "--core=0"]
DEAD = ("killed", "time-out")
ENDS = DEAD + ("survived", "not reached")
# For the self-check: a mutant that a test of this name cannot miss.
CHECKED_TEST = "executor_stops"
LETHAL = "lumo/executor/schedule.cpp | Schedule::runDue | performer_(entry.step); | "


def area_of(name):
    return next((area for area, globs in AREAS.items() if any(fnmatch.fnmatch(name, g) for g in globs)), None)


def name_of(key, nth):
    """A mutant's name in survivors.md: the key, and the number of those alike after the first."""
    return f"{key} #{nth + 1}" if nth else key


def run(command, **kwargs):
    print("+", " ".join(command), flush=True)
    subprocess.run(command, check=True, cwd=ROOT, **kwargs)


def load(path):
    with open(path) as file:
        return [json.loads(line) for line in file] if path.endswith("l") else json.load(file)


def load_mutants():
    """The mutants by what their results are kept under, also after lines were added above them: the words
    of the change, and which of several alike it is."""
    count, found = collections.Counter(), {}
    for mutant in load(MUTANTS):
        key = " | ".join((mutant["file"], mutant["function"], mutant["before"], mutant["after"]))
        found[key, count[key]] = {**mutant, "area": area_of(mutant["file"])}
        count[key] += 1
    return found


def load_results(path=RESULTS):
    return {(r["key"], r["nth"]): r for r in load(path)} if os.path.exists(path) else {}


def sample_of(mutants, options):
    """The first of each area in an order that one mutant's coming or going does not change."""
    def order(name):
        return hashlib.sha256(f"{options.seed} {name[0]} {name[1]}".encode()).digest()
    taken = collections.Counter()
    for name in sorted(mutants, key=order):
        area = mutants[name]["area"]
        wanted = area in options.area and options.operator in (None, mutants[name]["operator"])
        if wanted and (not options.sample or taken[area] < options.sample):
            taken[area] += 1
            yield name


# --- Building and running the tests -------------------------------------------------------------------

def mutate(options):
    release = os.path.join(ROOT, "build", "release")
    # The flags of the build, and the headers made of forms.
    if not os.path.exists(os.path.join(release, "build.ninja")):
        run(["cmake", "--preset", "release"])
    run(["cmake", "--build", release, "--target", "lumo_objects_autogen"])
    globs = [os.path.join(ROOT, g) for area in AREAS.values() for g in area]
    names = sorted(os.path.relpath(path, ROOT) for g in globs for path in glob.glob(g))
    run([os.path.join(HERE, "mutate.py"), "--root", ROOT, "--out", COPIES, "--jobs", str(options.jobs),
         "--commands", os.path.join(release, "compile_commands.json"),
         *(n for n in names if not any(fnmatch.fnmatch(n, u) for u in UNCHANGED))])


def build(options):
    run(["cmake", "-G", "Ninja", "-S", ROOT, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Release",
         f"-DLUMO_MUTANTS={COPIES}"])
    compiled = {entry["file"] for entry in load(os.path.join(BUILD, "compile_commands.json"))}
    unused = [m["file"] for m in load(MUTANTS) if os.path.join(COPIES, m["file"]) not in compiled]
    if unused:
        sys.exit(f"compiled into nothing: {', '.join(sorted(set(unused)))}")
    programs = set()
    for path in glob.glob(os.path.join(BUILD, "**", "CTestTestfile.cmake"), recursive=True):
        with open(path) as file:
            tests = re.findall(r'^add_test\(\[*=*\[?([^\]" ]+)[\]=]* "([^"]+)"', file.read(), re.MULTILINE)
        programs.update(os.path.relpath(program, BUILD) for name, program in tests
                        if program.startswith(BUILD) and not LEFT_OUT.match(name))
    run(["ninja", "-C", BUILD, "-j", str(options.jobs), *sorted(programs)])


def load_tests():
    """The built tests: name → command, environment."""
    shown = subprocess.run(["ctest", "--test-dir", BUILD, "--show-only=json-v1"], check=True,
                           stdout=subprocess.PIPE).stdout
    found = {}
    for test in json.loads(shown)["tests"]:
        command = test.get("command", [""])
        if not LEFT_OUT.match(test["name"]) and os.path.exists(command[0]):
            properties = {p["name"]: p["value"] for p in test.get("properties", [])}
            found[test["name"]] = command, dict(e.split("=", 1) for e in properties.get("ENVIRONMENT", []))
    return found


def run_test(test, seconds, arguments=(), read=None, **extra):
    """How it ended (passed, failed or time-out), how long it took, and what it wrote into the files `read` of its
    folder, which is % in the arguments and the environment given here."""
    command, environment = test
    with tempfile.TemporaryDirectory(prefix="mutant-", ignore_cleanup_errors=True) as folder:
        values = {**os.environ, "QT_QPA_PLATFORM": "offscreen", "QTEST_DISABLE_STACK_DUMP": "1", **environment,
                  **{name: folder for name in ("HOME", "TMPDIR", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME")},
                  **{name: value.replace("%", folder) for name, value in extra.items()}}
        started = time.monotonic()
        process = subprocess.Popen(
            [*LIMITS, *command, *(a.replace("%", folder) for a in arguments)], cwd=folder, env=values,
            start_new_session=True, **dict.fromkeys(("stdin", "stdout", "stderr"), subprocess.DEVNULL))
        try:
            end = "passed" if process.wait(seconds) == 0 else "failed"
        except subprocess.TimeoutExpired:
            end = "time-out"
        took = time.monotonic() - started
        try:
            os.killpg(process.pid, signal.SIGKILL)  # also what it left running
        except ProcessLookupError:
            pass
        process.wait()
        written = ""
        for path in glob.glob(os.path.join(folder, read)) if read else []:
            with open(path, errors="replace") as file:
                written += file.read()
        return end, took, written


def functions_of(test):
    """The test functions, in their order; none if it is no QtTest program."""
    with open(test[0][0], "rb") as file:
        if b"libQt5Test.so" not in file.read():
            return []
    shown = subprocess.run([*test[0], "-functions"], capture_output=True, text=True, check=True,
                           env={**os.environ, "QT_QPA_PLATFORM": "offscreen", **test[1]}).stdout
    return re.findall(r"^(\w+)\(\)$", shown, re.MULTILINE)


def coverage_of(name, test):
    """What a test comes past and how long it takes; why it is left out instead."""
    end, seconds, reached = run_test(test, 300, read="reached.*", LUMO_MUTANTS_REACHED="%/reached")
    if end == "passed":
        end, seconds, _ = run_test(test, 60)
    if end != "passed":
        return None, f"{end} without a mutant"
    if seconds > SLOWEST_S:
        return None, f"takes {seconds:.1f} s"
    return {"name": name, "seconds": seconds, "reached": sorted(set(map(int, reached.split()))),
            "functions": functions_of(test)}, ""


def cover(options):
    covered, left_out, tests = [], {}, load_tests()
    with multiprocessing.pool.ThreadPool(options.jobs) as pool:
        for name, (test, reason) in zip(tests, pool.imap(lambda name: coverage_of(name, tests[name]), tests)):
            if test:
                covered.append(test)
                reason = f"{test['seconds']:.2f} s, {len(test['reached'])} mutants reached"
            else:
                left_out[name] = reason
            print(f"{name}: {reason}", flush=True)
    covered.sort(key=lambda test: test["seconds"])
    with open(COVERAGE, "w") as file:
        json.dump({"tests": covered, "left out": left_out}, file)


def load_coverage():
    tests = load(COVERAGE)["tests"]
    return [{**test, "reached": set(test["reached"])} for test in tests]


# --- Killing ------------------------------------------------------------------------------------------

def fate(mutant, coverage, tests):
    """How a mutant ends, and by which test."""
    end = "not reached"
    for test in coverage:
        if mutant not in test["reached"]:
            continue
        # What fails once under load need not do so again.
        for _ in range(2):
            end = run_test(tests[test["name"]], 10 * test["seconds"] + 5, LUMO_MUTANT=str(mutant))[0]
            if end != "failed":
                break
        if end != "passed":
            return "killed" if end == "failed" else end, test["name"]
        end = "survived"
    return end, ""


def record(path, names, mutants, work, jobs):
    """Does the work for each name, at the same time, and keeps what comes of it."""
    with open(path, "a") as out, multiprocessing.pool.ThreadPool(jobs) as pool:
        for at, (name, result) in enumerate(pool.imap_unordered(lambda name: (name, work(name)), names), 1):
            out.write(json.dumps({"key": name[0], "nth": name[1], **result}, ensure_ascii=False) + "\n")
            out.flush()
            shown = result.get("end") or f"{len(result['by'])} functions"
            print(f"{at}/{len(names)} {shown} {result['by'] if 'end' in result else ''}: "
                  f"{mutants[name]['line']} {name_of(*name)}", flush=True)


def kill(options, names=None):
    mutants, coverage, tests, done = load_mutants(), load_coverage(), load_tests(), load_results()
    again = [] if not options.retry else [name for name, result in done.items() if result["end"] not in DEAD]
    names = [n for n in names or sample_of(mutants, options) if n not in done or n in again]
    record(RESULTS, names, mutants, jobs=options.jobs, work=lambda name: dict(
        zip(("end", "by"), fate(mutants[name]["id"], coverage, tests))))


def failing(mutant, test, command):
    """The functions of a test that fail with a mutant: after one that crashes or hangs, those behind it run in
    a process of their own."""
    left, failed, hangs = test["functions"], set(), 0
    if not left:
        end = run_test(command, 10 * test["seconds"] + 5, LUMO_MUTANT=str(mutant))[0]
        return {test["name"]} if end != "passed" else set()
    names = []
    while hangs < 3:
        end, _, lines = run_test(command, 4 * test["seconds"] + 3, ["-v1", "-o", "%/lines,txt", *names], "lines",
                                 LUMO_MUTANT=str(mutant))
        entered = "initTestCase"
        for kind, function, rest in re.findall(r"^(\S+) *: (?:\w+::)*(\w+)\((.*)", lines, re.MULTILINE):
            if kind == "INFO" and rest.endswith(" entering"):
                entered = function
            elif kind in ("FAIL!", "XPASS", "QFATAL"):
                failed.add(function)
        # QtTest counts up before a fatal error ends it, too.
        if re.search("^Totals:", lines, re.MULTILINE) and not re.search("^QFATAL", lines, re.MULTILINE):
            return failed or ({"(its end)"} if end != "passed" else set())
        failed.add(entered)
        hangs += end == "time-out"
        names = left = left[left.index(entered) + 1:] if entered in left else []
        if not left:
            break
    return failed


def matrix(options):
    mutants, coverage, tests = load_mutants(), load_coverage(), load_tests()
    done, fates = load_results(MATRIX), load_results()
    names = [name for name in sample_of(mutants, options)
             if name not in done and fates.get(name, {}).get("end") in DEAD]

    def work(name):
        mutant = mutants[name]["id"]
        return {"by": [[test["name"], function] for test in coverage if mutant in test["reached"]
                       for function in sorted(failing(mutant, test, tests[test["name"]]))]}
    record(MATRIX, names, mutants, work, options.jobs)


# --- Telling ------------------------------------------------------------------------------------------

def explained():
    """What survivors.md says: its lines `- name` in code marks, and the reason behind."""
    with open(os.path.join(HERE, "survivors.md")) as file:
        return dict(re.findall(r"^- `` (.+) `` *(.*)", file.read(), re.MULTILINE))


def table(heads, rows):
    """Rows of name → numbers, with their sum below."""
    print(f"\n| {' | '.join(heads)} |\n|---|{'--:|' * (len(heads) - 1)}")
    total = [sum(column) for column in zip(*rows.values())]
    for name, numbers in [*rows.items(), ("all", total)]:
        print(f"| {name} | {' | '.join(map(str, numbers))} |")


def report(options):
    mutants, done, known = load_mutants(), load_results(), explained()
    sample = [name for name in sample_of(mutants, options) if name in done]
    for title, group in ("area", "area"), ("change", "operator"):
        counts = collections.defaultdict(collections.Counter)
        for name in sample:
            counts[f"`{mutants[name][group]}`".replace("|", "\\|")][done[name]["end"]] += 1
        table([title, "mutants", *ENDS], {name: [sum(ends.values()), *(ends[e] for e in ENDS)]
                                          for name, ends in sorted(counts.items())})
    died = sum(done[name]["end"] in DEAD for name in sample)
    print(f"\nSeed {options.seed}, {len(sample)} of {len(mutants)} mutants: {died} died "
          f"({100 * died / max(len(sample), 1):.1f} %).")
    for name, reason in load(COVERAGE)["left out"].items():
        print(f"Left out: {name}, {reason}.")
    for name in sample:
        if done[name]["end"] not in DEAD:
            mark = "explained" if name_of(*name) in known else done[name]["end"]
            print(f"- {mark}: {mutants[name]['line']} {name_of(*name)}")
    if os.path.exists(MATRIX):
        report_matrix(sample, mutants)
    if options.write_baseline:
        with open(BASELINE, "w") as file:
            file.write(f"# area, key, nth, end, by; of run.py --seed {options.seed}\n")
            file.writelines("\t".join((mutants[n]["area"], n[0], str(n[1]), done[n]["end"], done[n]["by"])) + "\n"
                            for n in sorted(done, key=lambda n: (mutants[n]["area"], *n)))


def report_matrix(sample, mutants):
    """What each area and each test has of functions, of those that kill, and that kill what no other does."""
    results, coverage = load_results(MATRIX), load_coverage()
    sample = [name for name in sample if name in results]
    killers = {name: {tuple(by) for by in results[name]["by"]} for name in sample}
    functions = {test["name"]: {(test["name"], f) for f in test["functions"] or [test["name"]]} for test in coverage}

    def row(reaching, names):
        killing = set().union(*(killers[name] for name in names)) & reaching
        alone = {by for name in names if len(killers[name]) == 1 for by in killers[name]} & reaching
        return [len(reaching), len(killing), len(alone)], killing
    rows = {}
    for area in AREAS:
        names = [name for name in sample if mutants[name]["area"] == area]
        ids = {mutants[name]["id"] for name in names}
        reaching = set().union(*(functions[test["name"]] for test in coverage if ids & test["reached"]))
        rows[area] = [len(names), *row(reaching, names)[0]]
    heads = ["functions", "that kill", "that kill alone"]
    table(["area", "mutants", *heads], {area: numbers for area, numbers in rows.items() if numbers[0]})
    rows, idle = {}, []
    for test, its in sorted(functions.items()):
        only = sum(bool(by) and by <= its for by in killers.values())
        numbers, killing = row(its, sample)
        rows[test] = [*numbers, sum(bool(by & its) for by in killers.values()), only]
        idle += sorted(its - killing)
    table(["test", *heads, "mutants it kills", "that no other test kills"], rows)
    print("\nFunctions that kill nothing:", *(f"- {test} {function}" for test, function in idle), sep="\n")


def compare(options):
    with open(BASELINE) as file:
        lines = [line.rstrip("\n").split("\t") for line in file if not line.startswith("#")]
    mutants, known = load_mutants(), explained()
    died = [(key, int(nth)) for area, key, nth, end, _ in lines if end in DEAD and area in options.area]
    kill(options, [name for name in died if name in mutants])
    done, bad = load_results(), 0
    for name in died:
        end = done[name]["end"] if name in mutants else "gone from the code"
        if end not in DEAD:
            reason = known.get(name_of(*name))
            bad += not reason
            print(f"- {end}: {name_of(*name)}: {reason or 'NO REASON'}")
    print(f"{len(died)} died in the baseline; {bad} of them live now without a reason.")
    sys.exit(1 if bad else 0)


def self_check():
    """Whether the dead are told from the living: each line is a claim, and whether it holds."""
    mutants, tests = load_mutants(), load_tests()
    checked = next(name for name in tests if name.lower().endswith(CHECKED_TEST))
    test, reason = coverage_of(checked, tests[checked])
    if not test:
        sys.exit(f"{checked}: {reason}")
    nobody, lethal = len(mutants), mutants[LETHAL, 0]["id"]
    tests["endless"] = ["sleep", "60"], {}
    endless = {"name": "endless", "seconds": -0.4, "reached": [nobody], "functions": []}
    claims = {
        "unchanged code survives": fate(nobody, [{**test, "reached": [nobody]}], tests) == ("survived", ""),
        "what no test comes past is not reached": fate(nobody, [test], tests) == ("not reached", ""),
        "a lethal change is killed by the test that comes past it":
            fate(lethal, [test], tests) == ("killed", checked),
        "a test that does not end kills": fate(nobody, [endless], tests) == ("time-out", "endless"),
        "a test that fails without a mutant is left out, and told":
            coverage_of("broken", (["false"], {})) == (None, "failed without a mutant"),
        "in unchanged code no function fails": failing(nobody, test, tests[checked]) == set(),
        "a lethal change fails functions of the test, not all":
            set() < failing(lethal, test, tests[checked]) < set(test["functions"]),
        "a program that does not end fails": failing(nobody, endless, tests["endless"]) == {"endless"},
    }
    for claim, holds in claims.items():
        print(f"{'holds' if holds else 'WRONG'}: {claim}")
    sys.exit(0 if all(claims.values()) else 1)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    stages = {"mutate": mutate, "build": build, "cover": cover, "kill": kill, "matrix": matrix,
              "report": report, "compare": compare}
    parser.add_argument("--seed", type=int, default=7)
    parser.add_argument("--sample", type=int, default=50, help="how many mutants an area; 0: all")
    parser.add_argument("--area", nargs="+", choices=list(AREAS), default=list(AREAS))
    parser.add_argument("--operator", help="only this change: swap, statement, <=, …")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--stage", nargs="+", choices=list(stages))
    parser.add_argument("--retry", action="store_true", help="run survivors again")
    parser.add_argument("--matrix", action="store_true", help="the same as the stage matrix, after kill")
    parser.add_argument("--write-baseline", action="store_true", help="with the stage report")
    parser.add_argument("--self-check", action="store_true", help="of what was built and nothing else")
    options = parser.parse_args()
    if options.self_check:
        self_check()
    chosen = options.stage or ["mutate", "build", "cover", "kill", "report"]
    if options.matrix and "matrix" not in chosen:
        chosen.insert(chosen.index("report") if "report" in chosen else len(chosen), "matrix")
    for stage in chosen:
        stages[stage](options)


if __name__ == "__main__":
    main()
