#!/usr/bin/env bash
# Layout is the tool's business. With --fix it lays everything out.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

mode=(--dry-run --Werror)
[ "${1:-}" != --fix ] || mode=(-i)
git ls-files -z -- '*.h' '*.cpp' | xargs -0 -n 20 -P "$(nproc)" clang-format "${mode[@]}"
echo "layout checked: $(git ls-files -- '*.h' '*.cpp' | wc -l) files"
