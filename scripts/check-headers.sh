#!/usr/bin/env bash
# Every header of the library compiles alone and without a warning: whoever includes it needs to know of no other.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

export compile_alone="${CXX:-g++} -std=c++17 -fsyntax-only -Wall -Wextra -Wpedantic -Werror -I. -x c++ -"
find nyXml nyXmlKit -name '*.h' -print0 | sort -z | xargs -0 -n 1 -P "$(nproc)" bash -c \
    'echo "#include <$1>" | $compile_alone || { echo "$1 does not compile alone" >&2; exit 1; }' alone
echo "$(find nyXml nyXmlKit -name '*.h' | wc -l) headers compile alone"
