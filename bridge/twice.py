#!/usr/bin/python3
"""Runs projects on the simulator and several times on a real controller, and compares what was decided and welded:

    bridge/twice.py --controller linuxcnc --start bridge/linuxcnc/start.py \\
        --io modbus:tests/modbus/device_map.json --beside "chrt -r 1 build/release/tests/modbus_device 15502 250" \\
        --latency start=7,result=2,posture=1,period=4,corner=1732 examples/lap_seam/lap_seam.json …

A project's scenario is the scenario.json beside it, without pauses, which at a given second meet another place. With
--part S a folder of stations runs for S seconds. A controller's times vary: with several --latency each run is compared with
the simulation that decides as it did. Prints, for each project, how many runs were equal to one but for the times
(lumo-run --diff) and, for each seam, the largest difference from its record. Exit status: 0 all equal and within the
tolerance, 1 not."""
import argparse
import json
import math
import pathlib
import shlex
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[1]
INTERRUPTIONS = {"pause", "resume", "power", "quit"}
MOST_MM = 0.5
# What a seam's record says, by how many percent it may differ, and whether it is a length, for which MOST_MM counts, too.
# The mean speed leaves out the time in which the tool stands: 10 ms of it are 1 % of a tack.
QUANTITIES = {"programmed_mm": (1.0, True), "welded_mm": (1.0, True), "full_power_mm": (1.0, True),
              "laser_on_s": (1.0, False), "energy_pct_s": (1.0, False), "mean_speed_mm_s": (2.0, False)}
HEADINGS = ["path mm", "welded mm", "at full power mm", "laser on s", "energy %s", "speed mm/s"]


def arguments():
    parser = argparse.ArgumentParser(description=__doc__.split("\n", maxsplit=1)[0])
    parser.add_argument("--run", default=str(ROOT / "build/bin/lumo-run"), help="the runner")
    parser.add_argument("--controller", help="as lumo-run takes it")
    parser.add_argument("--io", help="as lumo-run takes it")
    parser.add_argument("--latency", action="append", help="of the simulator, as lumo-run takes it; several times")
    parser.add_argument("--repeat", type=int, default=5, help="runs on the controller (5)")
    parser.add_argument("--start", default="", help="command before each run on the controller")
    parser.add_argument("--beside", default="", help="command that runs meanwhile, such as the device of --io")
    parser.add_argument("--part", type=int, help="the projects are folders of stations: seconds of their scenario")
    parser.add_argument("--out", help="keep traces and summaries in this folder")
    parser.add_argument("projects", nargs="+", metavar="PROJECT")
    return parser.parse_args()


class Project:
    def __init__(self, path, options, folder):
        self.path, self.options = pathlib.Path(path), options
        self.name = self.path.stem
        self.base = folder / self.name
        self.scenario = self.write_scenario()

    def write_scenario(self):
        file = (self.path if self.options.part else self.path.parent) / "scenario.json"
        entries = json.loads(file.read_text()) if file.exists() else []
        if self.options.part:
            end = self.options.part * 1000
            entries = [entry for entry in entries if entry["at"] < end] + [{"at": end, "do": "monitor", "value": False}]
        entries = [entry for entry in entries if entry["do"] not in INTERRUPTIONS]
        scenario = self.base.with_suffix(".scenario.json")
        scenario.write_text(json.dumps(entries))
        return scenario

    def carry_out(self, name, before, *more):
        """The summary of one run, whose trace lies beside it."""
        base = f"{self.base}.{name}"
        what = ["--stations", self.path] if self.options.part else [self.path]
        command = [*before, self.options.run, *more, "--quiet", "--scenario", self.scenario, "--trace", base + ".jsonl",
                   "--summary", base + ".json", *what]
        done = subprocess.run([str(part) for part in command], capture_output=True, text=True, check=False)
        pathlib.Path(base + ".out").write_text(done.stdout + done.stderr)
        try:
            return json.loads(pathlib.Path(base + ".json").read_text())
        except (OSError, ValueError):
            sys.exit(f"{self.name} {name}: no summary, exit status {done.returncode}\n{done.stdout}{done.stderr}")

    def simulate(self):
        """The summaries, one for each latency."""
        latencies = [["--latency", latency] for latency in self.options.latency or []] or [[]]
        return [self.carry_out(f"simulator{index}", [], *latency) for index, latency in enumerate(latencies)]

    def weld(self, number):
        more = []
        for key, value in (("--controller", self.options.controller), ("--io", self.options.io)):
            more += [key, value] if value else []
        return self.carry_out(f"controller{number}", shlex.split(self.options.start), *more)

    def differences(self, index, number):
        """What the traces of a simulation and of a run say differently, without the times."""
        done = subprocess.run([self.options.run, "--diff", f"{self.base}.simulator{index}.jsonl",
                               f"{self.base}.controller{number}.jsonl"], capture_output=True, text=True, check=False)
        pathlib.Path(f"{self.base}.controller{number}.diff{index}").write_text(done.stdout + done.stderr)
        found = done.stdout.splitlines() if done.returncode else []
        return real_differences(found) if self.options.part else [line for line in found if not is_time(line)]


