#!/usr/bin/env bash
# Installs what is missing, builds, and runs the tests. Arguments go to ctest: scripts/test.sh -R Writer
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need build
build release
say "testing"
ctest --test-dir build/release --output-on-failure --no-tests=error -j "$(nproc)" "$@"
