#!/usr/bin/env bash
# Installs what building, testing and the demo need on Debian 12, and nothing that is already there.
# Usage: scripts/install-deps.sh [build|test|demo|fuzz|bench|package|docs]...
set -euo pipefail

build_pkgs=(build-essential cmake qtbase5-dev qtbase5-dev-tools libqt5sql5-sqlite)
test_pkgs=(chromium chromium-driver clang man-db pkg-config poppler-utils python3-jsonschema python3-selenium texlive-latex-base texlive-latex-recommended texlive-latex-extra texlive-fonts-recommended)
demo_pkgs=(poppler-utils texlive-latex-base texlive-latex-recommended texlive-latex-extra texlive-fonts-recommended)
fuzz_pkgs=(clang libclang-rt-dev)
bench_pkgs=(libbenchmark-dev python3)
package_pkgs=(dpkg-dev file lintian pkg-config)
docs_pkgs=(doxygen python3)

wanted=("${build_pkgs[@]}")
for what in "$@"; do
    case "$what" in
        build) ;;
        test) wanted+=("${test_pkgs[@]}") ;;
        demo) wanted+=("${demo_pkgs[@]}") ;;
        fuzz) wanted+=("${fuzz_pkgs[@]}") ;;
        bench) wanted+=("${bench_pkgs[@]}") ;;
        package) wanted+=("${package_pkgs[@]}") ;;
        docs) wanted+=("${docs_pkgs[@]}") ;;
        *) echo "install-deps: unknown set '$what'" >&2; exit 2 ;;
    esac
done

missing=()
for pkg in "${wanted[@]}"; do
    if ! dpkg-query -W -f='${Status}' "$pkg" 2>/dev/null | grep -q "install ok installed"; then
        missing+=("$pkg")
    fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

echo "install-deps: installing ${missing[*]}"
sudo=""
if [ "$(id -u)" -ne 0 ]; then sudo="sudo"; fi
export DEBIAN_FRONTEND=noninteractive
$sudo apt-get update -qq
$sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
