#!/usr/bin/env bash
# Runs kivtool over every file in examples/ and writes out/: summaries, debug texts, HTML pages, LaTeX
# manuals typeset to PDF, and the ESI JSON export.
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
    written+=("$out/$name.info.txt" "$out/$name.dump.txt")
    case "$kind" in
        module|IC)
            "$kivtool" html "$file" -o "$out/$name.html"
            written+=("$out/$name.html")
            while IFS= read -r path; do written+=("$path"); done \
                < <("$kivtool" manual "$file" -o "$out/manual-$name" --pdf)
            ;;
        ESI)
            "$kivtool" json "$file" -o "$out/$name.json"
            written+=("$out/$name.json")
            ;;
    esac
done

echo
echo "make demo wrote:"
printf '  %s\n' "${written[@]}"
