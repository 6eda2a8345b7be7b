# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
# shellcheck shell=bash disable=SC2034
#
# Sourced by the scripts: the Debian packages that each task needs, and their installation.

packages_build=(
    cmake ninja-build g++ lld ccache pkg-config
    qt6-base-dev qt6-base-dev-tools qt6-base-private-dev
    qt6-declarative-dev qt6-declarative-dev-tools qt6-declarative-private-dev
    qt6-svg-dev libgl-dev rapidjson-dev libssl-dev
    libxcb1-dev libxcb-xkb-dev libxcb-xinput-dev libxcb-xtest0-dev libxcb-xfixes0-dev
    libxcb-res0-dev libxcb-shape0-dev libxcb-ewmh-dev libxcb-damage0-dev libxcb-shm0-dev
    libxkbcommon-dev libxkbcommon-x11-dev libwayland-dev libsystemd-dev
)
# Runtime dependencies beyond the libraries of the development packages.
packages_run=(
    qml6-module-qtqml qml6-module-qtqml-workerscript qml6-module-qtquick qml6-module-qtquick-window
    qt6-translations-l10n qt6-wayland at-spi2-core dbus xdg-utils
    fonts-dejavu-core fonts-noto-core fonts-noto-cjk fonts-noto-color-emoji
)
# A headless desktop with a browser.
packages_desktop=(
    xvfb dbus-x11 openbox x11-utils x11-xserver-utils firefox-esr
)
# The stand-in backend uses SQLite.
packages_backend=(libqt6sql6-sqlite desktop-file-utils)
packages_test=(
    "${packages_desktop[@]}" "${packages_backend[@]}" qml6-module-qttest
    xfwm4 mutter gnome-shell sway wtype grim xwayland kwin-x11 kwin-wayland libkf5config-bin picom openssl gnome-keyring libsecret-tools xdotool xclip
    chromium epiphany-browser mousepad gnome-text-editor evince xterm
    desktop-file-utils appstream libglib2.0-bin
)
# Building a package and checking its installation.
packages_package=(dpkg-dev file systemd desktop-file-utils appstream libglib2.0-bin)
# libFuzzer is part of the compiler's runtime libraries.
packages_fuzz=(clang libclang-rt-dev)
packages_check=(clang-format clang-tidy shellcheck python3-graphql-core python3-yaml)

# install_packages NAME...: installs missing packages; returns quickly when there are none.
install_packages() {
    local -A present=()
    local name status missing=() as_root=()
    while read -r status name; do
        [[ $status != ii* ]] || present[${name%%:*}]=1
    done < <(dpkg-query -W -f='${db:Status-Abbrev} ${binary:Package}\n' 2>/dev/null)
    for name in "$@"; do
        [ -n "${present[$name]:-}" ] || missing+=("$name")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    if ! command -v apt-get >/dev/null; then
        echo "Not a Debian system; these packages are needed: ${missing[*]}" >&2
        return 1
    fi
    if [ "$(id -u)" != 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Run this as root, or install first: ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
    fi
    echo "Installing ${missing[*]}"
    "${as_root[@]}" apt-get update -qq &&
        "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
            apt-get install -y -qq --no-install-recommends "${missing[@]}" > /dev/null
}
