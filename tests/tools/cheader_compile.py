#!/usr/bin/env python3
"""Compiles the C headers kivtool writes, and runs their self-tests, with one compiler family.

Usage: cheader_compile.py KIVTOOL KIVGEN EXAMPLES_DIR WORK_DIR {gcc|clang}

Headers of both examples and of a generated ~2 MB IC and module are compiled as C99, C11 and C++17 with
-Wall -Wextra -Werror -pedantic -Wconversion; the IC self-tests are built as C99 and C11 and must pass; a
second run must give the same bytes; a mask widened by hand must trip the C11 and C++ checks. Exit 77
(skipped) when the compiler family is not installed.
"""

import os
import re
import shutil
import subprocess
import sys

FLAGS = ["-Wall", "-Wextra", "-Werror", "-pedantic", "-Wconversion"]


def run(command, **kwargs):
    result = subprocess.run(command, capture_output=True, text=True, **kwargs)
    return result.returncode, result.stdout + result.stderr


def must(command, what):
    code, output = run(command)
    if code != 0:
        sys.exit(f"FAIL {what}: exit {code}\n$ {' '.join(command)}\n{output}")
    return output


def unique_names(source, target):
    """kivgen repeats parameter numbers and entry names by chance; a header rightly refuses those, so the
    compile test gets a copy whose names carry a running number."""
    counter = iter(range(1 << 30))
    pattern = re.compile(r'(<(?:axis_parameter|global_parameter|canopen_entry|canopen_object) [^>]*?name=")([^"]*)"')
    with open(source, encoding="utf-8") as text:
        data = pattern.sub(lambda m: f'{m.group(1)}{m.group(2)} n{next(counter)}"', text.read())
    with open(target, "w", encoding="utf-8") as out:
        out.write(data)


def compile_header(cc, cxx, header, work):
    name = os.path.basename(header)
    c_unit = os.path.join(work, name + ".use.c")
    cxx_unit = os.path.join(work, name + ".use.cpp")
    for unit in (c_unit, cxx_unit):
        with open(unit, "w") as out:
            out.write(f'#include "{name}"\nint kiv_header_unit;\n')
    for std in ("c99", "c11"):
        must([cc, f"-std={std}", *FLAGS, "-I", work, "-c", c_unit, "-o", os.devnull], f"{cc} -std={std} {name}")
    must([cxx, "-std=c++17", *FLAGS, "-I", work, "-c", cxx_unit, "-o", os.devnull], f"{cxx} -std=c++17 {name}")


def self_test(cc, source, work):
    fields = 0
    for std in ("c99", "c11"):
        program = os.path.join(work, os.path.basename(source) + "." + std)
        must([cc, f"-std={std}", *FLAGS, "-I", work, source, "-o", program], f"{cc} -std={std} {source}")
        output = must([program], f"self-test {program}")
        found = re.search(r"(\d+) checks of (\d+) fields, 0 failed", output)
        if not found:
            sys.exit(f"FAIL self-test {program}: {output}")
        fields = int(found.group(2))
        print(f"{cc} {std} {os.path.basename(source)}: {found.group(0)}")
    return fields


def main():
    kivtool, kivgen, examples, work, family = sys.argv[1:6]
    cc, cxx = ("gcc", "g++") if family == "gcc" else ("clang", "clang++")
    if not shutil.which(cc) or not shutil.which(cxx):
        print(f"SKIP: {cc} or {cxx} is not installed (scripts/install-deps.sh test installs them)")
        return 77
    shutil.rmtree(work, ignore_errors=True)
    os.makedirs(work)

    big_ic = os.path.join(work, "big-ic.xml")
    raw_module = os.path.join(work, "big-module-raw.xml")
    big_module = os.path.join(work, "big-module.xml")
    must([sys.executable, kivgen, "ic", "2", big_ic], "kivgen ic")
    must([sys.executable, kivgen, "module", "2", raw_module], "kivgen module")
    unique_names(raw_module, big_module)

    # The raw module names one identifier twice: refused, and nothing written.
    refused = os.path.join(work, "refused.h")
    code, output = run([kivtool, "header", raw_module, "-o", refused])
    if code != 1 or "error: identifier " not in output or os.path.exists(refused):
        sys.exit(f"FAIL colliding names: exit {code}, written {os.path.exists(refused)}\n{output[:2000]}")

    ics = [(os.path.join(examples, "ic", "kiv-ic-example.xml"), "kiv5q7"), (big_ic, "big_ic")]
    modules = [(os.path.join(examples, "module", "kiv-module-example.xml"), "kivd"), (big_module, "big_module")]
    fields = {}
    for source, stem in ics + modules:
        header = os.path.join(work, stem + ".h")
        command = [kivtool, "header", source, "-o", header]
        if (source, stem) in ics:
            command += ["--selftest", os.path.join(work, stem + "_test.c")]
        output = must(command, f"kivtool header {source}")
        if output.strip():
            sys.exit(f"FAIL kivtool header {source} reported:\n{output}")
        with open(header, "rb") as first:
            before = first.read()
        must(command, f"kivtool header {source}, second run")
        with open(header, "rb") as second:
            if second.read() != before:
                sys.exit(f"FAIL {header}: a second run gave other bytes")
        compile_header(cc, cxx, header, work)
        if (source, stem) in ics:
            fields[stem] = self_test(cc, os.path.join(work, stem + "_test.c"), work)

    # A mask widened by hand beyond its 8-bit register must stop C11 and C++17, and pass unchecked in C99.
    with open(os.path.join(work, "kiv5q7.h"), encoding="utf-8") as text:
        broken = re.sub(r"(#define KIV5Q7_SYS_EVENTS_POR_Msk\s+)0x01U", r"\g<1>0x101U", text.read())
    with open(os.path.join(work, "broken.h"), "w", encoding="utf-8") as out:
        out.write(broken)
    with open(os.path.join(work, "broken.c"), "w") as out:
        out.write('#include "broken.h"\nint kiv_header_unit;\n')
    for compiler, std in ((cc, "c11"), (cxx, "c++17")):
        unit = os.path.join(work, "broken.c")
        code, output = run([compiler, *(["-x", "c++"] if compiler == cxx else []), f"-std={std}", "-c", unit,
                            "-o", os.devnull])
        if code == 0 or "KIV5Q7_SYS_EVENTS_POR_Msk lies outside its register" not in output:
            sys.exit(f"FAIL {compiler} -std={std} accepted a mask beyond its register:\n{output}")
    must([cc, "-std=c99", *FLAGS, "-c", os.path.join(work, "broken.c"), "-o", os.devnull], f"{cc} c99 broken.h")
    print(f"{family}: headers compile; self-tests checked {fields} fields")
    return 0


if __name__ == "__main__":
    sys.exit(main())
