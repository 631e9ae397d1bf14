#!/usr/bin/python3
"""Mutation test of the executor, the ports and the stations: how many small changes of the code the tests see.

    run.py [--seed N] [--sample N] [--stage mutate|build|cover|kill|report …] [--retry] [--self-check]

Stages, all of them when none is named: `mutate` writes the mutated copies, `build` builds the tests with
them, `cover` runs each test once and notes which mutants it comes past, `kill` runs each mutant of the
sample against the tests that come past it, quickest first, up to the first that fails, crashes or does
not end, `report` prints the tables. Results are kept as they come (build/mutants/results.jsonl), so that
a run that was stopped goes on where it was; --retry runs survivors again, after a test was added. Results
of other code or tests count too: remove the file for a run that is to be quoted. --self-check proves,
with what was built, that the dead are told from the living.
"""
import argparse
import collections
import glob
import json
import os
import random
import re
import resource
import shutil
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

SOURCES = ["lumo/executor/*.cpp", "lumo/devices/ports.cpp"] + [
    f"lumo/binding/{name}.cpp" for name in
    ("station", "stationqueue", "inputwatch", "stationtable", "signalsbindwidget")]
# The quick tests of what is mutated, then whole programs, then the campaign.
TARGETS = """test_schedule test_laserplan test_runprogram test_run test_results test_laser test_permission
    test_waittable test_resume test_arc test_circle test_ports test_portconfig test_devicecontrol test_station test_monitoring
    test_stationeditor test_panel campaign program_case""".split()
CAMPAIGN_COUNT = "150"
SLOWEST_S = 5.0
MEMORY_BYTES = 4 << 30
FILE_BYTES = 64 << 20
# For the self-check: a test, and a mutant that it cannot miss.
CHECKED_TEST = "test_schedule"
LETHAL = "lumo/executor/schedule.cpp | Schedule::runDue | performer_(entry.step); | "


def name_of(key, nth):
    """A mutant's name in survivors.md: the key, and the number of those alike after the first."""
    return f"{key} #{nth + 1}" if nth else key


def run(command, **kwargs):
    print("+", " ".join(command), flush=True)
    subprocess.run(command, check=True, cwd=ROOT, **kwargs)


def load(path):
    with open(path) as file:
        return json.load(file)


def key_of(mutant):
    """What names a mutant also after lines were added above it."""
    return " | ".join((mutant["file"], mutant["function"], mutant["before"], mutant["after"]))


# --- Stages -------------------------------------------------------------------------------------------

def mutate():
    release = os.path.join(ROOT, "build", "release")
    # The package's flags, and the headers made of its forms.
    if not os.path.exists(os.path.join(release, "build.ninja")):
        run(["cmake", "--preset", "release"])
    run(["cmake", "--build", release, "--target", "lumo_objects_autogen"])
    names = sorted(os.path.relpath(p, ROOT) for s in SOURCES for p in glob.glob(os.path.join(ROOT, s)))
    run([os.path.join(HERE, "mutate.py"), "--root", ROOT, "--out", COPIES,
         "--commands", os.path.join(release, "compile_commands.json"), *names])


def build():
    run(["cmake", "-G", "Ninja", "-S", ROOT, "-B", BUILD, "-DCMAKE_BUILD_TYPE=Release",
         f"-DLUMO_MUTANTS={COPIES}"])
    run(["cmake", "--build", BUILD, "--target", *TARGETS])


def tests():
    """The built tests: name → command, environment."""
    shown = subprocess.run(["ctest", "--test-dir", BUILD, "--show-only=json-v1"], check=True,
                           stdout=subprocess.PIPE).stdout
    found = {}
    for test in json.loads(shown)["tests"]:
        name = test["name"]
        if name not in TARGETS and not name.startswith("program_"):
            continue
        if "command" not in test or not os.path.exists(test["command"][0]):
            continue
        command = list(test["command"])
        if name == "campaign":
            command = command[:1] + ["--count", CAMPAIGN_COUNT]
        properties = {p["name"]: p["value"] for p in test.get("properties", [])}
        environment = dict(e.split("=", 1) for e in properties.get("ENVIRONMENT", []))
        found[name] = command, environment
    return found


class Scratch:
    """A working directory that is gone afterwards."""

    def __enter__(self):
        self.path = tempfile.mkdtemp(prefix="mutant-")
        return self.path

    def __exit__(self, *_):
        shutil.rmtree(self.path, ignore_errors=True)


