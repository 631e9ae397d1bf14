#!/usr/bin/python3
"""Mutation test: how many small changes of the code make a test fail, for each area.

    run.py [OPTION …] [--matrix | --compare | --stage STAGE …]

Stages: `mutate` writes the mutated copies of the areas. `build` builds the tests with them. `cover` runs each test and
records which mutants it reaches. `kill` runs each mutant of the sample (N in an area, the same for a seed) against the
tests that reach it, the fastest first, until one fails, crashes or hangs. `report` prints the tables. Results are stored
in build/mutants/results.jsonl, and an interrupted run continues; remove the file before a run whose results are published.

`matrix` records which test functions fail for each mutant that died; `report` then lists the functions that kill none.
`report --write-baseline` writes all results to baseline.tsv; `compare` repeats the mutants that died there and fails if
one survives that survivors.md does not explain.
"""
import argparse
import collections
import contextlib
import fnmatch
import hashlib
import json
import multiprocessing.pool
import os
import pathlib
import re
import signal
import subprocess
import sys
import tempfile
import time

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
BUILD = ROOT / "build" / "mutants"
COPIES = BUILD / "mutated"
BASELINE = HERE / "baseline.tsv"

AREAS = {
    "executor": ["lumo/executor/*.cpp", "program/*.cpp"],
    "devices": ["lumo/devices/*.cpp", "lumo/equipment/*.cpp"],
    "stations": ["lumo/stations/*.cpp"],
    "editor": ["lumo/editor/*.cpp"],
    "panel": ["lumo/panel/*.cpp", "lumo/module/*.cpp", "lumo/params/*.cpp", "lumo/files/*.cpp", "lumo/widgets/*.cpp"],
    "bridge": ["bridge/*.cpp", "bridge/*/*.cpp"],
    "conform": ["conform/*.cpp"],
    "flight": ["flight/*.cpp"],
    "host": ["host/*/*.cpp"],
    "kinematics": ["kinematics/*.cpp"],
    "look": ["look/*.cpp"],
    "simulator": ["simulator/*.cpp", "simulator/*/*.cpp"],
    "replay": ["runner/replay/*.cpp"],
    "runner": ["runner/*.cpp", "runner/stress/*.cpp", "workcell/*.cpp", "workcell/*/*.cpp"],
    "telemetry": ["telemetry/*.cpp"],
    "app": ["app/*.cpp", "app/*/*.cpp"],
}
# main() and what a bridge exports are not in a library.
UNCHANGED = re.compile(r"(.*/)?main\.cpp|bridge/\w+/plugin\.cpp")
# Not run: tests with random schedules or damaged files, those of pictures, which are slow, and those that need a display,
# an installation, ptrace or the one LinuxCNC that a machine can run.
LEFT_OUT = re.compile(r"campaign|long|packaging|fuzz|disk_|display|pictures|panel_randomclicks|linuxcnc_(live|conform)")
SLOWEST_S = 8.0
LIMITS = ["prlimit", f"--as={4 << 30}", f"--fsize={64 << 20}", "--core=0"]
ENVIRONMENT = {"QT_QPA_PLATFORM": "offscreen", "LC_ALL": "C.UTF-8", "QTEST_DISABLE_STACK_DUMP": "1"}
DEAD = ("killed", "time-out")
ENDS = DEAD + ("survived", "not reached")


def name_of(key, nth):
    """A mutant's name in survivors.md: its key, with a number for the second and later ones with the same key."""
    return f"{key} #{nth + 1}" if nth else key


def run(*command, cwd=ROOT, check=True):
    """Runs a tool and prints its output when it fails."""
    done = subprocess.run(list(map(str, command)), cwd=cwd, stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                          encoding="utf-8", errors="replace", env={**os.environ, **ENVIRONMENT})
    if check and done.returncode != 0:
        sys.exit(f"{command}\n{done.stdout[-3000:]}")
    return done


def load_mutants():
    """The mutants by the text of the change and a counter of equal texts, independent of line numbers."""
    count, found = collections.Counter(), {}
    for mutant in json.loads((COPIES / "mutants.json").read_text()):
        key = " | ".join((mutant["file"], mutant["function"], mutant["before"], mutant["after"]))
        area = next(area for area, globs in AREAS.items() if any(fnmatch.fnmatch(mutant["file"], g) for g in globs))
        found[key, count[key]] = {**mutant, "area": area}
        count[key] += 1
    return found


def load_results(name):
    path = BUILD / name
    results = map(json.loads, path.read_text().splitlines() if path.exists() else [])
    return {(result["key"], result["nth"]): result for result in results}