def is_time(line):
    return line.endswith((" ms later", " ms earlier", ": at the same time again"))


def real_differences(lines):
    """Of stations, whose inputs come at a given second: what only one of the two did. What both did, at another statement,
    is none."""
    texts = {side: [line.split(f"only in {side}: ", 1)[1] for line in lines if f"only in {side}: " in line] for side in "AB"}
    alone = [line for line in lines if " -> " in line]
    for side, other in ("AB", "BA"):
        others = list(texts[other])
        for text in texts[side]:
            if text in others:
                others.remove(text)
            else:
                alone.append(f"only in {side}: {text}")
    return alone


def percent(value, other):
    return 100 * abs(value - other) / abs(other) if other else 0.0 if value == other else math.inf


class Seam:
    """The largest differences of one seam over all runs."""

    def __init__(self, name):
        self.name = name
        self.worst = dict.fromkeys(QUANTITIES, (0.0, 0.0))
        self.place = 0.0

    def compare(self, simulated, record):
        for key, (amount, share) in self.worst.items():
            value, other = record[key] or 0.0, simulated[key] or 0.0
            self.worst[key] = (max(amount, abs(value - other)), max(share, percent(value, other)))
        for point in ("start", "end"):
            if record[point] and simulated[point]:
                self.place = max(self.place, math.dist(record[point]["trans_mm"], simulated[point]["trans_mm"]))

    def is_within(self):
        return self.place <= MOST_MM and all(
            share <= QUANTITIES[key][0] and (amount <= MOST_MM or not QUANTITIES[key][1])
            for key, (amount, share) in self.worst.items())

    def row(self):
        cells = [f"{amount:.3f}, {share:.2f} %" for amount, share in self.worst.values()]
        return " | ".join([self.name, *cells, f"{self.place:.3f}", "yes" if self.is_within() else "NO"])


def count_differences(simulated, record):
    """Where the runs and seams are not as many."""
    found = []
    if len(record["seams"]) != len(simulated["seams"]):
        found.append(f"{len(record['seams'])} seams, not {len(simulated['seams'])}")
    if record.get("stations") != simulated.get("stations"):
        found.append(f"stations {record.get('stations')}, not {simulated.get('stations')}")
    return found


def compare(project):
    simulations = project.simulate()
    seams = [Seam(f"{index} {seam['set']}") for index, seam in enumerate(simulations[0]["seams"], 1)]
    equal, complaints, seconds = [0] * len(simulations), [], []
    for number in range(1, project.options.repeat + 1):
        record = project.weld(number)
        seconds.append(record["seconds"])
        found = [project.differences(index, number) + count_differences(simulation, record)
                 for index, simulation in enumerate(simulations)]
        like = min(range(len(found)), key=lambda index: len(found[index]))  # pylint: disable=cell-var-from-loop
        equal[like] += not found[like]
        complaints += [f"run {number}: {line}" for line in found[like]]
        for seam, simulated, welded in zip(seams, simulations[like]["seams"], record["seams"]):
            seam.compare(simulated, welded)
    report(project, equal, simulations, seconds, seams)
    print("\n".join(complaints))
    return not complaints and all(seam.is_within() for seam in seams)


def report(project, equal, simulations, seconds, seams):
    took = " or ".join(f"{simulation['seconds']:.2f}" for simulation in simulations)
    print(f"\n{project.name}: {' + '.join(map(str, equal))} of {project.options.repeat} equal but for the times; {took} s, on "
          f"the controller {min(seconds):.2f} to {max(seconds):.2f} s; largest differences:\n")
    print("| seam | " + " | ".join(HEADINGS) + " | place mm | within |\n|" + "---|" * (len(HEADINGS) + 3))
    for seam in seams:
        print(f"| {seam.row()} |", flush=True)
    for station in simulations[0].get("stations") or []:
        print(f"station {station['row'] + 1} {station['name']}: {station['runs']} runs, {station['finished']} finished")


def main():
    options = arguments()
    with tempfile.TemporaryDirectory() as temporary:
        folder = pathlib.Path(options.out or temporary)
        folder.mkdir(parents=True, exist_ok=True)
        beside = subprocess.Popen(shlex.split(options.beside), stdout=subprocess.DEVNULL) if options.beside else None
        try:
            time.sleep(0.5 if beside else 0)
            return 0 if all([compare(Project(path, options, folder)) for path in options.projects]) else 1
        finally:
            if beside:
                beside.kill()
                beside.wait()


if __name__ == "__main__":
    sys.exit(main())