def limit():
    os.setsid()
    resource.setrlimit(resource.RLIMIT_AS, (MEMORY_BYTES, MEMORY_BYTES))
    resource.setrlimit(resource.RLIMIT_FSIZE, (FILE_BYTES, FILE_BYTES))
    resource.setrlimit(resource.RLIMIT_CORE, (0, 0))


def run_test(command, environment, seconds, **extra):
    """How it ended: passed, failed or time-out; and how long it took."""
    with Scratch() as folder:
        values = {**os.environ, "QT_QPA_PLATFORM": "offscreen", **environment, "HOME": folder, "TMPDIR": folder,
                  "XDG_RUNTIME_DIR": folder, "XDG_CONFIG_HOME": folder, **extra}
        started = time.monotonic()
        process = subprocess.Popen(command, cwd=folder, env=values, stdin=subprocess.DEVNULL,
                                   stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, preexec_fn=limit)
        try:
            end = "passed" if process.wait(seconds) == 0 else "failed"
        except subprocess.TimeoutExpired:
            end = "time-out"
            os.killpg(process.pid, signal.SIGKILL)
            process.wait()
        return end, time.monotonic() - started


def coverage_of(name, command, environment):
    """What a test comes past and how long it takes; why it is left out instead."""
    with Scratch() as folder:
        end, _ = run_test(command, environment, 120, LUMO_MUTANTS_REACHED=os.path.join(folder, "reached"))
        reached = set()
        for path in glob.glob(os.path.join(folder, "reached.*")):
            with open(path) as file:
                reached.update(int(line) for line in file)
    if end == "passed":
        end, seconds = run_test(command, environment, 120)
    if end != "passed":
        return None, f"{end} without a mutant"
    if seconds > SLOWEST_S and name != "campaign":
        return None, f"takes {seconds:.1f} s"
    return {"name": name, "seconds": seconds, "reached": sorted(reached)}, ""


def cover():
    covered, left_out = [], {}
    for name, (command, environment) in tests().items():
        test, reason = coverage_of(name, command, environment)
        if test:
            covered.append(test)
            print(f"{name}: {test['seconds']:.2f} s, {len(test['reached'])} mutants reached", flush=True)
        else:
            left_out[name] = reason
            print(f"{name}: {reason}, left out", flush=True)
    covered.sort(key=lambda test: test["seconds"])
    with open(COVERAGE, "w") as file:
        json.dump({"tests": covered, "left out": left_out}, file)


def sample_of(mutants, seed, count):
    if count <= 0 or count >= len(mutants):
        return mutants
    return sorted(random.Random(seed).sample(mutants, count), key=lambda mutant: mutant["id"])


def results():
    found = {}
    if os.path.exists(RESULTS):
        with open(RESULTS) as file:
            for line in file:
                result = json.loads(line)
                found[result["key"], result["nth"]] = result
    return found


def numbered(mutants):
    """The mutants with what their result is kept under: the key, and which of several alike it is."""
    count = collections.Counter()
    for mutant in mutants:
        key = key_of(mutant)
        yield (key, count[key]), mutant
        count[key] += 1


def fate(mutant, coverage, commands):
    """How a mutant ends, and by which test."""
    end = "not reached"
    for test in coverage:
        if mutant not in test["reached"]:
            continue
        command, environment = commands[test["name"]]
        end, _ = run_test(command, environment, 10 * test["seconds"] + 5, LUMO_MUTANT=str(mutant))
        if end != "passed":
            return "killed" if end == "failed" else end, test["name"]
        end = "survived"
    return end, ""


def kill(seed, count, retry):
    mutants = load(MUTANTS)
    names = {mutant["id"]: key for key, mutant in numbered(mutants)}
    coverage, commands, done = load(COVERAGE)["tests"], tests(), results()
    chosen = sample_of(mutants, seed, count)
    with open(RESULTS, "a") as out:
        for at, mutant in enumerate(chosen, 1):
            key, nth = names[mutant["id"]]
            if (key, nth) in done and not (retry and done[key, nth]["end"] in ("survived", "not reached")):
                continue
            end, by = fate(mutant["id"], coverage, commands)
            result = {"key": key, "nth": nth, "end": end, "by": by}
            out.write(json.dumps(result, ensure_ascii=False) + "\n")
            out.flush()
            print(f"{at}/{len(chosen)} {result['end']} {result['by']}: {mutant['file']}:{mutant['line']} "
                  f"{mutant['before']} → {mutant['after'] or 'removed'}", flush=True)


