#!/usr/bin/env bash
# Installs what is missing, builds the libraries and their documentation, and makes Debian packages of them in build/packages.
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

need build docs package
read -r -a arguments <<<"${NYXML_CMAKE_ARGS:-}"
launcher=()
! command -v ccache >/dev/null 2>&1 || launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
say "building the packages"
cmake --preset release -B build/package -DCMAKE_INSTALL_PREFIX=/usr -DNYXML_BUILD_TESTS=OFF -DNYXML_BUILD_EXAMPLES=OFF \
    -DNYXML_BUILD_DOCS=ON ${launcher[@]+"${launcher[@]}"} ${arguments[@]+"${arguments[@]}"} >/dev/null
cmake --build build/package
rm -rf build/packages
cmake -E make_directory build/packages
cpack --config build/package/CPackConfig.cmake -B build/packages >build/package/cpack.log 2>&1 || fail "$(cat build/package/cpack.log)"
rm -rf build/packages/_CPack_Packages
ls build/packages