def sample_of(mutants, options):
    """The first mutants of each area, in an order (by hash) that does not change when mutants are added or removed."""
    taken = collections.Counter()
    for name in sorted(mutants, key=lambda n: hashlib.sha256(f"{options.seed} {n[0]} {n[1]}".encode()).digest()):
        area = mutants[name]["area"]
        wanted = area in options.area and options.operator in (None, mutants[name]["operator"])
        if wanted and (not options.sample or taken[area] < options.sample):
            taken[area] += 1
            yield name


def mutate(options):
    from mutate import write_copies  # here, because only this stage needs libclang
    release = ROOT / "build" / "release"
    # Gives the compiler flags and the headers generated from forms.
    run("cmake", "--preset", "release")
    run("cmake", "--build", release, "--target", "lumo_objects_autogen")
    globs = [g for area in options.area for g in AREAS[area]]
    names = sorted(str(path.relative_to(ROOT)) for g in globs for path in ROOT.glob(g))
    write_copies(ROOT, release, COPIES, [name for name in names if not UNCHANGED.match(name)], options.jobs)


def programs_of(build):
    """The programs that ctest starts, built or not: test → path in the build folder."""
    added = re.compile(rf'^add_test\(\W*(\w+)\W* "{re.escape(str(build))}/([^"]+)"', re.MULTILINE)
    return dict(test for path in build.rglob("CTestTestfile.cmake") for test in added.findall(path.read_text()))


