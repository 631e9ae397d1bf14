#!/usr/bin/python3
# Copyright 2026 The lumo developers
# This program is free software; you can redistribute it and/or modify it under the terms of the GNU General Public
# License, version 2, as published by the Free Software Foundation. It comes without any warranty.
"""Measures how long the laser stays on when the panel is killed, hangs or is cut off: welds with lumo-run on LinuxCNC,
and watches the laser's output behind the heartbeat. As root, because packets are dropped and HAL belongs to another user:

    bridge/linuxcnc/start.py bridge/linuxcnc/deadline.py build/bin/lumo-run [TRIALS [EVENT…]]

The times are from just before the event until the HAL pin is seen off, which is looked at each 0.2 ms.

With the outputs on a Modbus device, whose own watchdog switches them off, `--device` starts that of the tests and takes the
times at which it tells its outputs; what is cut is the link to it:

    … deadline.py --device build/tests/modbus_device tests/modbus/device_map.json build/bin/lumo-run [TRIALS [EVENT…]]"""
import contextlib
import json
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import threading
import time

EXAMPLE = pathlib.Path(__file__).resolve().parents[2] / "examples/lap_seam"
PORT = int(os.environ.get("LUMO_LINUXCNC_PORT", "5100"))
LOOK_S = 0.0002
LIGHT_LIMIT_S = 20
DARK_LIMIT_S = 1.0
BACK_LIMIT_S = 0.1  # for what was under way to come through again
LASER_BIT, POWER_WORD = 3, 1  # LUMO_DO.#3 and LUMO_AO_1 of the example


class Pins:
    """The outputs at LinuxCNC's HAL."""
    options, ports = [], [PORT, PORT + 1, PORT + 2]

    def __init__(self):
        import hal  # pylint: disable=import-outside-toplevel
        self.component = hal.component("deadline")
        self.component.newpin("laser", hal.HAL_BIT, hal.HAL_IN)
        self.component.newpin("power", hal.HAL_FLOAT, hal.HAL_IN)
        self.component.ready()
        for signal_name, pin in ((f"out-{LASER_BIT:02d}", "laser"), (f"aout-{POWER_WORD}", "power")):
            subprocess.run(["halcmd", "net", signal_name, f"deadline.{pin}"], check=True, stdout=subprocess.DEVNULL)

    def is_lit(self):
        return self.component["laser"] and self.component["power"] > 0

    def wait(self, lit, limit_s):
        """The time at which the laser is (not) lit; None when it never is. Dark: both outputs are off."""
        end = time.monotonic() + limit_s
        while time.monotonic() < end:
            if self.is_lit() if lit else not self.component["laser"] and self.component["power"] == 0:
                return time.monotonic()
            time.sleep(LOOK_S)
        return None

    def end(self):
        self.component.exit()


class Device:
    """The outputs of a Modbus device that tells each write and what its watchdog does, a line each."""

    def __init__(self, program, map_file):
        lies = json.loads(pathlib.Path(map_file).read_text())
        registers = lies["registers"]
        self.laser, self.power = registers["LUMO_DO"]["address"] + LASER_BIT, registers["LUMO_AO_1"]["address"]
        self.options, self.ports = ["--io", f"modbus:{map_file}"], [lies["port"]]
        self.outputs = {"coil": {}, "register": {}}
        self.changed = threading.Condition()
        self.dark_since = time.monotonic()
        self.process = subprocess.Popen([program, str(lies["port"]), str(lies["heartbeat"]["watchdog_ms"])],
                                        stdout=subprocess.PIPE, text=True)
        threading.Thread(target=self.follow, daemon=True).start()

    def follow(self):
        for line in self.process.stdout:
            told = time.monotonic()
            kind, *numbers = line.split()
            first, *values = map(int, numbers)
            with self.changed:
                if kind == "watchdog":
                    self.outputs = {"coil": {}, "register": {}}
                else:
                    self.outputs[kind].update(enumerate(values, first))
                off = not self.outputs["coil"].get(self.laser) and not self.outputs["register"].get(self.power)
                self.dark_since = (self.dark_since or told) if off else None
                self.changed.notify()

    def is_lit(self):
        return self.outputs["coil"].get(self.laser) and self.outputs["register"].get(self.power)

    def wait(self, lit, limit_s):
        with self.changed:
            if self.changed.wait_for(lambda: self.is_lit() if lit else self.dark_since, limit_s):
                return time.monotonic() if lit else self.dark_since
        return None

    def end(self):
        self.process.kill()
        self.process.wait()


