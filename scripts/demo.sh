#!/usr/bin/env bash
# Runs kivtool over every file in examples/ and writes out/: summaries, debug texts, JSON, reference pages,
# LaTeX manuals typeset to PDF, the C headers, a register decoded under both of its selector values.
# Usage: scripts/demo.sh KIVTOOL OUTDIR
set -euo pipefail
kivtool=$1
out=$2
cd "$(dirname "$0")/.."
mkdir -p "$out"
written=()

for file in examples/*/*.xml; do
    name=$(basename "$file" .xml)
    kind=$("$kivtool" info "$file" | sed -n 's/^Kind: *//p')
    "$kivtool" info "$file" -o "$out/$name.info.txt"
    "$kivtool" dump "$file" -o "$out/$name.dump.txt"
    "$kivtool" json "$file" -o "$out/$name.json"
    "$kivtool" html "$file" -o "$out/$name.html"
    written+=("$out/$name.info.txt" "$out/$name.dump.txt" "$out/$name.json" "$out/$name.html")
    case "$kind" in
        module|IC)
            "$kivtool" header "$file" -o "$out/$name.h"
            written+=("$out/$name.h")
            while IFS= read -r path; do written+=("$path"); done \
                < <("$kivtool" manual "$file" -o "$out/manual-$name" --pdf)
            ;;
    esac
done

# The same register word read under each value of the register that selects its layout.
for selector in 0x00 0x02; do
    "$kivtool" decode examples/ic/kiv-ic-example.xml "BRG_SELECT=$selector" BRG_DECAY=0x1125A46 \
        -o "$out/decode-brg-select-$selector.txt"
    written+=("$out/decode-brg-select-$selector.txt")
done

echo
echo "make demo wrote:"
printf '  %s\n' "${written[@]}"
