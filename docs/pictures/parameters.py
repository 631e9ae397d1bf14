#!/usr/bin/env python3
"""Draws docs/img/parameters.svg, the times of a parameter set, from a run of lumo-run.

    docs/pictures/parameters.py [--check] [LUMO-RUN]

Welds two seams, one with a continuous laser and one with pulses. The script fails if a time in the trace differs
from the field's. --check draws nothing and fails if the picture differs from that of the run."""

import json
import pathlib
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
ROOT = HERE.parent.parent
PICTURE = HERE.parent / "img" / "parameters.svg"

CONTINUOUS = {
    "name": "continuous", "power": 70, "frequency": 40, "ratio": 80, "increase_time": 300,
    "decrease_time": 400, "stay_time": 500, "close_delay": 300, "open_time": 200, "open_interval": 0,
    "delay_before_blow": 400, "delay_after_blow": 600, "speed": 35, "move_wire_time": 250,
    "stop_wire_time": 500, "give_wire_time": 800,
}
PULSED = dict(CONTINUOUS, name="pulsed", increase_time=350, stay_time=0, open_time=120, open_interval=80)

WELD_SPEED = 20  # mm/s
ROW, GAP, LEFT, WIDTH = 58, 16, 150, 1180


# --- The run ------------------------------------------------------------------------------------------


def move(x_mm, near):
    point = {"trans": [x_mm / 1000, 0, 0.1], "rot": [3.14159265359, 0, 0], "near": near}
    return {"type": "moveL", "execute": True, "note": "", "speed": 50, "zone": 2, "point": point}


def weld(index):
    return {"type": "open", "execute": True, "note": "", "index": index, "weldspeed": WELD_SPEED}


def run(runner):
    """The trace of the two seams, as a list of objects."""
    close = {"type": "close", "execute": True, "note": ""}
    near = [0, 0.4, 0.88, 0, 0.29, 0]
    rest = {"type": "delay", "execute": True, "note": "", "delaytime": 500}
    program = [move(500, near), rest, weld(0), move(525, near), close]
    program += [rest, weld(1), move(550, near), close]
    with tempfile.TemporaryDirectory() as folder:
        folder = pathlib.Path(folder)
        ports = (ROOT / "examples" / "flange" / "lumo_port.json").read_text()
        (folder / "lumo_port.json").write_text(ports)
        (folder / "lumo_param.json").write_text(json.dumps([CONTINUOUS, PULSED]))
        (folder / "seams.json").write_text(json.dumps(program))
        command = [runner, str(folder / "seams.json"), "--trace", "-", "--posture"]
        done = subprocess.run(command, capture_output=True, text=True, check=False)
    if done.returncode != 0:
        sys.exit(f"{runner}: {done.stderr}")
    return [json.loads(line) for line in done.stdout.splitlines()]


class Trace:
    """What the picture needs to know of a run; times in ms."""

    OUTPUTS = {
        "gas": "LUMO_DO.#0", "wire": "LUMO_DO.#2", "laser": "LUMO_DO.#3", "pullback": "LUMO_DO.#8",
        "wirespeed": "LUMO_AO_0", "power": "LUMO_AO_1", "frequency": "LUMO_AO_2", "duty": "LUMO_AO_3",
    }

    def __init__(self, lines):
        self.lines = [(x["t"], x["value"]) for x in lines if x.get("path") == "lumo.execute.line"]
        self.signals = {key: [(0, 0.0)] for key in self.OUTPUTS}
        names = {name: key for key, name in self.OUTPUTS.items()}
        for x in lines:
            if x["kind"] == "output" and x["name"] in names:
                value = x["value"]
                percent = 100.0 * value if isinstance(value, bool) else value / 327.67
                self.signals[names[x["name"]]].append((x["t"], percent))
        self.writes = [(x["t"], x["args"]) for x in lines if x.get("name") == "register.write"]
        places = [(x["t"], x["trans"]) for x in lines if x["kind"] == "posture"]
        self.signals["robot"] = [(0, 0.0)]
        for (t0, a), (t1, b) in zip(places, places[1:]):
            way = sum((p - q) ** 2 for p, q in zip(a, b)) ** 0.5 * 1000
            if t1 - t0 > 10:  # it stood, and is under way for 10 ms
                self.signals["robot"].append((t0, 0.0))
            if t1 > t0:
                self.signals["robot"].append((t1 - 10, way / 0.01 / WELD_SPEED * 100))

    def line(self, number):
        """When the run came to a line, counted from 0."""
        return next(t for t, value in self.lines if value == number)

    def edge(self, key, up, after):
        """When a signal rose from or fell to 0, at `after` or later."""
        before = 0.0
        for t, value in self.signals[key]:
            if t >= after and value != before and (value > 0 and before == 0 if up else value == 0):
                return t
            before = value
        raise SystemExit(f"{key} has no edge after {after} ms")

    def written(self, key, value, after):
        """When an output was switched, also where it was so before."""
        register, _, bit = self.OUTPUTS[key].partition(".#")
        wanted = {"name": register, "bias": int(bit), "value": value}
        return next(t for t, args in self.writes if t > after and wanted.items() <= args.items())

    def reached(self, key, percent, after):
        return next(t for t, value in self.signals[key] if t >= after and abs(value - percent) < 0.01)


