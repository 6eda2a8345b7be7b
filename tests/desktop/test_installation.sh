#!/bin/bash
# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
#
# test_installation.sh BUILD_FOLDER         installs what was built into a temporary prefix and tries it
# test_installation.sh --installed PREFIX   tries what is already installed there
#
# The ecosystem's validators look at the files; then, on a private desktop that knows the prefix, a
# message on the bus starts the program, which takes a second start's request, and ends. Addresses of
# its own scheme are opened as browsers do, on a desktop that activates over the bus and on one that
# runs the command of the entry.
set -euo pipefail
root=$(cd "$(dirname "$0")/../.." && pwd)
id=app.vellumo.Vellumo
die() { echo "FAIL: $*" >&2; exit 1; }

call() {   # call TIMEOUT_MS METHOD ARGUMENT...
    local timeout=$1 method=$2; shift 2
    dbus-send --session --print-reply --reply-timeout="$timeout" --dest=$id /app/vellumo/Vellumo \
        "org.freedesktop.Application.$method" "$@" > /dev/null
}
owner() {
    dbus-send --session --print-reply=literal --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.GetConnectionUnixProcessID string:$id 2>/dev/null | awk '{print $2}'
}
deliver() {   # deliver DESKTOP LOG: opens an address; LOG is where the program will say that it came
    local before; before=$(taken "$2")
    XDG_CURRENT_DESKTOP=$1 xdg-open 'vellumo://auth?refreshToken=geheim&uid=u' >> "$2" 2>&1 &
    wait_for has_taken_more "$2" "$before" || die "an address did not arrive through ${1:-its entry}"
    wait_for has_owner || die "it is not on the bus"
    # on no command line of ours, not even of a process that was started with it
    ! tr '\0' ' ' < "/proc/$(owner)/cmdline" | grep -q geheim || die "a secret is on a command line"
    ! grep -q geheim "$2" || die "a secret is in the log"
}
taken() { grep -c 'no sign-in waits for' "$1" || true; }
has_taken_more() { [ "$(taken "$1")" -gt "$2" ]; }
has_owner() { [ -n "$(owner)" ]; }
has_ended() { ! kill -0 "$1" 2>/dev/null; }
wait_for() {
    local deadline=$((SECONDS + 20))
    until "$@"; do [ $SECONDS -lt $deadline ] || return 1; sleep 0.1; done
}

if [ "${1:-}" = --inside ]; then   # on the private desktop
    prefix=$2
    [ -z "$(owner)" ] || die "something has the name already"
    call 30000 Activate dict:string:string: 2>/dev/null && die "data of another type was taken"
    gdbus call --session --timeout 30 -d $id -o /app/vellumo/Vellumo \
        -m org.freedesktop.Application.Activate '{}' > /dev/null || die "the bus did not start it"
    pid=$(owner)
    [ "$(readlink "/proc/$pid/exe")" = "$prefix/bin/vellumo" ] || die "another program was started"
    "$prefix/bin/vellumo" vellumo://auth/callback || die "an address was not taken"
    [ "$(owner)" = "$pid" ] || die "a second start did not hand over"
    bus_log=$TEST_DESKTOP_DIR/log/dbus
    deliver GNOME "$bus_log"
    deliver "" "$bus_log"
    [ "$(owner)" = "$pid" ] || die "an address has started another one"
    "$prefix/bin/vellumo" --quit || die "it could not be ended"
    wait_for has_ended "$pid" || die "it did not end"
    for desktop in GNOME ""; do   # while it does not run
        log=$bus_log
        [ -n "$desktop" ] || { log=$TEST_DESKTOP_DIR/log/entry; : > "$log"; }
        deliver "$desktop" "$log"
        pid=$(owner)
        "$prefix/bin/vellumo" --quit || die "it could not be ended"
        wait_for has_ended "$pid" || die "it did not end"
    done
    # before it is removed
    login=$XDG_CONFIG_HOME/autostart/$id.desktop
    mkdir -p "${login%/*}"
    printf '%s\n' '[Desktop Entry]' Type=Application "Exec=$prefix/bin/vellumo --background" > "$login"
    "$prefix/bin/vellumo" --background 2>> "$log" &
    wait_for has_owner || die "it is not on the bus"
    "$prefix/bin/vellumo" --undo-desktop-changes || die "its changes to the desktop were not undone"
    ! has_owner || die "it still runs"
    grep -qx Hidden=true "$login" || die "it would still start at login"
    exit 0
fi

if [ "$1" = --installed ]; then
    prefix=$2
else
    folder=$(mktemp -d "${TMPDIR:-/tmp}/vellumo-installation.XXXXXX")
    trap 'rm -rf "$folder"' EXIT
    prefix=$folder/prefix
    cmake --install "$1" --prefix "$prefix" > /dev/null
    update-desktop-database "$prefix/share/applications"
fi

share=$prefix/share
for file in bin/vellumo share/vellumo/Info.json share/man/man1/vellumo.1 share/doc/vellumo/copyright \
    share/icons/hicolor/{scalable/apps/$id.svg,symbolic/apps/$id-symbolic.svg}; do
    ls "$prefix/$file"* > /dev/null || die "$file is missing"
done
[ -e "$(find "$prefix" -path "*/vellumo/ed25519.so")" ] || die "the module for signatures is missing"
[ -e "$(find "$prefix" -path "*/vellumo/secretcipher.so")" ] || die "the module for the keyring is missing"
[ -e "$(find "$prefix" -path "*/vellumo/waylandclient.so")" ] || die "the module for Wayland is missing"
for size in 16 22 24 32 48 64 128 256 512; do   # the size stands in the file's header
    [ "$(od -An -tu4 --endian=big -j16 -N8 "$share/icons/hicolor/${size}x$size/apps/$id.png" | xargs)" = "$size $size" ] ||
        die "the icon of $size pixels has another size"
done
desktop-file-validate "$share/applications/$id.desktop"
grep -qx "Exec=$prefix/bin/vellumo %u" "$share/applications/$id.desktop" ||
    die "the desktop entry names another program"
appstreamcli validate --no-net "$share/metainfo/$id.metainfo.xml" || die "the metainfo is not valid"
grep -qx "Exec=$prefix/bin/vellumo --background" "$share/dbus-1/services/$id.service" ||
    die "the service names another program"
"$root/tools/driver/desktop.sh" run --prefix "$prefix" --setting hasCompletedOnboarding=true --consent -- \
    "$0" --inside "$prefix"
echo "PASS: $prefix"
