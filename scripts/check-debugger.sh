#!/usr/bin/env bash
# Looks at values of each kind with gdb, by the printers that are installed with the library. Does nothing where there is no gdb.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

command -v gdb >/dev/null 2>&1 || { echo "no gdb here"; exit 0; }
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# The flag: g++ leaves the description of a class to the library that has its virtual table, and ours is built without.
g++ -std=c++17 -g -O0 -femit-class-debug-always -I. tests/debugger/values.cpp -Lbuild/release -lnyXml -Wl,-rpath,"$PWD/build/release" \
    -o "$work/values"
gdb -nx -q -batch -ex 'source cmake/nyXml-gdb.py' -ex 'break look' -ex run -ex up -ex 'info locals' "$work/values" >"$work/seen" 2>&1
diff <(sed -n '/^token = /,$p' "$work/seen" | sed 's/std::vector of length 2, capacity [0-9]* = //') - <<'EXPECTED' ||
token = urn:demo#arm
plain = arm
real = 2.5
text = "some \"text\""
colour = (anonymous namespace)::green
vector = (1, 2.5, 3)
orientation = (1, 0, 0, 0)
numbers = {7, 8}
EXPECTED
    fail "gdb shows something else ($(cat "$work/seen"))"
echo "gdb shows values as their values"
