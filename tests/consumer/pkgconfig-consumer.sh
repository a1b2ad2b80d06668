#!/bin/sh
# Builds the consumer with nothing but the flags pkg-config gives for kivcore, as a Makefile project would,
# and runs it. The caller points PKG_CONFIG_PATH (and LD_LIBRARY_PATH) at the installed library.
# Usage: pkgconfig-consumer.sh SOURCE.cpp OUTPUT-FOLDER
set -eu
source=$1
out=$2
mkdir -p "$out"
flags=$(pkg-config --cflags --libs kivcore)
echo "pkg-config --cflags --libs kivcore: $flags"
# -fPIC as for every program that includes Qt 5's headers: Qt refuses code built without it, and neither its
# .pc files nor ours may carry it (a flag for the consumer's own build).
# shellcheck disable=SC2086 # the flags are a list of words
"${CXX:-c++}" -std=c++17 -fPIC -o "$out/kivconsumer-pc" "$source" $flags
"$out/kivconsumer-pc"
