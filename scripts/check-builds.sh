#!/usr/bin/env bash
# Builds the libraries in the ways that the other checks don't: static and without HTTP, and with clang++ and its own standard library.
# The project under tests/outside is then built against each of them as it is installed, with find_package and with pkg-config.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need build check libc++
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# installed <name> <compiler> <option>...: builds and installs into $work/<name>, and sets what pkg-config needs
installed() {
    local name=$1 compiler=$2 launcher=()
    shift 2
    ! command -v ccache >/dev/null 2>&1 || launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    say "building ($name)"
    cmake -S . -B "build/$name" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DNYXML_BUILD_TESTS=OFF -DNYXML_BUILD_EXAMPLES=OFF \
        -DNYXML_WARNINGS_AS_ERRORS=ON ${launcher[@]+"${launcher[@]}"} "$@" >"$work/log" || fail "$(cat "$work/log")"
    cmake --build "build/$name" --target nyXml nyXmlKit
    cmake --install "build/$name" --prefix "$work/$name" >"$work/log" || fail "$(cat "$work/log")"
    export PKG_CONFIG_PATH="$work/$name/lib/pkgconfig"
    [ -f "$PKG_CONFIG_PATH/nyXml.pc" ] || PKG_CONFIG_PATH=$(dirname "$(find "$work/$name" -name nyXml.pc)")
}

# outside <name> <compiler> <flags> <option>...: builds the outside project and runs what needs no plug-in
outside() {
    local name=$1 compiler=$2 flags=$3
    shift 3
    cmake -S tests/outside -B "$work/$name.build" -G Ninja -DCMAKE_CXX_COMPILER="$compiler" -DCMAKE_CXX_FLAGS="$flags" \
        -DCMAKE_PREFIX_PATH="$work/$name" "$@" >"$work/log" 2>&1 || return
    cmake --build "$work/$name.build" && "$work/$name.build/outside" && "$work/$name.build/outsideKit"
}

installed static g++ -DBUILD_SHARED_LIBS=OFF -DNYXML_HTTP=OFF
outside static g++ "" -DWITH_PLUGIN=OFF || fail "$(cat "$work/log")"
! outside static g++ "" -DWITH_PLUGIN=ON || fail "a static library has no plug-ins, but nobody says so"
grep -q "a static nyXml has no plug-ins" "$work/log" || fail "$(cat "$work/log")"
# shellcheck disable=SC2046 # several flags
g++ -std=c++17 tests/outside/main.cpp -o "$work/program" $(pkg-config --cflags --libs nyXmlKit)
"$work/program"

installed libc++ clang++ -DCMAKE_CXX_FLAGS=-stdlib=libc++
outside libc++ clang++ -stdlib=libc++ || fail "$(cat "$work/log")"
"$work/libc++.build/outside" "$work/libc++.build"
