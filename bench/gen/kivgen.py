#!/usr/bin/env python3
"""Writes synthetic but valid product description (IC, module) and ESI files of a chosen size.

Usage: kivgen.py {ic|module|esi} SIZE_MB OUT_FILE [SEED]
       kivgen.py esi-folder TOTAL_MB OUT_DIR FILES

esi-folder writes FILES ESI files of 1 to 9 MB (TOTAL_MB together) into OUT_DIR and two levels of
subfolders, each with its own product codes and several revisions of each product: a vendor's package.

The files follow the shape of the hand-written examples in examples/: an IC has registers in groups with
several variants (linked by impacts and impacted-by), 4 to 8 fields each of mixed value kinds and alerts;
a module has axis parameters over several axes, global banks, inputs, outputs and CANopen objects; an ESI
file has devices with dictionaries of many objects and large PDO sections. Python standard library only.
"""

import os
import random
import sys

WORDS = ("motor current speed glide rise fall cruise dwell limit skip bridge phase coil tally position goal "
         "threshold filter mode enable status flag decay voltage sense offset scale gain timer step table "
         "hold run mark power heat").split()


def words(rng, count):
    return " ".join(rng.choice(WORDS) for _ in range(count))


def value_element(rng, kinds, indent):
    kind = rng.choice(kinds)
    if kind == "signed":
        low = -rng.randint(1, 1 << 20)
        return f'{indent}<value_signed min="{low}" max="{-low}" default="0" decimals="{rng.randint(0, 2)}" unit="mA" access="RW"/>'
    if kind == "unsigned":
        high = rng.randint(1, 0xFFFFFFFF)
        return (f'{indent}<value_unsigned min="0" max="{high}" default="{high // 2}" unit="\\u00b0C" '
                f'formatString="%1 C" formatMul="0.5" formatDiv="2" access="RWE"/>')
    if kind == "bool":
        return (f'{indent}<value_bool desc_short_false="off" desc_short_true="on" desc_long_false="{words(rng, 4)}" '
                f'desc_long_true="{words(rng, 4)}" default="false" access="RW"/>')
    if kind == "choice":
        lines = [f'{indent}<value_choice default="1" unit="" access="RW">']
        for value in range(rng.randint(2, 8)):
            lines.append(f'{indent}\t<choice_element value="{value}" desc_short="{words(rng, 3)}" desc_long="{words(rng, 6)}"/>')
        lines.append(f"{indent}</value_choice>")
        return "\n".join(lines)
    return f'{indent}<value_{kind} access="R" desc_short="{words(rng, 2)}" desc_long="{words(rng, 5)}"/>'


