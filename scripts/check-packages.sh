#!/usr/bin/env bash
# Uses the packages that scripts/package.sh has made: unpacked into a folder, or, with the root folder of a minimal Debian as argument,
# installed there by apt-get, used, and removed again without a trace: scripts/check-packages.sh /srv/debian-13 (as root).
. "$(dirname "${BASH_SOURCE[0]}")/setup.sh"

packages=(build/packages/*.deb)
[ -f "${packages[0]}" ] || fail "call scripts/package.sh first"
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

if [ $# -eq 0 ]; then
    for package in "${packages[@]}"; do
        dpkg-deb -x "$package" "$work/root"
    done
    cmake -S tests/outside -B "$work/build" -G Ninja -DCMAKE_PREFIX_PATH="$work/root/usr" >"$work/log" || fail "$(cat "$work/log")"
    cmake --build "$work/build" >"$work/log" || fail "$(cat "$work/log")"
    "$work/build/outside" "$work/build"
    "$work/build/outsideKit"
    exit
fi

root=$1
trap 'rm -rf "$work" "$root/tmp/nyXml"' EXIT
mkdir -p "$root/tmp/nyXml"
cp -r "${packages[@]}" tests/outside "$root/tmp/nyXml"
cat >"$root/tmp/nyXml/check.sh" <<'INSIDE'
set -e
export DEBIAN_FRONTEND=noninteractive
apt-get -q update
apt-get -q install -y --no-install-recommends g++ cmake ninja-build pkg-config libboost-dev
# What tools remember of a run is not ours: caches, logs and lists.
files() { find / -xdev \( -path /proc -o -path /tmp -o -path /var/cache -o -path /var/log -o -path /var/lib/apt -o -path /var/lib/dpkg \) -prune -o -print | sort; }
files >/tmp/nyXml/before
apt-get -q install -y --no-install-recommends /tmp/nyXml/*.deb
cd /tmp/nyXml
cmake -S outside -B build -G Ninja
cmake --build build
./build/outside build
./build/outsideKit
g++ -std=c++17 outside/main.cpp -o program $(pkg-config --cflags --libs nyXml)
./program build
apt-get -q purge -y '*nyxml*'
apt-get -q autoremove -y
files >/tmp/nyXml/after
diff /tmp/nyXml/before /tmp/nyXml/after && echo "nothing is left"
INSIDE
chroot "$root" sh /tmp/nyXml/check.sh