# --- The picture --------------------------------------------------------------------------------------


class Panel:
    """Signals of one stretch of time, under each other, with the spans of fields in them."""

    def __init__(self, trace, title, begin, end, zero, top):
        self.trace, self.begin, self.end, self.zero, self.top = trace, begin, end, zero, top
        self.rows, self.parts = {}, [f'<text class="title" x="12" y="{top}">{title}</text>']

    def x(self, t):
        return round(LEFT + (t - self.begin) * (WIDTH - LEFT - 20) / (self.end - self.begin), 1)

    def y(self, key, percent):
        return round(self.rows[key] - percent * (ROW - 20) / 100, 1)

    def bottom(self):
        return self.top + 14 + len(self.rows) * (ROW + GAP)

    def row(self, key, label, unit=""):
        self.rows[key] = self.top + 14 + (len(self.rows) + 1) * (ROW + GAP) - GAP
        base, last, points = self.rows[key], 0.0, []
        for t, value in self.trace.signals[key]:
            if t <= self.begin:
                last = value
            elif t < self.end:
                points += [(self.x(t), self.y(key, last)), (self.x(t), self.y(key, value))]
                last = value
        first = next((v for t, v in reversed(self.trace.signals[key]) if t <= self.begin), 0.0)
        points = [(self.x(self.begin), self.y(key, first))] + points + [(self.x(self.end), self.y(key, last))]
        text = " ".join(f"{x},{y}" for x, y in points)
        self.parts += [
            f'<line class="base" x1="{LEFT}" y1="{base}" x2="{WIDTH - 20}" y2="{base}"/>',
            f'<polyline class="signal" points="{text}"/>',
            f'<text class="label" x="12" y="{base - 14}">{label}</text>',
            f'<text class="unit" x="12" y="{base}">{unit}</text>',
        ]

    def span(self, key, values, field, begin, end, lane=0, beside=False):
        """A field's time as an arrow over the signal; the trace must agree with the set."""
        if end - begin != values[field]:
            raise SystemExit(f"{field} is {values[field]} ms, and took {end - begin}")
        x0, x1, y = self.x(begin), self.x(end), self.rows[key] - ROW + 15 + lane * 15
        self.parts.append(f'<path class="span" d="M{x0} {y}H{x1}"/>')
        text, middle = f"{field} {values[field]}", round((x0 + x1) / 2, 1)
        place = (x1 + 6, y + 4, "start") if beside else (middle, y - 6, "middle")
        self.parts.append('<text class="field" x="%s" y="%s" text-anchor="%s">%s</text>' % (*place, text))

    def level(self, key, values, field, t):
        """A field's percentage, written on the signal's height."""
        x, y = self.x(t), self.y(key, values[field])
        self.parts.append(f'<text class="field" x="{x}" y="{y + 14}">{field} {values[field]} %</text>')

    def mark(self, t, text, anchor="start"):
        x, y0, y1 = self.x(t), self.top + 14, self.bottom() - GAP + 4
        shift = {"start": 3, "middle": 0, "end": -3}[anchor]
        self.parts += [
            f'<line class="mark" x1="{x}" y1="{y0}" x2="{x}" y2="{y1}"/>',
            f'<text class="moment" x="{x + shift}" y="{y1 + 12}" text-anchor="{anchor}">'
            f"{text}, {t - self.zero} ms</text>",
        ]


