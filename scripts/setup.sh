# Sourced by the other scripts: goes to the root of the tree, installs what is missing, configures and builds.
#
#   need <what>...             makes sure that these are there: build, bench, check, docs, libc++, package, sanitize
#   build <preset> [target...] configures and builds into build/<preset>; NYXML_CMAKE_ARGS goes to the configuration

set -euo pipefail
export LC_ALL=C # sort, awk and the tools' messages are the same for everybody
cd "$(dirname "${BASH_SOURCE[0]}")/.."

say() { printf '\n== %s\n' "$*"; }
fail() {
    printf '%s\n' "$*" >&2
    exit 1
}

# Lines of "<package> <what shows that it is there>": a command, a header as it is included, or a path.
# xmllint comes along with GoogleTest: the tests and the example validate with it, and do without it where it is not installed anyway.
packages_for() {
    case $1 in
    build) printf '%s\n' 'g++ g++' 'cmake cmake' 'ninja-build ninja' 'libboost-dev boost/signals2.hpp' \
        'libcurl4-openssl-dev curl/curl.h' 'libexpat1-dev expat.h' 'libgtest-dev gtest/gtest.h' 'libxml2-utils gtest/gtest.h' \
        'libxml2-dev libxml2/libxml/xmlreader.h' 'libxerces-c-dev xercesc/sax2/SAX2XMLReader.hpp' ;;
    bench) printf '%s\n' 'pkg-config pkg-config' 'libbenchmark-dev benchmark/benchmark.h' 'libpugixml-dev pugixml.hpp' \
        'librapidxml-dev rapidxml/rapidxml.hpp' 'libxml2-dev libxml2/libxml/xmlreader.h' \
        'valgrind valgrind' 'gnuplot-nox gnuplot' ;;
    check) printf '%s\n' 'git git' 'clang-format clang-format' 'pkg-config pkg-config' ;;
    docs) printf '%s\n' 'doxygen doxygen' ;;
    sanitize) printf '%s\n' 'clang clang++' 'libclang-rt-dev /usr/lib/llvm-*/lib/clang/*/lib/linux/libclang_rt.asan-*.a' ;;
    package) printf '%s\n' 'dpkg-dev dpkg-shlibdeps' ;;
    libc++) printf '%s\n' 'clang clang++' 'libc++-dev /usr/lib/llvm-*/include/c++/v1/vector' 'libc++abi-dev /usr/lib/llvm-*/lib/libc++abi.so' \
        'libfast-float-dev fast_float/fast_float.h' ;;
    *) fail "scripts/setup.sh: nothing is known about '$1'" ;;
    esac
}

is_there() {
    case $1 in
    /*) compgen -G "$1" >/dev/null ;;
    *.h | *.hpp) compgen -G "/usr/include/$1" >/dev/null || compgen -G "/usr/include/*-linux-gnu*/$1" >/dev/null ||
        compgen -G "/usr/local/include/$1" >/dev/null ;;
    *) command -v "$1" >/dev/null 2>&1 ;;
    esac
}

install_packages() {
    local as_root=() apt
    command -v apt-get >/dev/null 2>&1 || fail "Missing, and there is no apt-get to install them: $*"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null 2>&1 || fail "Missing; please run as root: apt-get install $*"
        as_root=(sudo)
    fi
    say "installing $*"
    apt=(${as_root[@]+"${as_root[@]}"} env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300)
    # The lists of a fresh machine are empty. If they cannot be fetched, the installation tells whether that matters.
    "${apt[@]}" update </dev/null || true
    "${apt[@]}" install -y --no-install-recommends "$@" </dev/null || fail "apt-get could not install: $*"
}

need() {
    local what package sign missing=()
    for what in "$@"; do
        while read -r package sign; do
            is_there "$sign" || missing+=("$package")
        done < <(packages_for "$what")
    done
    [ ${#missing[@]} -eq 0 ] || install_packages "${missing[@]}"
}

build() {
    local preset=$1 log arguments
    shift
    read -r -a arguments <<<"${NYXML_CMAKE_ARGS:-}"
    if command -v ccache >/dev/null 2>&1; then
        arguments+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    say "building ($preset)"
    log=$(cmake --preset "$preset" ${arguments[@]+"${arguments[@]}"} 2>&1) || fail "$log"
    cmake --build "build/$preset" ${1+--target "$@"}
}
