#!/usr/bin/python3
# Copyright 2026 The lumo developers
# This program is free software; you can redistribute it and/or modify it under the terms of the GNU General Public
# License, version 2, as published by the Free Software Foundation. It comes without any warranty.
"""Motion for a program that is not linked to LinuxCNC: LinuxCNC's foreground program ([DISPLAY]DISPLAY).

Two processes, because each command of the module `linuxcnc` takes 10 ms or more, which would hold up the state.

Port 5100, commands, carried out one after the other, each answered by
{"ack":ID,"op":OP,"ok":BOOL,"t":CLOCK}:
  {"op":"power","on":BOOL,"id":ID}    also homes, the first time; true when the drives are as asked
  {"op":"batch","b":N,"lines":[…]}    appends G-code lines; N from 1 to 30000, another one than that of the batch before
  {"op":"stop"}                       brakes and forgets all batches; answered at standstill
  {"op":"quit"}                       ends LinuxCNC
A client that goes away stops the arm.

Port 5102, state, at once on a change and at least each 4 ms:
  {"t":CLOCK,"j":[joints, deg],"p":[X,Y,Z,A,B,C as LinuxCNC counts on],"b":N,"l":LINE,"e":M,"idle":BOOL,"on":BOOL,
   "homed":BOOL,"jointMode":BOOL,"err":[TEXT,…]}
Line LINE of batch N is under way, from 1; 0: none. All of batch M is done. CLOCK: monotonic clock, s."""
import json
import os
import signal
import subprocess
import sys
import time

import hal
import linuxcnc

import wire

AXES = 6
STATE_PERIOD_S = 0.003
POLL_S = 0.001
HOMING_LIMIT_S = 30
STOP_LIMIT_S = 2
LINES_BEFORE = 2  # of a batch's file, before its first line
# Analogue outputs that tell where a batch stands, and the one that switches between poses and joints.
BEGUN, DONE, JOINT_MODE = 0, 1, 3


def errors(channel):
    texts = []
    while True:
        message = channel.poll()
        if not message:
            return texts
        kind, text = message
        if kind in (linuxcnc.NML_ERROR, linuxcnc.OPERATOR_ERROR):
            texts.append(text.strip())


def is_idle(stat):
    return (stat.interp_state == linuxcnc.INTERP_IDLE and stat.queue == 0 and stat.inpos
            and stat.exec_state == linuxcnc.EXEC_DONE)


class Joints:
    """Where the joints are, degrees, from HAL: LinuxCNC's status is 2 ms older, and a busy machine holds it up."""

    def __init__(self):
        self.pins = hal.component("lumo-joints")
        self.names = [f"joint-{joint}" for joint in range(AXES)]
        for name in self.names:
            self.pins.newpin(name, hal.HAL_FLOAT, hal.HAL_IN)
        self.pins.ready()
        for joint, name in enumerate(self.names):
            subprocess.run(["halcmd", "net", f"place-{joint}", f"joint.{joint}.pos-fb", f"lumo-joints.{name}"], check=True,
                           stdout=subprocess.DEVNULL)

    def read(self):
        return [round(self.pins[name], 7) for name in self.names]


def tell(client, stat, channel, joints):
    last, due = None, 0
    while True:
        stat.poll()
        now = time.monotonic()
        texts = errors(channel)
        key = (stat.aout[BEGUN], stat.aout[DONE], stat.motion_id, is_idle(stat), stat.task_state, stat.homed)
        if key != last or texts or now >= due:
            wire.send(client, {
                "t": round(now, 4), "j": joints.read(),
                "p": [round(x, 7) for x in stat.position[:AXES]], "b": int(stat.aout[BEGUN]),
                "l": max(0, stat.motion_id - LINES_BEFORE), "e": int(stat.aout[DONE]), "idle": bool(is_idle(stat)),
                "on": stat.task_state == linuxcnc.STATE_ON, "homed": all(stat.homed[:AXES]),
                "jointMode": bool(stat.aout[JOINT_MODE]), "err": texts})
            last, due = key, now + STATE_PERIOD_S
        time.sleep(POLL_S)


def serve_state():
    stat, channel, joints, server = linuxcnc.stat(), linuxcnc.error_channel(), Joints(), wire.listen(wire.STATE)
    while True:
        client = wire.accept(server)
        try:
            tell(client, stat, channel, joints)
        except OSError:
            client.close()


