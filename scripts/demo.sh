#!/usr/bin/env bash
# Installs what is missing, builds the library and the example, and runs it.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need build
build release examples/all
say "running the example"
exec build/release/examples/robotCell "$@"
