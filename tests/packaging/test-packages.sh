#!/usr/bin/env bash
# Checks the Debian packages that `make package` built: unpacks libkivcore0, libkivcore-dev and kivtool into
# a scratch root, runs kivtool from there, builds and runs the consumer with pkg-config and with CMake
# against that root, checks the packages' fields and contents, then runs lintian.
# Usage: tests/packaging/test-packages.sh BUILD-FOLDER
set -euo pipefail
build=$(cd "$1" && pwd)
here=$(cd "$(dirname "$0")" && pwd)
consumer=$here/../consumer
version=$(sed -n 's/^CMAKE_PROJECT_VERSION:STATIC=//p' "$build/CMakeCache.txt")
multiarch=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
arch=$(dpkg-architecture -qDEB_HOST_ARCH)
passed=0
failed=0
pass() { passed=$((passed + 1)); }
fail() { echo "FAIL: $*" >&2; failed=$((failed + 1)); }

root=$(mktemp -d)
trap 'rm -rf "$root"' EXIT
declare -A deb contents
for package in libkivcore0 libkivcore-dev kivtool; do
    deb[$package]=$build/${package}_${version}-1_${arch}.deb
    [ -f "${deb[$package]}" ] || { echo "FAIL: ${deb[$package]} was not built" >&2; exit 1; }
    dpkg-deb -x "${deb[$package]}" "$root"
    contents[$package]=$(dpkg-deb -c "${deb[$package]}")
    printf '%-16s %8s bytes\n' "$package" "$(stat -c %s "${deb[$package]}")"
done
libdir=$root/usr/lib/$multiarch

# Fields: the exact library version for the headers, computed dependencies for the binaries.
field() { dpkg-deb -f "${deb[$1]}" "$2"; }
[[ $(field libkivcore-dev Depends) == *"libkivcore0 (= ${version}-1)"* ]] && pass ||
    fail "libkivcore-dev does not depend on libkivcore0 (= ${version}-1): $(field libkivcore-dev Depends)"
[[ $(field libkivcore0 Depends) == *libqt5core5a* ]] && pass || fail "libkivcore0's dependencies were not computed"
[[ $(field kivtool Depends) == *"libkivcore0 (>= ${version})"* ]] && pass ||
    fail "kivtool does not depend on libkivcore0: $(field kivtool Depends)"

# Contents: each file in the package it belongs to.
contains() { grep -q -- "$2" <<<"${contents[$1]}" && pass || fail "$1 lacks $2"; }
contains libkivcore0 "usr/lib/$multiarch/libkivcore.so.0 -> libkivcore.so.${version}"
contains libkivcore0 "usr/lib/$multiarch/libkivcore.so.${version}$"
contains libkivcore-dev "usr/lib/$multiarch/libkivcore.so -> libkivcore.so.0"
contains libkivcore-dev "usr/lib/$multiarch/pkgconfig/kivcore.pc$"
contains libkivcore-dev "usr/lib/$multiarch/cmake/KivCore/KivCoreConfigVersion.cmake$"
contains libkivcore-dev "usr/include/kivcore/kivcore.h$"
contains kivtool "usr/share/man/man1/kivtool.1.gz$"
for package in libkivcore0 libkivcore-dev kivtool; do
    contains "$package" "usr/share/doc/$package/copyright$"
    contains "$package" "usr/share/doc/$package/changelog.Debian.gz$"
done
if grep -q -- '_p\.h$' <<<"${contents[libkivcore-dev]}"; then fail "libkivcore-dev ships private headers"; else pass; fi
for binary in "$root/usr/bin/kivtool" "$libdir/libkivcore.so.${version}"; do
    if grep -Eq 'RPATH|RUNPATH' <<<"$(readelf -d "$binary")"; then fail "${binary#"$root"} has a run path"; else pass; fi
done

# The program runs with the unpacked library.
expected="kivtool ${version} (kivcore ${version})"
actual=$(LD_LIBRARY_PATH=$libdir "$root/usr/bin/kivtool" --version) || true
[ "$actual" = "$expected" ] && pass || fail "kivtool --version printed '$actual', not '$expected'"
echo "$actual"

# The consumer builds against the unpacked headers and library, with pkg-config and with CMake: both files
# find the prefix from where they lie.
PKG_CONFIG_PATH=$libdir/pkgconfig LD_LIBRARY_PATH=$libdir \
    "$consumer/pkgconfig-consumer.sh" "$consumer/main.cpp" "$root/consumer-pkgconfig" && pass || fail "pkg-config consumer"
if cmake -S "$consumer" -B "$root/consumer-cmake" -DCMAKE_PREFIX_PATH="$root/usr" >"$root/cmake.log" 2>&1 &&
    cmake --build "$root/consumer-cmake" >>"$root/cmake.log" 2>&1; then
    LD_LIBRARY_PATH=$libdir "$root/consumer-cmake/kivconsumer" && pass || fail "CMake consumer run"
else
    cat "$root/cmake.log" >&2
    fail "CMake consumer build"
fi

# lintian: no errors; warnings are printed for the record.
if lintian --fail-on error "${deb[@]}" >"$root/lintian.log" 2>&1; then
    pass
    echo "lintian: no errors ($(grep -c '^W:' "$root/lintian.log" || true) warnings)"
else
    fail "lintian reports errors"
fi
cat "$root/lintian.log"

echo "package-test: $passed passed, $failed failed"
[ "$failed" -eq 0 ]
