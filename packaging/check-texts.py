#!/usr/bin/env python3
"""Whether the files that only other machines read can be read, and whether the version is the same everywhere."""
import json
import pathlib
import re
import sys

import yaml

top = pathlib.Path(__file__).resolve().parent.parent
wrong = []

for path in sorted([*top.glob(".github/**/*.yml"), top / "CITATION.cff"]):
    try:
        text = yaml.safe_load(path.read_text(encoding="utf-8"))
    except yaml.YAMLError as error:
        wrong.append(f"{path.relative_to(top)}: {error}")
        continue
    # YAML reads the key "on" as a truth.
    if path.parent.name == "workflows" and not (text.get("jobs") and (True in text or "on" in text)):
        wrong.append(f"{path.relative_to(top)}: no jobs, or nothing starts them")
for name in ("CMakePresets.json", "codemeta.json"):
    json.loads((top / name).read_text(encoding="utf-8"))

version = re.search(r"^project\(flokluk VERSION ([0-9.]+)", (top / "CMakeLists.txt").read_text(), re.M).group(1)
said = {
    "debian/changelog": r"\Aflokluk \(([0-9.]+)\)",
    "CHANGELOG.md": r"^## \[([0-9.]+)\]",
    "CITATION.cff": r'^version: "?([0-9.]+)',
    "codemeta.json": r'"version": "([0-9.]+)"',
    "packaging/flokluk.metainfo.xml": r'<release version="([0-9.]+)"',
}
for name, pattern in said.items():
    found = re.search(pattern, (top / name).read_text(encoding="utf-8"), re.M)
    if found is None or found.group(1) != version:
        wrong.append(f"{name}: version {found.group(1) if found else 'missing'}, CMakeLists.txt has {version}")

for line in wrong:
    print(line, file=sys.stderr)
sys.exit(1 if wrong else 0)
