#!/usr/bin/env bash
# Builds a small program in the ways in which applications are linked, with each compiler that is there, against the library that
# scripts/test.sh has built. In each of them the library has to tell classes that override its operations from those that don't.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

library=$PWD/build/release
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for compiler in g++ clang++; do
    command -v "$compiler" >/dev/null 2>&1 || continue
    compile=("$compiler" -std=c++17 -O1 -Wall -Wextra -I. -L"$library" -Wl,-rpath,"$library")
    for with in "" -DWITH_OVERRIDE; do
        "${compile[@]}" $with -fPIC -shared tests/linking/library.cpp -lnyXml -o "$work/library$with.so"
    done
    for way in "-fPIE -pie" "-fno-pie -no-pie" "-fPIE -pie -flto" "-fno-pie -no-pie -flto"; do
        # shellcheck disable=SC2086 # several flags
        "${compile[@]}" $way tests/linking/program.cpp -lnyXml -ldl -o "$work/program"
        "$work/program" "$work/library.so" "$work/library-DWITH_OVERRIDE.so" || fail "$compiler $way: classes are not told apart"
        echo "$compiler $way: classes are told apart"
    done
done
