#!/usr/bin/env bash
# Installs what is missing, builds the library and the example, and runs it. What it writes is put into build/demo.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need build
build release examples/all
say "running the example"
mkdir -p build/demo
build/release/examples/robotCell build/demo

# Two tools that the example can do without.
if command -v xmllint >/dev/null; then
    say "validating the written document against its schema"
    xmllint --noout --schema build/demo/cell.robotCell.xsd build/demo/cell.xml
    if [ -e build/demo/exact ]; then
        say "and against its exact schema"
        xmllint --noout --schema build/demo/exact/cell.robotCell.xsd build/demo/cell.xml
    fi
fi
if command -v dot >/dev/null; then
    dot -Tsvg build/demo/cell.dot -o build/demo/cell.svg
    say "the cell as a picture: build/demo/cell.svg"
fi
