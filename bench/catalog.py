#!/usr/bin/env python3
"""Generates a folder of ESI files (a vendor's package, about 1 GB in 200 files) once, runs
kivcatalogbench over it and prints one table.

Usage: catalog.py KIVCATALOGBENCH DATA_DIR [TOTAL_MB FILES]
"""

import json
import os
import subprocess
import sys


def main():
    if len(sys.argv) not in (3, 5):
        sys.exit(__doc__)
    bench, data_dir = sys.argv[1], sys.argv[2]
    total_mb, files = (float(sys.argv[3]), int(sys.argv[4])) if len(sys.argv) == 5 else (1024.0, 200)
    folder = os.path.join(data_dir, f"esi-folder-{int(total_mb)}mb-{files}")
    if not os.path.isdir(folder):
        generator = os.path.join(os.path.dirname(os.path.abspath(__file__)), "gen", "kivgen.py")
        print(f"generating {folder} ...", file=sys.stderr)
        subprocess.run([sys.executable, generator, "esi-folder", str(total_mb), folder + ".tmp", str(files)],
                       check=True)
        os.rename(folder + ".tmp", folder)
    out = subprocess.run([bench, folder, os.path.join(data_dir, "catalog-work")], check=True,
                         capture_output=True, text=True).stdout
    r = json.loads(out)
    print(f"ESI catalog: {r['files']} files, {r['megabytes']:.0f} MB, {r['devices']} devices")
    mb = r['megabytes']
    print(f"{'first scan, 1 thread':<34} {r['scan1_s']:>8.2f} s {r['scan1_mbps']:>8.1f} MB/s"
          f"   (CPU {r['scan1_cpu_s']:.1f} s: {mb / r['scan1_cpu_s']:.0f} MB per CPU second)")
    print(f"{'first scan, 2 threads':<34} {r['scan2_s']:>8.2f} s {r['scan2_mbps']:>8.1f} MB/s"
          f"   (CPU {r['scan2_cpu_s']:.1f} s)   scaling {r['scan1_s'] / r['scan2_s']:.2f}x")
    print(f"{'re-scan, nothing changed':<34} {r['rescan_s']:>8.3f} s   (files read: {r['rescan_read']}; target < 1 s)")
    print(f"{'find by identity (--nearest)':<34} {r['find_ms_median']:>8.3f} ms median, {r['find_ms_max']:.3f} ms max"
          f" (target < 50 ms)")
    print(f"{'database size':<34} {r['db_bytes'] / 1e6:>8.2f} MB")


if __name__ == "__main__":
    main()
