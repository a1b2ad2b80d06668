#!/usr/bin/env python3
"""Generates the benchmark inputs, runs kivbench and prints one table.

Usage: report.py KIVBENCH DATA_DIR [ESI_SAMPLES_DIR]
"""

import json
import os
import subprocess
import sys

SIZES_MB = (3, 30)
KINDS = ("ic", "module", "esi")


def generate(data_dir):
    os.makedirs(data_dir, exist_ok=True)
    generator = os.path.join(os.path.dirname(os.path.abspath(__file__)), "gen", "kivgen.py")
    for kind in KINDS:
        for size in SIZES_MB:
            path = os.path.join(data_dir, f"{kind}-{size}mb.xml")
            if not os.path.exists(path):
                subprocess.run([sys.executable, generator, kind, str(size), path], check=True)


def memory(kivbench, path):
    out = subprocess.run([kivbench, "--memory", path], check=True, capture_output=True, text=True).stdout
    return json.loads(out)


def main():
    if len(sys.argv) < 3:
        sys.exit(__doc__)
    kivbench, data_dir = sys.argv[1], sys.argv[2]
    samples = sys.argv[3] if len(sys.argv) > 3 and os.path.isdir(sys.argv[3]) else None
    generate(data_dir)
    results_path = os.path.join(data_dir, "results.json")
    subprocess.run([kivbench, data_dir, "--benchmark_format=console", "--benchmark_out_format=json",
                    f"--benchmark_out={results_path}", "--benchmark_min_time=0.5",
                    "--benchmark_repetitions=3", "--benchmark_report_aggregates_only=true"],
                   check=True, stdout=subprocess.DEVNULL)
    with open(results_path) as f:
        # The median of three repetitions of each benchmark.
        runs = {b["run_name"]: b for b in json.load(f)["benchmarks"]
                if b.get("aggregate_name") == "median" and "error_occurred" not in b}

    def ms(name):
        run = runs.get(name)
        return run["real_time"] if run else float("nan")

    def mbps(name):
        run = runs.get(name)
        return run["bytes_per_second"] / 1e6 if run and "bytes_per_second" in run else float("nan")

    print("Parse (MB/s; ratio to the XML reader's own token rate on the same bytes; memory = resident growth / file size)")
    print(f"{'kind':<7} {'size':>6} {'ceiling MB/s':>13} {'parse MB/s':>11} {'ratio':>6} {'scaling':>8} {'memory':>7}")
    for kind in KINDS:
        small, large = f"{kind}-{SIZES_MB[0]}mb.xml", f"{kind}-{SIZES_MB[1]}mb.xml"
        for name in (small, large):
            mem = memory(kivbench, os.path.join(data_dir, name))
            scaling = ms(f"parse/{large}") / ms(f"parse/{small}")
            print(f"{kind:<7} {mem['bytes'] / 1e6:>5.1f}M {mbps('ceiling/' + name):>13.1f} {mbps('parse/' + name):>11.1f} "
                  f"{mbps('parse/' + name) / mbps('ceiling/' + name):>6.2f} "
                  f"{(f'{scaling:.1f}' if name == large else ''):>8} {mem['rss_growth'] / mem['bytes']:>7.2f}")
    print()
    print(f"Renderers (ms at {SIZES_MB[0]} MB and {SIZES_MB[1]} MB; scaling = time ratio, linear is {SIZES_MB[1] // SIZES_MB[0]})")
    print(f"{'kind':<7} {'renderer':<28} {'small ms':>9} {'large ms':>9} {'scaling':>8}")
    for name in sorted(runs):
        if not name.startswith("render/") or not name.endswith(f"-{SIZES_MB[0]}mb.xml"):
            continue
        _, renderer, small = name.split("/")
        kind = small.split("-")[0]
        large = small.replace(f"-{SIZES_MB[0]}mb", f"-{SIZES_MB[1]}mb")
        a, b = ms(name), ms(f"render/{renderer}/{large}")
        print(f"{kind:<7} {renderer:<28} {a:>9.2f} {b:>9.2f} {b / a:>8.1f}")
    print()
    print("Formerly quadratic paths (ms at N and 2N, inputs built in memory; linear doubles: ratio 2)")
    print(f"{'path':<28} {'N':>8} {'ms at N':>9} {'ms at 2N':>9} {'ratio':>6}")
    scaling = {}
    for name in runs:
        if name.startswith("scaling/"):
            _, path, count = name.split("/")
            scaling.setdefault(path, []).append(int(count))
    for path in sorted(scaling):
        n = min(scaling[path])
        a, b = ms(f"scaling/{path}/{n}"), ms(f"scaling/{path}/{2 * n}")
        print(f"{path:<28} {n:>8} {a:>9.2f} {b:>9.2f} {b / a:>6.1f}")
    if samples:
        print()
        print("Real ESI files (parse once each; memory = resident growth / file size)")
        print(f"{'file':<48} {'size':>8} {'memory':>7} {'result':>8}")
        for entry in sorted(os.listdir(samples)):
            if entry.lower().endswith(".xml"):
                mem = memory(kivbench, os.path.join(samples, entry))
                print(f"{entry[:48]:<48} {mem['bytes'] / 1e6:>7.2f}M {mem['rss_growth'] / mem['bytes']:>7.2f} "
                      f"{('parsed' if mem['ok'] else 'null') if mem['kind'] == 'esi' else 'not ESI':>8}")


if __name__ == "__main__":
    main()
