#!/usr/bin/env python3
"""Writes small product files that once made the library abort, overflow or take quadratic time.

Usage: hostile.py KIND N OUT_FILE

  empty-axis N        a module of N empty <axis_parameters/> (buffer sizing of the HTML and LaTeX pages)
  axis-blocks N       a module of N <axis_parameters axis="0"/> (the standalone manual's long tables)
  empty-registers N   an IC of N empty <value_register/> (buffer sizing of the debug text)
  wide-register N     an IC whose one register says size="N" and has one field (padding of the defaults)
  unicode N           an IC whose description holds N escapes \\u0041 (escape decoding)
  drive-settings N    a module of N axis-0 parameters and N drive settings naming them (the HTML page)
"""

import sys


def module(out, body):
    out.write('<?xml version="1.0" encoding="UTF-8"?>\n<product_module>\n<name>HOSTILE</name>\n')
    body(out)
    out.write("</product_module>\n")


def ic(out, body):
    out.write('<?xml version="1.0" encoding="UTF-8"?>\n<product_ic name="HOSTILE" version="1" author="a" date="d">\n'
              '<register_set for="HOSTILE" name="regs">\n')
    body(out)
    out.write("</register_set>\n</product_ic>\n")


def write(kind, n, out):
    if kind == "empty-axis":
        module(out, lambda o: o.write("<axis_parameters/>\n" * n))
    elif kind == "axis-blocks":
        module(out, lambda o: o.write('<axis_parameters axis="0"/>\n' * n))
    elif kind == "empty-registers":
        ic(out, lambda o: o.write("<value_register/>\n" * n))
    elif kind == "wide-register":
        ic(out, lambda o: o.write(
            f'<value_register address="0x10" name="WIDE" size="{n}" group="0">\n<register_variant name="DEFAULT">\n'
            '<value_register_field name="f" shift="0" mask="FF" desc_short="f">\n'
            '<value_unsigned min="0" max="255" default="5" access="RW"/>\n'
            "</value_register_field>\n</register_variant>\n</value_register>\n"))
    elif kind == "unicode":
        out.write('<?xml version="1.0" encoding="UTF-8"?>\n<product_ic name="HOSTILE">\n<desc>')
        out.write("\\u0041" * n)
        out.write("</desc>\n</product_ic>\n")
    elif kind == "drive-settings":
        def body(o):
            o.write('<axis_parameters axis="0">\n')
            for i in range(n):
                # Every parameter but the last has type 1: a lookup of type 2 walks them all.
                o.write(f'<axis_parameter type="{2 if i == n - 1 else 1}" name="p{i}" identifier="p{i}"/>\n')
            o.write('</axis_parameters>\n<drive_configuration id="1" name="cfg">\n<drive_ap_settings name="g">\n')
            o.write('<drive_ap_setting type="2" value="7"/>\n' * n)
            o.write("</drive_ap_settings>\n</drive_configuration>\n")
        module(out, body)
    else:
        sys.exit(__doc__)


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    with open(sys.argv[3], "w", encoding="utf-8") as out:
        write(sys.argv[1], int(sys.argv[2]), out)


if __name__ == "__main__":
    main()