def explained():
    """The names in survivors.md: its lines `- name` in code marks."""
    with open(os.path.join(HERE, "survivors.md")) as file:
        return set(re.findall(r"^- `` (.+) ``", file.read(), re.MULTILINE))


def table(title, rows):
    total = collections.Counter()
    lines = [f"| {title} | mutants | killed | time-out | survived | not reached |", "|---|--:|--:|--:|--:|--:|"]
    for name, counts in sorted(rows.items()) + [("all", None)]:
        if counts is None:
            counts = total
        else:
            total.update(counts)
        cells = [counts[end] for end in ("killed", "time-out", "survived", "not reached")]
        lines.append(f"| {name} | {sum(cells)} | " + " | ".join(map(str, cells)) + " |")
    return "\n".join(lines)


def report(seed, count):
    mutants, done = load(MUTANTS), results()
    names = {mutant["id"]: key for key, mutant in numbered(mutants)}
    by_file, by_operator = (collections.defaultdict(collections.Counter) for _ in range(2))
    survivors, killed, known, missing = [], 0, explained(), 0
    for mutant in sample_of(mutants, seed, count):
        result = done.get(names[mutant["id"]])
        if not result:
            missing += 1
            continue
        by_file[mutant["file"]][result["end"]] += 1
        by_operator[f"`{mutant['operator']}`".replace("|", "\\|")][result["end"]] += 1
        if result["end"] in ("killed", "time-out"):
            killed += 1
        else:
            survivors.append((mutant, result, name_of(*names[mutant["id"]])))
    total = killed + len(survivors)
    print(table("file", by_file), "\n", table("change", by_operator), sep="\n")
    print(f"\nSeed {seed}, {total} of {len(mutants)} mutants: {killed} died ({100 * killed / max(total, 1):.1f} %).",
          f"{missing} of the sample have not been run." if missing else "")
    for name, reason in load(COVERAGE)["left out"].items():
        print(f"Left out: {name}, {reason}.")
    for mutant, result, name in survivors:
        mark = "explained" if name in known else result["end"]
        print(f"- {mark}: {mutant['file']}:{mutant['line']} {mutant['function']}: "
              f"`{mutant['before']}` → `{mutant['after'] or 'removed'}`")


def self_check():
    """Whether the dead are told from the living: each line is a claim, and whether it holds."""
    mutants, commands = load(MUTANTS), tests()
    test, reason = coverage_of(CHECKED_TEST, *commands[CHECKED_TEST])
    if not test:
        sys.exit(f"{CHECKED_TEST}: {reason}")
    nobody = len(mutants)
    lethal = next(mutant["id"] for mutant in mutants if key_of(mutant) == LETHAL)
    commands["endless"] = ["sleep", "60"], {}
    claims = {
        "unchanged code survives":
            fate(nobody, [{**test, "reached": [nobody]}], commands) == ("survived", ""),
        "what no test comes past is not reached": fate(nobody, [test], commands) == ("not reached", ""),
        "a lethal change is killed by the test that comes past it":
            fate(lethal, [test], commands) == ("killed", CHECKED_TEST),
        "a test that does not end kills": fate(nobody, [{"name": "endless", "seconds": -0.4, "reached": [nobody]}],
                                               commands) == ("time-out", "endless"),
        "a test that fails without a mutant is left out, and told":
            coverage_of("broken", ["false"], {}) == (None, "failed without a mutant"),
    }
    for claim, holds in claims.items():
        print(f"{'holds' if holds else 'WRONG'}: {claim}")
    sys.exit(0 if all(claims.values()) else 1)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--seed", type=int, default=7)
    parser.add_argument("--sample", type=int, default=500, help="how many mutants; 0: all")
    parser.add_argument("--stage", nargs="+", default=["mutate", "build", "cover", "kill", "report"])
    parser.add_argument("--retry", action="store_true", help="run survivors again")
    parser.add_argument("--self-check", action="store_true", help="of what was built and nothing else")
    arguments = parser.parse_args()
    if arguments.self_check:
        self_check()
    stages = {
        "mutate": mutate, "build": build, "cover": cover,
        "kill": lambda: kill(arguments.seed, arguments.sample, arguments.retry),
        "report": lambda: report(arguments.seed, arguments.sample),
    }
    for stage in arguments.stage:
        if stage not in stages:
            sys.exit(f"no stage {stage}")
        stages[stage]()


if __name__ == "__main__":
    main()