class Motion:
    def __init__(self):
        self.stat, self.command = linuxcnc.stat(), linuxcnc.command()
        self.files = 0
        self.pins = hal.component("lumo-motion")
        self.pins.newpin("hold", hal.HAL_BIT, hal.HAL_OUT)
        self.pins.ready()
        subprocess.run(["halcmd", "net", "stopping", "lumo-motion.hold"], check=True, stdout=subprocess.DEVNULL)
        os.makedirs("subs", exist_ok=True)
        for name in os.listdir("subs"):  # never while LinuxCNC works on them
            os.unlink("subs/" + name)

    def done(self):
        return self.command.wait_complete(5) == linuxcnc.RCS_DONE

    def wait(self, condition, limit_s):
        end = time.monotonic() + limit_s
        self.stat.poll()
        while not condition() and time.monotonic() < end:
            time.sleep(POLL_S)
            self.stat.poll()
        return condition()

    def take_lines(self):
        """LinuxCNC's MDI mode, which takes batches."""
        self.stat.poll()
        if self.stat.task_mode != linuxcnc.MODE_MDI:
            self.command.mode(linuxcnc.MODE_MDI)
            self.done()

    def power(self, message):
        if not message["on"]:
            self.command.state(linuxcnc.STATE_OFF)
            return self.done()
        for state in (linuxcnc.STATE_ESTOP_RESET, linuxcnc.STATE_ON):
            self.command.state(state)
            self.done()
        self.stat.poll()
        return self.stat.task_state == linuxcnc.STATE_ON and self.home()

    def home(self):
        def homed():
            return all(self.stat.homed[:AXES])
        self.stat.poll()
        if not homed():
            self.command.mode(linuxcnc.MODE_MANUAL)
            self.done()
            self.command.home(-1)
            self.done()
            if not self.wait(homed, HOMING_LIMIT_S):
                return False
        self.take_lines()
        return True

    def batch(self, message):
        self.stat.poll()
        if self.stat.task_state != linuxcnc.STATE_ON:
            return False
        self.take_lines()
        # LinuxCNC keeps subroutines that it has read by their names: each batch has a new one.
        self.files += 1
        name = f"b{self.files}"
        lines = [f"o<{name}> sub", f"M68 E{BEGUN} Q{message['b']}", *message["lines"], f"M68 E{DONE} Q{message['b']}",
                 f"o<{name}> endsub", "M2", ""]
        with open(f"subs/{name}.ngc", "w", encoding="ascii") as file:
            file.write("\n".join(lines))
        self.command.mdi(f"o<{name}> call")
        return True

    def stop(self, _message=None):
        # The hold pin brakes within a servo cycle; the abort alone takes 20 ms to arrive.
        self.pins["hold"] = True
        self.command.abort()
        self.done()
        stands = self.wait(lambda: self.stat.inpos and self.stat.queue == 0, STOP_LIMIT_S)
        self.pins["hold"] = False
        if self.stat.aout[JOINT_MODE]:
            self.take_lines()
            for line in (f"M68 E{JOINT_MODE} Q0", "M66 E0 L0"):
                self.command.mdi(line)
                self.done()
        return stands


def serve_commands(end):
    motion, server = Motion(), wire.listen(wire.COMMANDS)
    operations = {"power": motion.power, "batch": motion.batch, "stop": motion.stop}
    while True:
        client = wire.accept(server)
        try:
            for line in client.makefile():
                message = json.loads(line)
                if message["op"] == "quit":
                    end()
                ok = operations[message["op"]](message)
                wire.send(client, {"ack": message.get("id"), "op": message["op"], "ok": bool(ok),
                                   "t": round(time.monotonic(), 4)})
        except (OSError, ValueError, KeyError, TypeError, linuxcnc.error) as problem:
            print("motion:", repr(problem), file=sys.stderr)
        client.close()
        motion.stop()


def main():
    child = os.fork()
    if child == 0:
        signal.signal(signal.SIGINT, signal.SIG_IGN)
        try:
            serve_state()
        finally:
            os._exit(1)

    def end(*_):
        os.kill(child, signal.SIGKILL)
        os._exit(0)
    signal.signal(signal.SIGTERM, end)
    signal.signal(signal.SIGINT, end)
    with open("motion.pid", "w", encoding="ascii") as file:
        file.write(str(os.getpid()))
    serve_commands(end)


main()
