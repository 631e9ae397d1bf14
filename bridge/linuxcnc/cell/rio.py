#!/usr/bin/python3
# Copyright 2026 The lumo developers
# This program is free software; you can redistribute it and/or modify it under the terms of the GNU General Public
# License, version 2, as published by the Free Software Foundation. It comes without any warranty.
"""Inputs, outputs and heartbeat: a HAL component, for one client at a time on port 5101. Commands are carried out in
their order:
  {"op":"beat"}                                    the heartbeat, each 10 ms; answered {"ev":"beat"} while LinuxCNC's
                                                   servo thread sees it
  {"op":"arm","on":BOOL}                           true: outputs follow the orders, until a beat is missed
  {"op":"set","w":[["do",3,1],["ao",0,1638]],"id":7}   outputs, from left to right; answered {"ack":7}
  {"op":"sim","w":[["di",3,1]]}                    inputs of a simulated cell, where nothing else is wired to them
Unasked: {"ev":"di","pin":N,"value":0|1} and {"ev":"ai",…}, at first for every input; {"ev":"ok","value":0|1}: whether outputs follow.
A missed beat, and a client that goes away, switch every output off and disarm."""
import json
import select
import sys

import hal

import wire

BITS, WORDS, WORDS_IN = 45, 10, 1  # as in signals.tcl
POLL_S = 0.002
OUTPUTS = {"do": [f"do-{bit:02d}" for bit in range(BITS)], "ao": [f"ao-{word}" for word in range(WORDS)]}
INPUTS = ([("di", bit, f"di-{bit:02d}") for bit in range(BITS)] +
          [("ai", word, f"ai-{word}") for word in range(WORDS_IN)])
SIMULATED = [f"sim-{bit:02d}" for bit in range(BITS)]


def make_pins():
    pins = hal.component("rio")
    for name in [*OUTPUTS["do"], *SIMULATED, "beat", "arm"]:
        pins.newpin(name, hal.HAL_BIT, hal.HAL_OUT)
    for name in OUTPUTS["ao"]:
        pins.newpin(name, hal.HAL_S32, hal.HAL_OUT)
    for kind, _, name in INPUTS:
        pins.newpin(name, hal.HAL_BIT if kind == "di" else hal.HAL_S32, hal.HAL_IN)
    for name in ("ok", "echo"):
        pins.newpin(name, hal.HAL_BIT, hal.HAL_IN)
    return pins


class Client:
    """One connection, until it ends or breaks the rules."""

    def __init__(self, connection, pins):
        self.connection, self.pins = connection, pins
        self.rest = b""
        self.inputs, self.ok = [None] * len(INPUTS), None

    def serve(self):
        while True:
            if select.select([self.connection], [], [], POLL_S)[0]:
                data = self.connection.recv(65536)
                if not data:
                    return
                *lines, self.rest = (self.rest + data).split(b"\n")
                for line in lines:
                    self.obey(json.loads(line))
            self.tell()

    def obey(self, message):
        operation = message["op"]
        if operation == "beat":
            if self.pins["echo"] == self.pins["beat"]:
                self.pins["beat"] = not self.pins["beat"]
                wire.send(self.connection, {"ev": "beat"})
        elif operation == "arm":
            self.pins["arm"] = message["on"]
        elif operation == "set":
            for kind, number, value in message["w"]:
                self.pins[OUTPUTS[kind][number]] = value
            wire.send(self.connection, {"ack": message["id"]})
        elif operation == "sim":
            for _, number, value in message["w"]:
                self.pins[SIMULATED[number]] = value

    def tell(self):
        for index, (kind, number, name) in enumerate(INPUTS):
            value = int(self.pins[name])
            if value != self.inputs[index]:
                self.inputs[index] = value
                wire.send(self.connection, {"ev": kind, "pin": number, "value": value})
        ok = int(self.pins["ok"])
        if ok != self.ok:
            if self.ok:
                off(self.pins)  # nothing comes back by itself when the beats do
            self.ok = ok
            wire.send(self.connection, {"ev": "ok", "value": ok})


def off(pins):
    for name in [*OUTPUTS["do"], *OUTPUTS["ao"], "arm"]:
        pins[name] = 0


def main():
    pins, server = make_pins(), wire.listen(wire.SIGNALS)
    pins.ready()
    while True:
        connection = wire.accept(server)
        try:
            Client(connection, pins).serve()
        except (OSError, ValueError, KeyError, IndexError, TypeError, OverflowError) as problem:
            print("rio:", repr(problem), file=sys.stderr)
        off(pins)
        connection.close()


try:
    main()
except KeyboardInterrupt:
    pass