def write_program(folder):
    """The example's seam alone, slowly."""
    for name in ("lumo_param.json", "lumo_port.json"):
        (folder / name).write_bytes((EXAMPLE / name).read_bytes())
    lines = json.loads((EXAMPLE / "lap_seam.json").read_text())
    start, seam, end = ({**line} for line in (lines[2], lines[4], lines[5]))
    start["speed"] = 200
    seam["speed"] = 10
    (folder / "seam.json").write_text(json.dumps([start, {**lines[3], "weldspeed": 10}, seam, end, *lines[8:]]))


@contextlib.contextmanager
def cut(ports):
    """Drops what goes to these ports and comes from them."""
    def change(how):
        subprocess.run(["iptables", "-w", how, "OUTPUT", "-o", "lo", "-p", "tcp", "-m", "multiport", "--ports",
                        ",".join(map(str, ports)), "-j", "DROP"], check=True)
    change("-I")
    try:
        yield
    finally:
        change("-D")


def strike(event, panel, outputs):
    """Lets the event happen; the time at which the laser is dark, None when it stays lit."""
    if event == "cut":
        with cut(outputs.ports):
            return outputs.wait(False, DARK_LIMIT_S)
    if event == "kill":
        panel.kill()
    else:
        os.kill(panel.pid, signal.SIGSTOP)
    return outputs.wait(False, DARK_LIMIT_S)


def trial(event, outputs, runner, folder):
    """Milliseconds from the event until the laser is dark, infinite when it stays lit or comes back; None when it never
    lights."""
    panel = subprocess.Popen([runner, "--controller", f"linuxcnc:{PORT}", *outputs.options, "--quiet",
                              str(folder / "seam.json")], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        if not outputs.wait(True, LIGHT_LIMIT_S):
            return None
        time.sleep(0.1 + random.random() * 0.1)
        begun = time.monotonic()
        dark = strike(event, panel, outputs)
        time.sleep(BACK_LIMIT_S)
        return (dark - begun) * 1000 if dark and not outputs.is_lit() else float("inf")
    finally:
        panel.kill()
        panel.wait()
        time.sleep(0.2)  # until the programs beside LinuxCNC take the next client


def measure(event, trials, *parts):
    """The times of that many trials. One whose laser never lit is made again, at most as often as there are trials."""
    times, dark = [], 0
    while len(times) < trials and dark < trials:
        time_ms = trial(event, *parts)
        if time_ms is None:
            dark += 1
        else:
            times.append(time_ms)
    return sorted(times), dark


def row(event, times, dark):
    share = [times[min(int(len(times) * part), len(times) - 1)] for part in (0.5, 0.9, 0.99)] if times else []
    figures = " | ".join(f"{value:.1f}" for value in [*share, *times[-1:]])
    return f"| {event} | {len(times)} | {dark} | {figures} |"


def main():
    arguments = sys.argv[1:]
    outputs = Device(*arguments[1:3]) if arguments[0] == "--device" else Pins()
    runner, *rest = arguments[3 if arguments[0] == "--device" else 0:]
    trials, events = int(rest[0]) if rest else 100, rest[1:] or ["kill", "hang", "cut"]
    print("| event | trials | never lit | p50 ms | p90 | p99 | worst |\n|---|---|---|---|---|---|---|", flush=True)
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        write_program(folder)
        for event in events:
            print(row(event, *measure(event, trials, outputs, runner, folder)), flush=True)
    outputs.end()


main()
