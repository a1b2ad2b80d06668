#!/usr/bin/env python3
"""Validates `kivtool json FILE` against the product schema of docs/schema, and checks that the schema
rejects a mistake (an unknown key, a text where a number belongs) and that the definitions both schemas
share have not drifted apart.

Usage: validate_json.py KIVTOOL SCHEMA_DIR KIND FILE   (KIND: module or ic)
Exit 0 valid, 1 invalid, 77 when the jsonschema module is missing (CTest reports a skip)."""

import copy
import json
import subprocess
import sys

try:
    import jsonschema
except ImportError:
    print("jsonschema is not installed (Debian: python3-jsonschema); skipped")
    sys.exit(77)


def version():
    try:
        from importlib.metadata import version as package_version
        return package_version("jsonschema")
    except Exception:  # an old or unusual installation: the check itself does not depend on it
        return "unknown version"


def load(path):
    with open(path, encoding="utf-8") as f:
        return json.load(f)


def errors(validator, document):
    return sorted(validator.iter_errors(document), key=lambda e: list(e.absolute_path))


def main(kivtool, schema_dir, kind, path):
    schemas = {name: load(f"{schema_dir}/{name}.schema.json") for name in ("module", "ic")}
    schema = schemas[kind]
    jsonschema.Draft202012Validator.check_schema(schema)
    validator = jsonschema.Draft202012Validator(schema)

    run = subprocess.run([kivtool, "json", path], capture_output=True, check=False)
    if run.returncode != 0:
        print(f"kivtool json {path} exited {run.returncode}: {run.stderr.decode(errors='replace')}")
        return 1
    document = json.loads(run.stdout.decode("utf-8"))

    found = errors(validator, document)
    for error in found[:20]:
        print(f"{path}: /{'/'.join(map(str, error.absolute_path))}: {error.message[:300]}")
    if found:
        return 1

    status = 0
    for what, mutate in (("an unknown top-level key", lambda d: d.__setitem__("unexpected", 1)),
                         ("a number for the name", lambda d: d.__setitem__("name", 7)),
                         ("a missing key", lambda d: d.pop("database"))):
        wrong = copy.deepcopy(document)
        mutate(wrong)
        if not errors(validator, wrong):
            print(f"the {kind} schema accepts {what}")
            status = 1

    shared = set(schemas["module"]["$defs"]) & set(schemas["ic"]["$defs"])
    for name in sorted(shared):
        if schemas["module"]["$defs"][name] != schemas["ic"]["$defs"][name]:
            print(f"$defs/{name} differs between module.schema.json and ic.schema.json")
            status = 1
    if status == 0:
        print(f"{path}: valid against {kind}.schema.json (jsonschema {version()}, draft 2020-12)")
    return status


if __name__ == "__main__":
    if len(sys.argv) != 5 or sys.argv[3] not in ("module", "ic"):
        print(__doc__)
        sys.exit(2)
    sys.exit(main(*sys.argv[1:]))
