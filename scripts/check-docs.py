#!/usr/bin/env python3
"""Checks Doxygen's XML output of the public headers: every class, struct and namespace of ours has a brief.

Usage: scripts/check-docs.py BUILD/docs/xml
Prints each one without a brief as file:line and exits 1 if there is any.
"""
import sys
import xml.etree.ElementTree as ET
from pathlib import Path

KINDS = {"class", "struct", "union", "namespace"}


def text_of(element):
    return "".join(element.itertext()).strip() if element is not None else ""


def main():
    if len(sys.argv) != 2:
        print(__doc__.strip(), file=sys.stderr)
        return 2
    xml_dir = Path(sys.argv[1])
    index = ET.parse(xml_dir / "index.xml").getroot()
    checked = 0
    missing = []
    for compound in index.findall("compound"):
        if compound.get("kind") not in KINDS:
            continue
        definition = ET.parse(xml_dir / (compound.get("refid") + ".xml")).getroot().find("compounddef")
        if definition.get("prot", "public") != "public":
            continue
        location = definition.find("location")
        # A base class from Qt appears as a stub without a body in our files.
        if compound.get("kind") != "namespace" and (location is None or location.get("bodyfile") is None):
            continue
        checked += 1
        if not text_of(definition.find("briefdescription")):
            where = f"{location.get('file')}:{location.get('line')}" if location is not None else "?"
            missing.append(f"{where}: {compound.get('kind')} {text_of(compound.find('name'))} has no brief")
    for line in missing:
        print(line, file=sys.stderr)
    print(f"check-docs: {checked} classes and namespaces, {len(missing)} without a brief")
    return 1 if missing else 0


if __name__ == "__main__":
    sys.exit(main())