def write_ic(out, target, rng):
    kinds = ["signed", "unsigned", "bool", "choice", "date", "time", "version", "ascii"]
    out.write('<?xml version="1.0" encoding="UTF-8"?>\n<product_ic name="KIVGEN" version="1.0" author="kivgen" date="2026-01-01">\n')
    out.write("\t<desc>Synthetic IC for benchmarks \\x26 tests, 25\\u00b0 C.</desc>\n")
    out.write('\t<register_set for="KIVGEN" name="KIVGEN registers">\n')
    for group in range(8):
        out.write(f'\t\t<group name="Group {group}" id="{group}"/>\n')
    address = 0
    while out.tell() < target:
        variants = 3 if address % 5 == 0 else 1
        size = rng.choice((8, 16, 32))
        out.write(f'\t\t<value_register address="0x{address & 0xFF:02X}" name="REG_{address}" size="{size}" group="{address % 8}">\n')
        for variant in range(variants):
            name = "DEFAULT" if variants == 1 else f"Variant {variant}"
            out.write(f'\t\t\t<register_variant name="{name}">\n\t\t\t\t<desc>{words(rng, 8)}</desc>\n')
            shift = 0
            for field in range(rng.randint(4, 8)):
                width = rng.randint(1, max(1, (size - shift) // 2))
                if shift + width > size:
                    break
                mask = ((1 << width) - 1) << shift
                out.write(f'\t\t\t\t<value_register_field name="f{field}_{words(rng, 1)}" shift="{shift}" '
                          f'mask="0x{mask:X}" desc_short="{words(rng, 4)}" desc_long="{words(rng, 10)}">\n')
                if field == 0 and address % 7 == 0:
                    out.write(f'\t\t\t\t\t<value_alert text="{words(rng, 5)}"/>\n')
                out.write(value_element(rng, kinds, "\t\t\t\t\t") + "\n\t\t\t\t</value_register_field>\n")
                shift += width
            if variants > 1 and variant == 0:
                out.write(f'\t\t\t\t<register_variant_impacts address="0x{(address + 1) & 0xFF:02X}"/>\n')
            if variants > 1:
                out.write(f'\t\t\t\t<register_variant_impacted_by address="0x{(address + 1) & 0xFF:02X}" shift="0" '
                          f'mask="3" range_from="{variant}" range_to="{variant}"/>\n')
            out.write("\t\t\t</register_variant>\n")
        out.write("\t\t</value_register>\n")
        address += 1
    out.write("\t</register_set>\n\t<pins packaging=\"QFN48\">\n")
    for group in range(4):
        out.write(f'\t\t<pin_group id="{group}" name="Pins {group}" description="{words(rng, 3)}" states="in;out" desc_states="{words(rng, 2)}">\n')
        for pin in range(6):
            out.write(f'\t\t\t<pin number="{group * 6 + pin + 1}" name="P{group}_{pin}" description="{words(rng, 4)}"/>\n')
        out.write("\t\t</pin_group>\n")
    out.write('\t</pins>\n\t<database name="db" for="KIVGEN">\n\t\t<value_db name="R_Sense" value="220"/>\n'
              '\t\t<value_db name="V_SRTL" value="165"/>\n\t\t<value_db name="V_SRTH" value="310"/>\n'
              '\t\t<value_bool2 name="offset" value="true"/>\n\t</database>\n</product_ic>\n')


def parameter(rng, element, number, indent):
    kinds = ["signed", "unsigned", "bool", "choice"]
    return (f'{indent}<{element} type="{number}" name="{words(rng, 2)} {number}" identifier="p_{number}">\n'
            f"{indent}\t<desc>{words(rng, 12)}</desc>\n{indent}\t<desc>{words(rng, 6)}, 50%</desc>\n"
            f"{value_element(rng, kinds, indent + chr(9))}\n{indent}</{element}>\n")


def write_module(out, target, rng):
    out.write('<?xml version="1.0" encoding="UTF-8"?>\n<product_module>\n    <name>KIVGEN-4</name>\n'
              "    <name_fw_version>4</name_fw_version>\n    <name_fw_type>KIVL</name_fw_type>\n"
              "    <hardware_version>1.0</hardware_version>\n    <software_version>1.00</software_version>\n")
    # Three quarters of the bytes go to axis parameters over four axes, the rest to banks, I/O and objects.
    axis_target = target * 3 // 4
    axis = 0
    while out.tell() < axis_target:
        out.write(f'    <axis_parameters axis="{axis % 4}">\n')
        block_end = out.tell() + max(4096, axis_target // 4)
        number = 0
        while out.tell() < min(block_end, axis_target):
            out.write(parameter(rng, "axis_parameter", number % 256, "        "))
            number += 1
        out.write("    </axis_parameters>\n")
        axis += 1
    bank_end = out.tell() + (target - out.tell()) // 3
    for bank in (0, 2):
        out.write(f'    <global_parameters bank="{bank}">\n')
        number = 0
        while out.tell() < bank_end or number < 8:
            out.write(parameter(rng, "global_parameter", number % 256, "        "))
            number += 1
        out.write("    </global_parameters>\n")
        bank_end = out.tell() + (target - out.tell()) // 4
    for container, element, kinds in (("digital_inputs", "digital_input", ["bool"]),
                                      ("digital_outputs", "digital_output", ["bool", "unsigned"]),
                                      ("analog_inputs", "analog_input", ["unsigned"]),
                                      ("irqs", "irq", ["bool"]), ("coordinates", "coordinate", ["signed"])):
        out.write(f"    <{container}>\n")
        for number in range(16):
            out.write(f'        <{element} type="{number}" name="{element.upper()}_{number}" identifier="{element}_{number}">\n'
                      f"            <desc>{words(rng, 8)}</desc>\n{value_element(rng, kinds, ' ' * 12)}\n"
                      f"        </{element}>\n")
        out.write(f"    </{container}>\n")
    index = 0x2000
    while out.tell() < target:
        out.write(f'    <canopen_object index="0x{index:04X}" name="{words(rng, 3)}" object_type="RECORD" '
                  f'data_type="UNSIGNED32" segment="M">\n        <desc>{words(rng, 10)}</desc>\n')
        for sub in range(rng.randint(1, 6)):
            out.write(f'        <canopen_entry subindex="{sub}" name="{words(rng, 2)}">\n'
                      f"{value_element(rng, ['signed', 'unsigned', 'bool', 'choice', 'date', 'time', 'version', 'ascii'], ' ' * 12)}\n"
                      "        </canopen_entry>\n")
        out.write("    </canopen_object>\n")
        index += 1
    out.write('    <drive_configuration id="0x01" name="default">\n        <drive_ap_settings name="Current">\n'
              '            <drive_ap_setting type="30" value="96"/>\n        </drive_ap_settings>\n'
              "    </drive_configuration>\n    <pin_map>\n        <pin_mapping pin_ic=\"1\" pin_board=\"3\"/>\n"
              "    </pin_map>\n    <database>\n        <value_db name=\"R_Sense\" value=\"150\"/>\n    </database>\n"
              "</product_module>\n")


def write_esi(out, target, rng, first_product=0x10000, revisions=1):
    out.write('<?xml version="1.0" encoding="UTF-8"?>\n<EtherCATInfo Version="1.6">\n  <Vendor>\n'
              "    <Id>#x00000A7C</Id>\n    <Name LcId=\"1033\">Kivgen Devices</Name>\n"
              "    <ImageData16x14>424D36030000</ImageData16x14>\n  </Vendor>\n  <Descriptions>\n"
              "    <Groups>\n      <Group>\n        <Type>KivGen</Type>\n        <Name LcId=\"1033\">Generated</Name>\n"
              "      </Group>\n    </Groups>\n    <Devices>\n")
    device = 0
    while out.tell() < target:
        product, revision = first_product + device // revisions, 0x00010000 + (device % revisions) * 0x10000
        out.write(f'      <Device Physics="YY">\n        <Type ProductCode="#x{product:08X}" RevisionNo="#x{revision:08X}">KG-{device}</Type>\n'
                  f'        <Name LcId="1031">KG-{device} Antrieb</Name>\n        <Name LcId="1033">KG-{device} drive</Name>\n'
                  "        <GroupType>KivGen</GroupType>\n        <Profile>\n          <ProfileNo>402</ProfileNo>\n"
                  "          <Dictionary>\n            <DataTypes>\n")
        for data_type in range(10):
            out.write(f"              <DataType>\n                <Name>DT{data_type:04X}</Name>\n                <BitSize>48</BitSize>\n")
            for sub in range(3):
                out.write(f"                <SubItem>\n                  <SubIdx>{sub}</SubIdx>\n                  <Name>Sub {sub}</Name>\n"
                          f"                  <Type>UINT</Type>\n                  <BitSize>16</BitSize>\n"
                          f"                  <BitOffs>{16 * sub}</BitOffs>\n                  <Flags><Access>rw</Access></Flags>\n"
                          "                </SubItem>\n")
            out.write("              </DataType>\n")
        out.write("            </DataTypes>\n            <Objects>\n")
        for obj in range(120):
            out.write(f"              <Object>\n                <Index>#x{0x2000 + obj:04X}</Index>\n"
                      f"                <Name>{words(rng, 3)}</Name>\n                <Type>UDINT</Type>\n"
                      "                <BitSize>32</BitSize>\n                <Info>\n"
                      f"                  <DefaultValue>#x{rng.randint(0, 0xFFFFFFFF):08X}</DefaultValue>\n"
                      "                </Info>\n                <Flags>\n                  <Access>rw</Access>\n"
                      "                </Flags>\n              </Object>\n")
        out.write("            </Objects>\n          </Dictionary>\n        </Profile>\n")
        # PDO sections: the parser skips them, so they must cost time only, not memory.
        for pdo, base in (("RxPdo", 0x1600), ("TxPdo", 0x1A00)):
            for number in range(6):
                out.write(f'        <{pdo} Fixed="1">\n          <Index>#x{base + number:04X}</Index>\n          <Name>{pdo} {number}</Name>\n')
                for entry in range(24):
                    out.write(f"          <Entry>\n            <Index>#x{0x6000 + entry:04X}</Index>\n"
                              "            <SubIndex>0</SubIndex>\n            <BitLen>32</BitLen>\n"
                              f"            <Name>{words(rng, 2)}</Name>\n            <DataType>UDINT</DataType>\n          </Entry>\n")
                out.write(f"        </{pdo}>\n")
        out.write("      </Device>\n")
        device += 1
    out.write("    </Devices>\n  </Descriptions>\n</EtherCATInfo>\n")


def write_esi_folder(total_mb, folder, files):
    """The folder of a vendor's package; sizes spread evenly between 1 and 9 MB around the mean."""
    rng = random.Random(2026)
    mean = total_mb / files
    for index in range(files):
        size = mean * (0.2 + 1.6 * index / max(1, files - 1))
        sub = os.path.join(folder, f"series-{index % 4}", f"part-{index % 7}")
        os.makedirs(sub, exist_ok=True)
        with open(os.path.join(sub, f"kivgen-{index:04d}.xml"), "w", encoding="utf-8") as out:
            write_esi(out, int(size * 1024 * 1024), rng, first_product=0x100000 + index * 0x100, revisions=4)


def main():
    if len(sys.argv) == 5 and sys.argv[1] == "esi-folder":
        write_esi_folder(float(sys.argv[2]), sys.argv[3], int(sys.argv[4]))
        return
    if len(sys.argv) not in (4, 5) or sys.argv[1] not in ("ic", "module", "esi"):
        sys.exit(__doc__)
    kind, size_mb, path = sys.argv[1], float(sys.argv[2]), sys.argv[3]
    rng = random.Random(int(sys.argv[4]) if len(sys.argv) == 5 else 2026)
    target = int(size_mb * 1024 * 1024)
    with open(path, "w", encoding="utf-8") as out:
        {"ic": write_ic, "module": write_module, "esi": write_esi}[kind](out, target, rng)


if __name__ == "__main__":
    main()
