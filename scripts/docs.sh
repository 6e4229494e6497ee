#!/usr/bin/env bash
# Installs what is missing and builds the documentation as a site: the pages under docs/, the API reference in groups, and a search.
# Open build/docs/html/index.html. Its dead links are found by scripts/check-docs.sh.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need build docs
build docs docs
say "the site: build/docs/html/index.html"
