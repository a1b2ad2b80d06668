#!/usr/bin/env python3
"""Validates `kivtool check --sarif` over the seeded-defect corpus and the examples against a subset of
the SARIF 2.1.0 schema written by hand (tests/data/check/sarif-2.1.0-subset.schema.json), checks that
every result points at its rule, and that docs/checks.md has a section for every rule's helpUri anchor.

Usage: validate_sarif.py KIVTOOL SCHEMA CHECKS_MD FILE...
Exit 0 valid, 1 invalid, 77 when the jsonschema module is missing (CTest reports a skip)."""

import json
import re
import subprocess
import sys

try:
    import jsonschema
except ImportError:
    print("jsonschema is not installed (Debian: python3-jsonschema); skipped")
    sys.exit(77)


def main(kivtool, schema_path, checks_md, files):
    with open(schema_path, encoding="utf-8") as f:
        schema = json.load(f)
    with open(checks_md, encoding="utf-8") as f:
        anchors = set(re.findall(r'<a id="([^"]+)"></a>', f.read()))
    validator = jsonschema.Draft7Validator(schema)
    run = subprocess.run([kivtool, "check", "--sarif", *files], capture_output=True, check=False)
    if run.returncode not in (0, 1):
        print("kivtool check failed:", run.stderr.decode())
        return 1
    log = json.loads(run.stdout)
    problems = [f"{list(e.absolute_path)}: {e.message}" for e in validator.iter_errors(log)]
    rules = log["runs"][0]["tool"]["driver"]["rules"]
    results = log["runs"][0]["results"]
    for result in results:
        if rules[result["ruleIndex"]]["id"] != result["ruleId"]:
            problems.append(f"result {result['ruleId']} points at rule {result['ruleIndex']}")
    for rule in rules:
        anchor = rule["helpUri"].split("#", 1)[1]
        if anchor not in anchors:
            problems.append(f"docs/checks.md has no section {anchor}")
    if len(results) < len(files) - 3:  # every corpus file gives a finding; the three examples none
        problems.append(f"only {len(results)} results for {len(files)} files")
    # The schema must reject what a platform would refuse: a level SARIF does not know.
    broken = json.loads(run.stdout)
    broken["runs"][0]["results"][0]["level"] = "fatal"
    if validator.is_valid(broken):
        problems.append("the schema accepts the level 'fatal'")
    for problem in problems:
        print(problem)
    print(f"{len(results)} results, {len(rules)} rules: {'invalid' if problems else 'valid'}")
    return 1 if problems else 0


if __name__ == "__main__":
    if len(sys.argv) < 5:
        print(__doc__)
        sys.exit(2)
    sys.exit(main(sys.argv[1], sys.argv[2], sys.argv[3], sys.argv[4:]))
