"""schema.py ROOT SCHEMAS: the schemas against every example, and against what must not pass."""
import json
import pathlib
import sys

import jsonschema

root, folder = map(pathlib.Path, sys.argv[1:3])
schemas = {f.name.split(".")[0]: json.loads(f.read_text()) for f in folder.glob("*.json")}
for schema in schemas.values():
    jsonschema.Draft202012Validator.check_schema(schema)
check = {name: jsonschema.Draft202012Validator(schema) for name, schema in schemas.items()}


def kind(file):
    return file.stem if file.stem in check else "project"


failed = []
damaged = {"rework.json"}  # on purpose
examples = [f for f in root.glob("examples/*/*.json") if f.name not in {"scenario.json", *damaged}]
kinds = {kind(f) for f in examples}
if kinds != set(check):
    failed.append(f"the examples are only of {sorted(kinds)}")
for file in examples:
    for error in check[kind(file)].iter_errors(json.loads(file.read_text())):
        failed.append(f"{file.relative_to(root)}: {error.message} at {error.json_path}")

# What the package itself makes new statements, ports and tool sets from.
defaults = json.loads((root / "lumo/resources/lumo_en.json").read_text("utf-8-sig"))
templates = [{"type": name, **fields} for name, fields in defaults["default"]["program"].items()]
documents = {
    "project": [[*templates, defaults["toolset"]], []],
    "lumo_port": [defaults["port"], {}],
    "lumo_signalsConfig": [[{**defaults["default"]["signalsConfig"], "time": 100}, {"time": "100"}], {}],
    "lumo_param": [{}],
}
for name, accepted in documents.items():
    for document in accepted:
        for error in check[name].iter_errors(document):
            failed.append(f"{name}, as the package makes it: {error.message} at {error.json_path}")

refused = {
    "project": [{}, [1], [{"type": "moveX"}], [{"type": "moveL"}], [{"type": "moveC", "point": {}}],
                [{"type": "setDO", "value": True}], [{"type": "moveJ", "point": {"near": [0, 0]}}],
                [{"type": "open", "weldspeed": "fast"}], [{"type": "waitDI", "DI_reg": {"name": "A"}}],
                 [{"end": {"name": "tool0"}}]],
    "lumo_port": [{"a": 1}, defaults["port"][1:], [*defaults["port"], {"type": "AO"}], [{}] * 19,
                  [{"type": "DI"}] * 19, [{**row, "enable": "yes"} for row in defaults["port"]]],
    "lumo_param": [[{"power": 50}], [{"name": "A", "power": None}]],
    "lumo_signalsConfig": [[{"time": "soon"}], [{"time": -1}], [3]],
}
for name, bad in refused.items():
    for document in bad:
        if check[name].is_valid(document):
            failed.append(f"{name} accepts {document}")

print("\n".join(failed) or "all as they should be")
sys.exit(bool(failed))
