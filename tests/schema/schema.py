"""schema.py ROOT SCHEMAS: the schemas against every example, and against what must not pass."""
import json
import pathlib
import sys

import jsonschema

root, folder = map(pathlib.Path, sys.argv[1:3])
check = {}
for file in folder.glob("*.json"):
    check[file.name.split(".")[0]] = validator = jsonschema.Draft202012Validator(json.loads(file.read_text()))
    validator.check_schema(validator.schema)

# rework.json is damaged on purpose.
examples = [f for f in root.glob("examples/*/*.json") if f.name not in {"scenario.json", "rework.json"}]
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
}
for kind, bad in refused.items():
    failed += [f"{kind} accepts {document}" for document in bad if check[kind].is_valid(document)]
sys.exit("\n".join(failed) or None)