def build(options):
    run("cmake", "-G", "Ninja", "-S", ROOT, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Release", f"-DLUMO_MUTANTS={COPIES}")
    compiled = {entry["file"] for entry in json.loads((BUILD / "compile_commands.json").read_text())}
    unused = {str(COPIES / mutant["file"]) for mutant in load_mutants().values()} - compiled
    assert not unused, f"compiled into nothing: {unused}"
    programs = {program for name, program in programs_of(BUILD).items() if not LEFT_OUT.match(name)}
    run("ninja", "-C", BUILD, f"-j{options.jobs}", *sorted(programs))


def load_tests():
    """Name, command and environment of the built tests."""
    for test in json.loads(run("ctest", "--test-dir", BUILD, "--show-only=json-v1").stdout)["tests"]:
        if "command" in test and not LEFT_OUT.match(test["name"]):
            properties = {p["name"]: p["value"] for p in test["properties"]}
            environment = dict(e.split("=", 1) for e in properties.get("ENVIRONMENT", []))
            yield {"name": test["name"], "command": test["command"], "environment": environment}


def run_test(test, seconds, arguments=(), **extra):
    """Runs a test. Returns how it ended (passed, failed or time-out), its time, and what it wrote to the files `written…`
    in its folder; % in arguments and environment stands for this folder."""
    with tempfile.TemporaryDirectory(prefix="mutant-", ignore_cleanup_errors=True) as folder:
        values = {**os.environ, **ENVIRONMENT, **test["environment"],
                  **dict.fromkeys(("HOME", "TMPDIR", "XDG_RUNTIME_DIR", "XDG_CONFIG_HOME"), folder),
                  **{name: value.replace("%", folder) for name, value in extra.items()}}
        started = time.monotonic()
        process = subprocess.Popen(
            [*LIMITS, *test["command"], *(a.replace("%", folder) for a in arguments)], cwd=folder, env=values,
            start_new_session=True, **dict.fromkeys(("stdin", "stdout", "stderr"), subprocess.DEVNULL))
        try:
            end = "passed" if process.wait(seconds) == 0 else "failed"
        except subprocess.TimeoutExpired:
            end = "time-out"
        with contextlib.suppress(ProcessLookupError):
            os.killpg(process.pid, signal.SIGKILL)  # also child processes
        process.wait()
        written = [path.read_text(errors="replace") for path in pathlib.Path(folder).glob("written*")]
        return end, time.monotonic() - started, "".join(written)


def coverage_of(test):
    """The mutants a test reaches, its time and, for QtTest, its functions; or the reason why it is left out."""
    end, seconds, reached = run_test(test, 300, LUMO_MUTANTS_REACHED="%/written")
    if end == "passed":
        end, seconds, _ = run_test(test, 60)
    slow = f"takes {seconds:.1f} s" if seconds > SLOWEST_S else ""
    fault = slow if end == "passed" else f"{end} without a mutant"
    reached = sorted(set(map(int, reached.split())))
    print(f"{test['name']}: {fault or f'{seconds:.2f} s, {len(reached)} mutants reached'}", flush=True)
    has_functions = not fault and b"libQt5Test.so" in pathlib.Path(test["command"][0]).read_bytes()
    shown = run(*test["command"], "-functions", check=False).stdout if has_functions else ""
    functions = re.findall(r"^(\w+)\(\)$", shown, re.MULTILINE)
    return {**test, "fault": fault, "seconds": seconds, "reached": reached, "functions": functions}


def cover(options):
    with multiprocessing.pool.ThreadPool(options.jobs) as pool:
        covered = sorted(pool.imap(coverage_of, list(load_tests())), key=lambda test: test["seconds"])
    (BUILD / "coverage.json").write_text(json.dumps(covered))


def load_coverage(with_fault=False):
    tests = json.loads((BUILD / "coverage.json").read_text())
    return [{**test, "reached": set(test["reached"])} for test in tests if bool(test["fault"]) == with_fault]


def fate(mutant, coverage):
    """The result of a mutant, and the test that killed it."""
    reaching = [test for test in coverage if mutant in test["reached"]]
    for test in reaching:
        for _ in range(2):  # a failure must be repeatable, because load can cause one
            end = run_test(test, 10 * test["seconds"] + 5, LUMO_MUTANT=str(mutant))[0]
            if end != "failed":
                break
        if end != "passed":
            return "killed" if end == "failed" else end, test["name"]
    return "survived" if reaching else "not reached", ""


def record(path, names, mutants, work, jobs):
    """Does the work for each mutant in parallel and stores the results."""
    with open(path, "a") as out, multiprocessing.pool.ThreadPool(jobs) as pool:
        results = pool.imap_unordered(lambda name: (name, work(mutants[name]["id"])), names)
        for at, (name, result) in enumerate(results, 1):
            print(json.dumps({"key": name[0], "nth": name[1], **result}, ensure_ascii=False), file=out, flush=True)
            print(f"{at}/{len(names)} {result.get('end', '')}: {mutants[name]['line']} {name_of(*name)}", flush=True)


def kill(options, names=None):
    mutants, coverage, done = load_mutants(), load_coverage(), load_results("results.jsonl")
    kept = {name for name, result in done.items() if result["end"] in DEAD or not options.retry}
    names = [name for name in (sample_of(mutants, options) if names is None else names) if name not in kept]
    record(BUILD / "results.jsonl", names, mutants, jobs=options.jobs,
           work=lambda mutant: dict(zip(("end", "by"), fate(mutant, coverage))))


def failing(mutant, test, names=(), hangs=0):
    """The functions of a test that fail with a mutant. After a crash or hang the others run in a new process."""
    if not test["functions"]:
        return {fate(mutant, [test])[1]} - {""}
    end, _, lines = run_test(test, 4 * test["seconds"] + 3, ["-v1", "-o", "%/written,txt", *names],
                             LUMO_MUTANT=str(mutant))
    messages = re.findall(r"^(\S+) *: (?:\w+::)*(\w+)\((.*)", lines, re.MULTILINE)
    failed = {function for kind, function, _ in messages if kind in ("FAIL!", "XPASS", "QFATAL")}
    # QtTest prints its totals also before a fatal error ends it.
    if re.search("^Totals:", lines, re.MULTILINE) and not re.search("^QFATAL", lines, re.MULTILINE):
        return failed or ({"(its end)"} if end != "passed" else set())
    entered = [function for kind, function, rest in messages if kind == "INFO" and rest.endswith(" entering")]
    last = entered[-1] if entered else "initTestCase"
    behind = test["functions"][test["functions"].index(last) + 1:] if last in test["functions"] else []
    hangs += end == "time-out"
    return failed | {last} | (failing(mutant, test, behind, hangs) if behind and hangs < 3 else set())


def matrix(options):
    mutants, coverage = load_mutants(), load_coverage()
    done, fates = load_results("matrix.jsonl"), load_results("results.jsonl")
    died = {name for name, result in fates.items() if result["end"] in DEAD} - set(done)
    names = [name for name in sample_of(mutants, options) if name in died]
    record(BUILD / "matrix.jsonl", names, mutants, jobs=options.jobs, work=lambda mutant: {
        "by": [[test["name"], function] for test in coverage if mutant in test["reached"]
               for function in sorted(failing(mutant, test))]})


def explained():
    """The names and reasons in survivors.md."""
    return dict(re.findall(r"^- `` (.+) `` *(.*)", (HERE / "survivors.md").read_text(), re.MULTILINE))


def table(heads, rows):
    """Prints rows of name → numbers with their sum."""
    print(f"\n| {' | '.join(heads)} |\n|---|{'--:|' * (len(heads) - 1)}")
    total = [sum(column) for column in zip(*rows.values())]
    for name, numbers in [*rows.items(), ("all", total)]:
        print(f"| {name} | {' | '.join(map(str, numbers))} |")


def report(options):
    mutants, done, known = load_mutants(), load_results("results.jsonl"), explained()
    sample = [name for name in sample_of(mutants, options) if name in done]
    for group in ("area", "operator"):
        counts = collections.defaultdict(collections.Counter)
        for name in sample:
            counts[f"`{mutants[name][group]}`".replace("|", "\\|")][done[name]["end"]] += 1
        table([group, "mutants", *ENDS], {name: [sum(ends.values()), *(ends[e] for e in ENDS)]
                                          for name, ends in sorted(counts.items())})
    living = [name for name in sample if done[name]["end"] not in DEAD]
    share = 100 * (1 - len(living) / max(len(sample), 1))
    print(f"\nSeed {options.seed}, {len(sample)} of {len(mutants)} mutants: {share:.1f} % died, {len(living)} did not.")
    for test in load_coverage(with_fault=True):
        print(f"Left out: {test['name']}, {test['fault']}.")
    for name in living:
        mark = "explained" if name_of(*name) in known else done[name]["end"]
        print(f"- {mark}: {mutants[name]['line']} {name_of(*name)}")
    if (BUILD / "matrix.jsonl").exists():
        report_matrix(sample, mutants)
    if options.write_baseline:
        rows = sorted((mutants[name]["area"], name[0], str(name[1]), result["end"], result["by"])
                      for name, result in done.items() if name in mutants)
        head = f"# area, key, nth, end, by; of run.py --seed {options.seed}\n"
        BASELINE.write_text(head + "".join("\t".join(row) + "\n" for row in rows))


def report_matrix(sample, mutants):
    """Prints for each area and test how many functions kill mutants, and how many kill one that no other kills."""
    results = load_results("matrix.jsonl").items()
    killers = {name: set(map(tuple, result["by"])) for name, result in results if name in sample}
    everybody = {test["name"]: {(test["name"], function) for function in test["functions"] or [test["name"]]}
                 for test in load_coverage()}

    def row(its, deaths):
        alone = set().union(*(by for by in deaths if len(by) == 1))
        return [len(its), len(its & set().union(*deaths)), len(its & alone),
                sum(bool(by & its) for by in deaths), sum(bool(by) and by <= its for by in deaths)]
    heads = ["functions", "that kill", "that kill alone", "mutants they kill", "that no others kill"]
    areas = {area: [by for name, by in killers.items() if mutants[name]["area"] == area] for area in AREAS}
    table(["area", *heads], {area: row(set().union(*deaths), deaths) for area, deaths in areas.items()})
    table(["test", *heads], {test: row(its, killers.values()) for test, its in sorted(everybody.items())})
    idle = set().union(*everybody.values()) - set().union(*killers.values())
    print("\nFunctions that kill nothing:", *(f"- {test} {function}" for test, function in sorted(idle)), sep="\n")


def compare(options):
    lines = [line.split("\t") for line in BASELINE.read_text().splitlines() if not line.startswith("#")]
    mutants, known = load_mutants(), explained()
    died = [(key, int(nth)) for area, key, nth, end, _ in lines if end in DEAD and area in options.area]
    kill(options, [name for name in died if name in mutants])
    done, bad = load_results("results.jsonl"), 0
    for name in died:
        end = done[name]["end"] if name in mutants else "no longer in the code"
        if end not in DEAD:
            reason = known.get(name_of(*name))
            bad += not reason
            print(f"- {end}: {name_of(*name)}: {reason or 'NO REASON'}")
    print(f"{len(died)} died in the baseline; {bad} of them live now without a reason.")
    sys.exit(bad > 0)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    stages = {stage.__name__: stage for stage in (mutate, build, cover, kill, matrix, report, compare)}
    first = ["mutate", "build", "cover"]
    parser.add_argument("--seed", type=int, default=7)
    parser.add_argument("--sample", type=int, default=50, help="how many mutants an area; 0: all")
    parser.add_argument("--area", nargs="+", choices=list(AREAS), default=list(AREAS))
    parser.add_argument("--operator", help="only this change: swap, statement, <=, …")
    parser.add_argument("--jobs", type=int, default=os.cpu_count())
    parser.add_argument("--stage", nargs="+", choices=list(stages), default=[*first, "kill", "report"])
    parser.add_argument("--retry", action="store_true", help="run survivors again, after a test was added")
    parser.add_argument("--write-baseline", action="store_true", help="with the stage report")
    for option, chosen in (("--matrix", [*first, "kill", "matrix", "report"]), ("--compare", [*first, "compare"])):
        parser.add_argument(option, action="store_const", dest="stage", const=chosen)
    options = parser.parse_args()
    for stage in options.stage:
        stages[stage](options)


if __name__ == "__main__":
    main()
