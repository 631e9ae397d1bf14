"""project.py SCHEMAS PROJECT: a project file against the published schema; prints what does not fit."""
import json
import pathlib
import sys

import jsonschema

schema = json.loads(pathlib.Path(sys.argv[1], "project.schema.json").read_text())
project = json.loads(pathlib.Path(sys.argv[2]).read_text())
faults = jsonschema.Draft202012Validator(schema).iter_errors(project)
sys.exit("\n".join(f"{f.json_path}: {f.message} {[c.message for c in f.context]}" for f in faults) or None)
