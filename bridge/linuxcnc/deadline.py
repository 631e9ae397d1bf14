#!/usr/bin/python3
# Copyright 2026 The lumo developers
# This program is free software; you can redistribute it and/or modify it under the terms of the GNU General Public
# License, version 2, as published by the Free Software Foundation. It comes without any warranty.
"""Measures how long the laser stays on when the panel is killed, hangs or is cut off: welds with lumo-run on LinuxCNC,
and watches the laser's output behind the heartbeat. As root, because packets are dropped and HAL belongs to another user:

    bridge/linuxcnc/start.py bridge/linuxcnc/deadline.py build/bin/lumo-run [TRIALS [EVENT…]]

The times are from just before the event until the HAL pin is seen off, which is looked at each 0.2 ms."""
import json
import os
import pathlib
import random
import signal
import subprocess
import sys
import tempfile
import time

import hal

EXAMPLE = pathlib.Path(__file__).resolve().parents[2] / "examples/lap_seam"
PORT = int(os.environ.get("LUMO_LINUXCNC_PORT", "5100"))
LOOK_S = 0.0002
LIGHT_LIMIT_S = 20
DARK_LIMIT_S = 1.0
LASER_BIT, POWER_WORD = 3, 1  # LUMO_DO.#3 and LUMO_AO_1 of the example
DROP = ["iptables", "-w", "OUTPUT", "-o", "lo", "-p", "tcp", "-m", "multiport", "--ports", f"{PORT},{PORT + 1},{PORT + 2}",
        "-j", "DROP"]


class Pins:
    def __init__(self):
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


def write_program(folder):
    """The example's seam alone, slowly."""
    for name in ("lumo_param.json", "lumo_port.json"):
        (folder / name).write_bytes((EXAMPLE / name).read_bytes())
    lines = json.loads((EXAMPLE / "lap_seam.json").read_text())
    start, seam, end = ({**line} for line in (lines[2], lines[4], lines[5]))
    start["speed"] = 200
    seam["speed"] = 10
    (folder / "seam.json").write_text(json.dumps([start, {**lines[3], "weldspeed": 10}, seam, end, *lines[8:]]))


def cut(on):
    subprocess.run([DROP[0], DROP[1], "-I" if on else "-D", *DROP[2:]], check=True)


def trial(event, pins, runner, folder):
    """Milliseconds from the event until the laser is dark, infinite when it stays lit; None when it never lights."""
    panel = subprocess.Popen([runner, "--controller", f"linuxcnc:{PORT}", "--quiet", str(folder / "seam.json")],
                             stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    try:
        if not pins.wait(True, LIGHT_LIMIT_S):
            return None
        time.sleep(0.1 + random.random() * 0.1)
        begun = time.monotonic()
        if event == "kill":
            panel.kill()
        elif event == "hang":
            os.kill(panel.pid, signal.SIGSTOP)
        else:
            cut(True)
        dark = pins.wait(False, DARK_LIMIT_S)
        return (dark - begun) * 1000 if dark else float("inf")
    finally:
        if event == "cut":
            cut(False)
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
    runner, trials = sys.argv[1], int(sys.argv[2]) if len(sys.argv) > 2 else 100
    pins = Pins()
    print("| event | trials | never lit | p50 ms | p90 | p99 | worst |\n|---|---|---|---|---|---|---|", flush=True)
    with tempfile.TemporaryDirectory() as name:
        folder = pathlib.Path(name)
        write_program(folder)
        for event in sys.argv[3:] or ["kill", "hang", "cut"]:
            print(row(event, *measure(event, trials, pins, runner, folder)), flush=True)


main()
