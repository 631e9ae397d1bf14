"""project.py SCHEMAS PROJECT: a project file against the published schema; prints what does not fit."""
import json
import pathlib
import sys

import jsonschema

folder, project = map(pathlib.Path, sys.argv[1:3])
schema = json.loads((folder / "project.schema.json").read_text())
faults = list(jsonschema.Draft202012Validator(schema).iter_errors(json.loads(project.read_text())))
for fault in faults:
    print(f"{fault.json_path}: {fault.message}", *(f"{f.json_path}: {f.message}" for f in fault.context))
sys.exit(bool(faults))
