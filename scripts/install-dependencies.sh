#!/bin/bash
# Installs what building, running and testing need on Debian 12 and its kin, as root or with sudo.
# Where everything is there it asks nobody and changes nothing.
set -euo pipefail

packages=(
    cmake ninja-build g++ pkg-config
    qt6-base-dev
    libqt6svg6                              # icons, loaded while running: without it there is text alone
    libgl-dev libglu1-mesa-dev libglx-dev libopengl-dev libx11-dev
    libassimp-dev                           # models of many formats; built and run without it, too
    libgl2ps-dev                            # pictures of lines and areas; without it there are none
    libgl1-mesa-dri libglx-mesa0            # the driver, with its software rasteriser
    libgtest-dev libgmock-dev libbenchmark-dev
    xvfb xauth xdotool fonts-dejavu-core    # windows and text in tests
    locales                                 # one test run has decimal commas
)

is_installed() {
    [ "$(dpkg-query --show --showformat='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]
}

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    echo "This is no Debian: please install the like of ${packages[*]}" >&2
    exit 0
fi

missing=()
for package in "${packages[@]}"; do
    is_installed "$package" || missing+=("$package")
done
[ ${#missing[@]} -eq 0 ] && exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
        echo "To be installed as root: apt-get install ${missing[*]}" >&2
        exit 1
    fi
    as_root=(sudo)
fi

echo "Installing ${missing[*]}"
apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=300 "$@"
}
apt update
apt install --yes --no-install-recommends "${missing[@]}"
