#!/usr/bin/env bash
# Installs the library that scripts/test.sh has built into a folder of its own, and builds and runs the project under
# tests/outside against nothing but that: with find_package and a plug-in, and once more with pkg-config.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cmake --install build/release --prefix "$work/installed" >"$work/log"

cmake -S tests/outside -B "$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$work/installed" >"$work/log" || {
    cat "$work/log"
    fail "the package was not found"
}
cmake --build "$work/build"
"$work/build/outside" "$work/build"
"$work/build/outsideKit"
if LD_DEBUG=libs "$work/build/outside" "$work/build" 2>&1 | grep libcurl; then
    fail "libcurl is loaded into a program that opens no address"
fi

# What is no plug-in ends the build with a line that says what it lacks.
sed 's/.*getCreator(int.*//' tests/outside/lamp.cpp >"$work/lamp.cpp"
printf '%s\n' 'cmake_minimum_required(VERSION 3.25)' 'project(dark LANGUAGES CXX)' 'find_package(nyXml 4 CONFIG REQUIRED)' \
    'nyxml_add_plugin(dark lamp.cpp)' >"$work/CMakeLists.txt"
cmake -S "$work" -B "$work/dark" -G Ninja -DCMAKE_PREFIX_PATH="$work/installed" >"$work/log"
! cmake --build "$work/dark" >"$work/log" 2>&1 || fail "a library without getCreator passes as a plug-in"
grep -qF 'dark.nyp is no plug-in without: extern "C" NYXML_EXPORT NyXmlCreator getCreator(int index)' <(tr -s ' \n' ' ' <"$work/log") ||
    fail "$(cat "$work/log")"

# What is wrong to write ends the compilation, and a line says what to do.
refused() { # <what the line says> <declarations>
    local compiler
    printf '%s\n' '#include <nyXml/nyXml.h>' '#include <nyXmlKit/nyXmlKit.h>' \
        'struct Bare : NyXmlCompoundType { void registerComponents() override {} };' \
        'struct Dumb : NyXmlModel<Dumb> { static constexpr auto xmlName = "urn:a#dumb"; };' "$2" >"$work/wrong.cpp"
    for compiler in g++ clang++; do
        command -v $compiler >/dev/null || continue
        ! $compiler -std=c++17 -fsyntax-only -I"$work/installed/include" "$work/wrong.cpp" >"$work/log" 2>&1 || fail "$compiler takes $2"
        grep -qF "$1" <(grep error "$work/log") || fail "$compiler: $2: $(cat "$work/log")"
    done
}
model='struct Arm : NyXmlModel<Arm> { static constexpr auto xmlName = "urn:a#arm";'
refused "wrap a plain one in NyXmlBasicType" 'void f(NyXmlCompoundType& object, int& member) { object.registerComponent("name", &member); }'
refused "and no plain double" "$model double d; void registerComponents() override { element(\"d\", d); } }; Arm arm;"
refused "make it an element" "$model NyXmlVector d; void registerComponents() override { attribute(\"d\", d); } }; Arm arm;"
refused "a required member is always there" \
    "$model NyXmlOptional<double> d; void registerComponents() override { requiredElement(\"d\", d); } }; Arm arm;"
refused "a model class says its name" 'struct Arm : NyXmlModel<Arm> { void registerComponents() override {} }; Arm arm;'
for member in 'NyXmlVectorType<Bare>' 'NyXmlListType<Bare>' 'NyXmlMapType<NyXmlBasicType<int>, Bare>' 'NyXmlPairType<Bare, Bare>' \
    'NyXmlRepeated<Dumb>' 'NyXmlOptional<Bare>' 'NyXmlOwned<Bare>' 'NyXmlShared<Dumb>' 'NyXmlManyOf<NyXmlObject, Dumb>'; do
    refused "class lacks an override" "$member member;"
done

export PKG_CONFIG_PATH
PKG_CONFIG_PATH=$(dirname "$(find "$work/installed" -name nyXml.pc)")
# shellcheck disable=SC2046 # several flags
g++ -std=c++17 tests/outside/main.cpp -o "$work/outside" $(pkg-config --cflags --libs nyXml)
LD_LIBRARY_PATH=$(pkg-config --variable=libdir nyXml) "$work/outside" "$work/build"
