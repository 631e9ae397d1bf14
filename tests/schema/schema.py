"""schema.py ROOT SCHEMAS LUMO-RUN: the schemas against every example, against what must not pass, and against the check,
which finds what they refuse."""
import json
import pathlib
import re
import subprocess
import sys
import tempfile

import jsonschema

root, folder = map(pathlib.Path, sys.argv[1:3])
check = {}
for file in folder.glob("*.json"):
    check[file.name.split(".")[0]] = validator = jsonschema.Draft202012Validator(json.loads(file.read_text()))
    validator.check_schema(validator.schema)

# rework.json is damaged on purpose.
examples = [f for f in [*root.glob("examples/*/*.json"), *root.glob("bridge/*/*_map.json")] if f.name not in {"scenario.json", "rework.json"}
            and len(f.suffixes) == 1]  # not NAME.limits.json, NAME.scenario.json
documents = [(f.stem if f.stem in check else "project", f.name, json.loads(f.read_text())) for f in examples]
kinds = {kind for kind, _, _ in documents}
failed = [] if kinds == set(check) else [f"the examples are only of {sorted(kinds)}"]

# What the package itself makes new statements, ports and tool sets from.
defaults = json.loads((root / "lumo/resources/lumo_en.json").read_text("utf-8-sig"))
templates = [{"type": name, **fields} for name, fields in defaults["default"]["program"].items()]
for kind, accepted in {
    "project": [[*templates, defaults["toolset"]], []],
    "lumo_port": [defaults["port"], {}],
    "lumo_signalsConfig": [[{**defaults["default"]["signalsConfig"], "time": 100}, {"time": "100"}], {}],
    "lumo_param": [{}],
}.items():
    documents += [(kind, "as made", document) for document in accepted]
for kind, name, document in documents:
    for error in check[kind].iter_errors(document):
        failed.append(f"{kind}, {name}: {error.message} at {error.json_path}")

refused = {
    "project": [{}, [1], [{"type": "moveX"}], [{"type": "moveL"}], [{"type": "moveC", "point": {}}],
                [{"type": "setDO", "value": True}], [{"type": "moveJ", "point": {"near": [0, 0]}}],
                [{"type": "open", "weldspeed": "fast"}], [{"type": "waitDI", "DI_reg": {"name": "A"}}],
                [{"end": {"name": "tool0"}}]],
    "lumo_port": [{"a": 1}, defaults["port"][1:], [*defaults["port"], {"type": "AO"}], [{}] * 19,
                  [{"type": "DI"}] * 19, [{**row, "enable": "yes"} for row in defaults["port"]]],
    "lumo_param": [[{"power": 50}], [{"name": "A", "power": None}]],
    "lumo_signalsConfig": [[{"time": "soon"}], [{"time": -1}], [3]],
    "modbus_map": [{}, {"host": "h", "prot": 1}, {"host": "h", "registers": {"A": {"table": "coils", "address": 1}}},
                   {"host": "h", "signals": {"DI1": {"table": "coil"}}}, {"host": "h", "heartbeat": {"address": 1}},
                   {"host": "h", "registers": {"A": {"table": "coil", "address": 65536}}}],
}
for kind, bad in refused.items():
    failed += [f"{kind} accepts {document}" for document in bad if check[kind].is_valid(document)]


def spoilt(value):
    """The value with every part of it missing or of another kind."""
    yield from [None, True, -1, 1.5, "x", {}, [], [1, 2, 3, 4, 5, 6, 7, 8]]
    if isinstance(value, dict):
        for key in value:
            yield {other: value[other] for other in value if other != key}
            yield from ({**value, key: part} for part in spoilt(value[key]))
    elif isinstance(value, list):
        for i in range(len(value)):
            yield from (value[:i] + [part] + value[i + 1:] for part in spoilt(value[i]))


def unnoticed(kind, rows, alone):
    """What the check says nothing of, though the schema refuses `alone` of a row."""
    file = "p.json" if kind == "project" else kind + ".json"
    with tempfile.TemporaryDirectory() as home:
        pathlib.Path(home, "p.json").write_text("[]")
        pathlib.Path(home, file).write_text("[\n" + ",\n".join(map(json.dumps, rows)) + "\n]")
        asked = ["--stations", "."] if kind == "lumo_signalsConfig" else ["p.json"]
        told = subprocess.run([sys.argv[3], "--check", *asked], cwd=home, capture_output=True, text=True).stdout
    lines = {int(line) for line in re.findall(rf"^{re.escape(file)}:(\d+):", told, re.MULTILINE)}
    return [f"the check says nothing of {kind} {json.dumps(row)}" for place, row in enumerate(rows)
            if place + 2 not in lines and not check[kind].is_valid(alone(place, row))]


parts = {kind: [record for other, _, document in documents if other == kind for record in document if document != {}]
         for kind in check}
firsts = {record.get("type", "tools"): record for record in reversed(parts["project"])}
for kind, whole in {"project": list(firsts.values()), "lumo_param": parts["lumo_param"][:1],
                    "lumo_signalsConfig": parts["lumo_signalsConfig"][:1]}.items():
    failed += unnoticed(kind, [row for record in whole for row in spoilt(record)], lambda place, row: [row])
ports = json.loads((root / "examples/flange/lumo_port.json").read_text())
for rows in zip(*map(spoilt, ports)):
    failed += unnoticed("lumo_port", list(rows), lambda place, row: ports[:place] + [row] + ports[place + 1:])
sys.exit("\n".join(failed) or None)