def continuous(trace):
    s = CONTINUOUS
    begin, closing = trace.line(2), trace.edge("pullback", True, 0)
    on, off = trace.edge("laser", True, begin), trace.edge("laser", False, closing)
    full, gas_off = trace.reached("power", s["power"], on), trace.edge("gas", False, off)
    leaves = trace.edge("robot", True, on)
    panel = Panel(trace, "A seam with a continuous laser", begin - 120, gas_off + 160, begin, 26)
    for row in (("gas", "Gas"), ("robot", "Tool speed", f"to {WELD_SPEED} mm/s"), ("power", "Laser power", "0 to 100 %"),
                ("laser", "Laser enable"), ("duty", "Duty cycle", "0 to 100 %"),
                ("frequency", "Frequency", "0 to 100 %"), ("wirespeed", "Wire speed", "0 to 100 %"),
                ("wire", "Wire enable"), ("pullback", "Wire pull-back")):
        panel.row(*row)
    for t, text, anchor in ((begin, "Start Welding", "start"), (on, "laser on", "start"),
                            (closing, "Stop Welding", "end"), (off, "laser off", "start"), (gas_off, "gas off", "end")):
        panel.mark(t, text, anchor)
    panel.span("gas", s, "delay_before_blow", begin, on)
    panel.span("gas", s, "delay_after_blow", off + s["close_delay"], gas_off)
    panel.span("robot", s, "stay_time", on, leaves)
    panel.span("power", s, "increase_time", on, full)
    panel.span("power", s, "decrease_time", closing, off)
    panel.level("power", s, "power", full + 250)
    panel.span("laser", s, "close_delay", off, trace.edge("gas", False, off) - s["delay_after_blow"])
    panel.level("duty", s, "ratio", full + 250)
    panel.level("frequency", s, "frequency", full + 250)
    panel.level("wirespeed", s, "speed", full + 250)
    refeed = trace.written("wire", 1, closing)  # it feeds still
    panel.span("wire", s, "stop_wire_time", closing, refeed, lane=0)
    panel.span("wire", s, "give_wire_time", closing, trace.edge("wire", False, refeed), lane=2, beside=True)
    panel.span("pullback", s, "move_wire_time", closing, trace.edge("pullback", False, closing), beside=True)
    return panel


def pulsed(trace, top):
    s = PULSED
    on = trace.edge("laser", True, trace.line(6))
    first_off = trace.edge("laser", False, on)
    panel = Panel(trace, "The beginning of a seam with pulses", on - 120, on + 1080, on, top)
    for row in (("laser", "Laser enable"), ("power", "Laser power", "0 to 100 %"), ("wire", "Wire enable")):
        panel.row(*row)
    panel.mark(on, "laser on")
    panel.span("laser", s, "open_time", on, first_off)
    panel.span("laser", s, "open_interval", first_off, trace.edge("laser", True, first_off), lane=2, beside=True)
    panel.span("power", s, "increase_time", on, trace.reached("power", s["power"], on))
    panel.level("power", s, "power", on + s["increase_time"] + 60)
    return panel


STYLE = """
text { font-family: "DejaVu Sans", sans-serif; font-size: 12px; fill: #1b2733; }
.title { font-size: 15px; font-weight: bold; }
.unit, .moment { font-size: 10.5px; fill: #5a6a78; }
.field { fill: #b3261e; font-weight: bold; paint-order: stroke; stroke: white; stroke-width: 3px; }
.base { stroke: #d5dce2; }
.mark { stroke: #8796a3; stroke-dasharray: 3 3; }
.signal { fill: none; stroke: #1565c0; stroke-width: 1.8; }
.span { stroke: #b3261e; stroke-width: 1.4; marker-start: url(#tip); marker-end: url(#tip); }
"""


def draw(trace):
    first = continuous(trace)
    second = pulsed(trace, first.bottom() + 48)
    height = second.bottom() + 24
    tip = ('<defs><marker id="tip" viewBox="0 0 8 8" refX="8" refY="4" markerWidth="7" markerHeight="7" '
           'orient="auto-start-reverse"><path d="M0 0L8 4L0 8z" fill="#b3261e"/></marker></defs>')
    head = f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{height}" viewBox="0 0 {WIDTH} {height}">'
    paper = f'<rect width="{WIDTH}" height="{height}" fill="white"/>'
    return "\n".join([head, f"<style>{STYLE}</style>", tip, paper, *first.parts, *second.parts, "</svg>", ""])


def main(arguments):
    check = "--check" in arguments
    runner = next((a for a in arguments if not a.startswith("--")), str(ROOT / "build" / "bin" / "lumo-run"))
    picture = draw(Trace(run(runner)))
    if not check:
        PICTURE.write_text(picture)
    elif picture != PICTURE.read_text():
        sys.exit(f"{PICTURE} is not what a run shows: make it anew with docs/pictures/parameters.py")


if __name__ == "__main__":
    main(sys.argv[1:])
