#!/usr/bin/python3
"""The JSON of the worlds' reports, whole and cut, is what the schema says.

schema_test.py <qbreport> <folder of the project>
"""
import json
import pathlib
import subprocess
import sys

import jsonschema

program, project = sys.argv[1], pathlib.Path(sys.argv[2])
schema = json.loads((project / "tools/report/report.schema.json").read_text("utf-8"))
jsonschema.Draft202012Validator.check_schema(schema)
validator = jsonschema.Draft202012Validator(schema)


def check(report, name):
    run = subprocess.run([program, "json", "--offline", "-"], input=report, stdout=subprocess.PIPE, check=True)
    for error in validator.iter_errors(json.loads(run.stdout)):
        sys.exit(f"{name}: {error.json_path}: {error.message}")


files = sorted(project.glob("tests/worlds/*/expected/report.txt"))
assert files, "no reports"
for file in files:
    text = file.read_text("utf-8").replace("<entry>\t", "15-11-2026 05:03:11\t(1234:5678)\t")
    report = text.encode("latin-1")
    check(report, file)
    for tenth in range(1, 10):
        check(report[: max(len(report) * tenth // 10, 50)], f"{file}, {tenth}/10")
    # Its beginning is lost, and sections stand anywhere.
    lines = report.splitlines(keepends=True)
    check(b"".join(lines[40:] + lines[1:60]), f"{file}, in another order")
