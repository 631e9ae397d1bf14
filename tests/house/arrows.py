#!/usr/bin/python3
"""arrows.py ROOT: names every #include that points up the house, and every circle between rooms of the package.
A floor includes itself and the floors listed for it; a room of the package rooms of its own level and below."""
import pathlib
import re
import sys

CONTROLLERS = ["simulator", "kinematics", "bridge"]
PROGRAMS = ["workcell", "telemetry", "flight", *CONTROLLERS, "program", "host"]
FLOORS = {
    "host": [],
    "look": [],
    "program": ["host"],
    "lumo": ["program", "look", "host"],
    "bridge": ["host"],
    "kinematics": ["bridge"],
    "bridge/linuxcnc": ["bridge", "kinematics", "host"],
    "simulator": ["kinematics", "bridge", "host"],
    "workcell": [*CONTROLLERS, "program", "host"],
    "telemetry": ["workcell", "program", "host"],
    "flight": ["program", "host"],
    "conform": ["workcell", "simulator", "bridge", "program", "host"],
    "runner": PROGRAMS,
    "app": [*PROGRAMS, "look"],
    "tools": ["app", *PROGRAMS, "look"],
}
LEVELS = [["module"], ["widgets", "files", "equipment"], ["undo"],
          ["executor", "editor", "params", "devices", "stations"], ["panel"]]
LEVEL = {room: level for level, rooms in enumerate(LEVELS) for room in rooms}

root = pathlib.Path(sys.argv[1])
wrong, seen, count = [], {room: {} for room in LEVEL}, 0


def floor_of(path):
    """The floor of a file, and the rooms in it that lead there."""
    parts = path.relative_to(root).parts[:-1]
    length = 2 if "/".join(parts[:2]) in FLOORS else 1
    return "/".join(parts[:length]), list(parts[length:])


for path in sorted({p for floor in FLOORS for p in (root / floor).rglob("*") if p.suffix in (".h", ".cpp")}):
    floor, rooms = floor_of(path)
    for name in re.findall(r'^#include "([^"]+)"', path.read_text(), re.M):
        places = [base / name for base in (path.parent, root, root / "lumo", root / "host") if (base / name).exists()]
        if not places:
            continue  # generated from a form
        count += 1
        to, inside = floor_of(places[0])
        if to not in [floor, *FLOORS[floor]]:
            wrong.append(f"{path.relative_to(root)} includes {name}: {floor} may not see {to}")
        elif to == floor == "lumo" and inside != rooms:
            seen[rooms[0]][inside[0]] = f"{path.relative_to(root)} includes {name}"


def reaches(room, goal, been):
    been.add(room)
    return any(other == goal or other not in been and reaches(other, goal, been) for other in seen[room])


wrong += [f"{include}: {other} stands above {room}, or a circle leads back" for room, others in seen.items()
          for other, include in others.items() if LEVEL[room] < LEVEL[other] or reaches(other, room, set())]
sys.exit("\n".join(wrong) or (None if count > 100 else "there are no includes"))
