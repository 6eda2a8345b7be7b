#!/bin/bash
# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
#
# A private headless desktop: X server, session bus, accessibility bus, window manager and, if
# asked, a compositor and an unlocked secret service.
#
#   desktop.sh run   [options] -- COMMAND [ARG...]   start, run COMMAND in it, stop; exit status is COMMAND's
#   desktop.sh start [options]                       start and leave running; prints KEY=VALUE lines:
#                                                    set -a; . <(desktop.sh start --dir DIR); set +a
#   desktop.sh stop DIR                              stop the desktop that 'start' made in DIR
#
# options:
#   --size WxH         screen size (default 1280x800), always 24 bit
#   --wm NAME          openbox (default), xfwm4, mutter, kwin_x11 or none; gnome-shell, kwin_wayland or sway: a
#                      Wayland session, whose X display is XWayland
#   --compositor NAME  picom or xcompmgr (default: none, except that mutter and kwin_x11 bring their own)
#   --keyring          a secret service with an unlocked default collection
#   --no-a11y          org.a11y.Status.IsEnabled stays false (default: true before any application starts)
#   --no-a11y-bus      the session bus knows no org.a11y.Bus at all
#   --no-bus           no session bus either
#   --consent          the user has already allowed vellumo to read other applications
#   --prefix DIR       what is installed there belongs to the desktop: programs, services, entries, icons
#   --setting KEY=VALUE  a line for vellumo's settings file
#   --dir DIR          where home, runtime directory and logs go (default: a fresh temporary one)
#   --keep             'run' leaves the directory behind for inspection
#
# The X server picks a free display itself. Home, XDG folders and logs live under the directory;
# nothing of the caller's session is read. Every process of the desktop carries TEST_DESKTOP_ID in
# its environment, and stopping ends exactly those processes, by their id.
# shellcheck disable=SC2317  # the conditions are called by name, through wait_for
set -u
me=$(basename "$0")
die() { echo "$me: $*" >&2; exit 97; }

# wait_for SECONDS COMMAND...: polls until the command succeeds; fails at the deadline.
wait_for() {
    local deadline=$(( ${EPOCHREALTIME/[.,]/} + $1 * 1000000 )); shift
    until "$@"; do
        (( ${EPOCHREALTIME/[.,]/} < deadline )) || return 1
        sleep 0.02
    done
}

members() {   # the processes that carry this id, except this shell and what it is waiting in
    local file pid files
    mapfile -t files < <(grep -lzx "TEST_DESKTOP_ID=$1" /proc/[0-9]*/environ 2>/dev/null)
    for file in "${files[@]}"; do
        pid=${file#/proc/}; pid=${pid%/environ}
        case " $$ $BASHPID " in *" $pid "*) ;; *) echo "$pid" ;; esac
    done
}
applications() {   # the members that are not the desktop's own servers
    local core pid
    core=" $(tr '\n' ' ' < "$2/core.pids" 2>/dev/null) "
    for pid in $(members "$1"); do
        case $core in *" $pid "*) ;; *) echo "$pid" ;; esac
    done
}
send() { local pid; for pid in $2; do kill "-$1" "$pid" 2>/dev/null; done; }
no_applications() { [ -z "$(applications "$1" "$2")" ]; }
no_members() { [ -z "$(members "$1")" ]; }

stop_desktop() {
    local dir=$1 id
    [ -r "$dir/id" ] || return 0
    id=$(< "$dir/id")
    # applications first: they end cleanly only while the buses and the display are there
    send CONT "$(applications "$id" "$dir")"
    send TERM "$(applications "$id" "$dir")"
    wait_for 1 no_applications "$id" "$dir" || send KILL "$(applications "$id" "$dir")"
    send TERM "$(tac "$dir/core.pids" 2>/dev/null)"
    wait_for 1 no_members "$id" || send KILL "$(members "$id")"
    rm -f "$dir/id"
}

[ $# -ge 1 ] || die "run, start or stop?"
verb=$1; shift
if [ "$verb" = reap ]; then   # the watchdog of 'run': stops the desktop when its runner was killed
    while kill -0 "$2" 2>/dev/null; do [ -e "$1/id" ] || exit 0; sleep 0.5; done
    stop_desktop "$1"; rm -rf "$1"; exit 0
fi
if [ "$verb" = stop ]; then
    [ $# = 1 ] || die "stop DIR"
    stop_desktop "$1"; rm -rf "$1/run"; exit 0
fi
[ "$verb" = run ] || [ "$verb" = start ] || die "unknown verb $verb"

size=1280x800 wm=openbox compositor='' keyring='' a11y=true bus=session dir='' keep='' prefix='' settings=()
while [ $# -gt 0 ]; do
    case $1 in
        --size) size=$2; shift 2 ;;
        --wm) wm=$2; shift 2 ;;
        --compositor) compositor=$2; shift 2 ;;
        --keyring) keyring=1; shift ;;
        --no-a11y) a11y=false; shift ;;
        --no-a11y-bus) bus=bare; shift ;;
        --no-bus) bus=none; shift ;;
        --prefix) prefix=$2; shift 2 ;;
        --consent) settings+=(accessibilityConsent=true); shift ;;
        --setting) settings+=("$2"); shift 2 ;;
        --dir) dir=$2; shift 2 ;;
        --keep) keep=1; shift ;;
        --) shift; break ;;
        *) die "unknown option $1" ;;
    esac
done
[ "$verb" = start ] || [ $# -gt 0 ] || die "no command"
for needed in Xvfb dbus-daemon dbus-send xprop; do
    command -v "$needed" >/dev/null || die "$needed is not installed"
done

if [ -n "$dir" ]; then mkdir -p "$dir"; else dir=$(mktemp -d "${TMPDIR:-/tmp}/vellumo-desktop.XXXXXX"); fi
dir=$(cd "$dir" && pwd)
[ ! -e "$dir/id" ] || die "$dir is in use"
mkdir -p "$dir"/{home/.config/vellumo,home/.cache,home/.local/share,run,log}
chmod 700 "$dir/run" "$dir/home"
if [ ${#settings[@]} -gt 0 ]; then
    printf '%s\n' '[General]' "${settings[@]}" > "$dir/home/.config/vellumo/vellumo.ini"
fi
TEST_DESKTOP_ID=$(< /proc/sys/kernel/random/uuid)
echo "$TEST_DESKTOP_ID" > "$dir/id"; : > "$dir/core.pids"

# A clean environment: what a session gives its programs, and nothing of the caller's.
for name in $(compgen -e); do
    case $name in
        PATH | QTEST_* | LANG | LANGUAGE | LC_* | TERM | SHELL | USER | LOGNAME | TZ | *SAN_OPTIONS | CTEST_* | VELLUMO_* | *_proxy) ;;
        *) unset "$name" ;;
    esac
done
export TEST_DESKTOP_ID TEST_DESKTOP_DIR=$dir TEST_DESKTOP_WM=$wm
export HOME=$dir/home XDG_RUNTIME_DIR=$dir/run
export XDG_CONFIG_HOME=$HOME/.config XDG_CACHE_HOME=$HOME/.cache XDG_DATA_HOME=$HOME/.local/share
export XDG_SESSION_TYPE=x11 XDG_DATA_DIRS=/usr/local/share:/usr/share XDG_CONFIG_DIRS=/etc/xdg
if [ -n "$prefix" ]; then
    export XDG_DATA_DIRS=$prefix/share:$XDG_DATA_DIRS PATH=$prefix/bin:$PATH
fi
export LANG=${LANG:-C.UTF-8} GSETTINGS_BACKEND=memory LIBGL_ALWAYS_SOFTWARE=1 QT_XCB_GL_INTEGRATION=none
export GTK_USE_PORTAL=0 GIO_USE_VFS=local GDK_BACKEND=x11 QT_QPA_PLATFORM=xcb
export MOZ_DISABLE_CONTENT_SANDBOX=1 MOZ_CRASHREPORTER_DISABLE=1   # Firefox as root

fail() { echo "$me: $*" >&2; tail -n 20 "$dir"/log/* >&2; exit 97; }
trap 'trap - EXIT; stop_desktop "$dir"' EXIT
trap 'exit 130' INT
trap 'exit 143' TERM HUP

# --- X server: -displayfd tells when it is ready and which display it took
displayfd=$dir/run/displayfd; mkfifo "$displayfd"
Xvfb -displayfd 7 -screen 0 "${size}x24" -nolisten tcp -noreset -ac \
     +extension RANDR +extension XTEST +extension COMPOSITE 7> "$displayfd" > "$dir/log/xvfb" 2>&1 &
echo $! >> "$dir/core.pids"
read -r -t 15 number < "$displayfd" || fail "Xvfb did not start"
export DISPLAY=:$number

# --- session bus (activated services inherit this environment); its socket is there before it listens
has_bus() {
    dbus-send --bus="unix:path=$dir/run/bus" --print-reply --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.GetId > /dev/null 2>&1
}
start_bus() {
    local rules=/usr/share/dbus-1/session.conf
    if [ "$bus" = bare ]; then   # a bus that starts no service
        rules=$dir/run/bare.conf
        cat > "$rules" <<XML
<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN" "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:path=$dir/run/bus</listen><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/><allow own="*"/></policy></busconfig>
XML
    fi
    dbus-daemon --config-file="$rules" --nopidfile --syslog-only --nofork \
        --address="unix:path=$dir/run/bus" > "$dir/log/dbus" 2>&1 &
    echo $! >> "$dir/core.pids"
    wait_for 10 has_bus || fail "no session bus"
}
if [ "$bus" = none ]; then
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$dir/run/no-such-bus
else
    start_bus
    export DBUS_SESSION_BUS_ADDRESS=unix:path=$dir/run/bus
fi

# --- accessibility bus: setting the property also activates org.a11y.Bus
if [ "$bus" = session ]; then
    dbus-send --session --print-reply --dest=org.a11y.Bus /org/a11y/bus org.freedesktop.DBus.Properties.Set \
        string:org.a11y.Status string:IsEnabled "variant:boolean:$a11y" > /dev/null 2>> "$dir/log/a11y" ||
        fail "org.a11y.Bus does not answer"
fi

# --- GNOME Shell: ready when it answers on the session bus. The machine's system bus is not used.
shell_answers() {
    gdbus call --session --dest org.gnome.Shell --object-path /org/gnome/Shell \
        --method org.freedesktop.DBus.Properties.Get org.gnome.Shell OverviewActive > /dev/null 2>&1
}
start_gnome_shell() {
    export XDG_SESSION_TYPE=wayland XDG_CURRENT_DESKTOP=GNOME GSETTINGS_BACKEND=keyfile
    export DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS
    unset DISPLAY GDK_BACKEND QT_QPA_PLATFORM
    gsettings set org.gnome.shell welcome-dialog-last-shown-version 99
    gsettings set org.gnome.desktop.interface enable-animations false
    gnome-shell --headless --wayland --wayland-display=wayland-0 --virtual-monitor "$size" \
        > "$dir/log/wm" 2>&1 &
    wait_for 60 shell_answers || fail "gnome-shell did not start"
    DISPLAY=$(sed -n 's/.*Using public X11 display \(:[0-9]*\).*/\1/p' "$dir/log/wm" | head -n 1)
    XAUTHORITY=$(find "$XDG_RUNTIME_DIR" -name '.mutter-Xwaylandauth*' | head -n 1)
    export WAYLAND_DISPLAY=wayland-0 DISPLAY XAUTHORITY
}

# Compositors that refuse to run as root are content with a namespace in which root is another user.
as_user=()
become_user() {   # become_user COMPOSITOR
    [ "$(id -u)" = 0 ] || return 0
    as_user=(unshare --user --map-user=1000 --map-group=1000 --)
    "${as_user[@]}" true 2> /dev/null || { echo "desktop.sh: $1 needs user namespaces" >&2; exit 77; }
}
adopt_environment() {   # adopt_environment FILE NAME...: exports these variables of the compositor's child
    local file=$1 name; shift
    for name in "$@"; do export "$name=$(sed -n "s/^$name=//p" "$file")"; done
}

# --- KWin: ready when it has started the session. Every program may use its restricted protocols. The
# executable carries a file capability, with which it may not start here; a copy has none.
start_kwin_wayland() {
    export XDG_SESSION_TYPE=wayland XDG_CURRENT_DESKTOP=KDE KDE_FULL_SESSION=true
    export DBUS_SYSTEM_BUS_ADDRESS=$DBUS_SESSION_BUS_ADDRESS
    unset DISPLAY GDK_BACKEND QT_QPA_PLATFORM
    cp "$(command -v kwin_wayland)" "$dir/kwin_wayland"
    printf '%s\n' '#!/bin/sh' "env > $dir/run/env && mv $dir/run/env $dir/run/kwin.env" 'exec sleep infinity' \
        > "$dir/session"
    chmod +x "$dir/session"
    KWIN_WAYLAND_NO_PERMISSION_CHECKS=1 KWIN_COMPOSE=Q "$dir/kwin_wayland" --virtual \
        --width "${size%x*}" --height "${size#*x}" --xwayland --no-lockscreen --socket wayland-0 \
        "$dir/session" > "$dir/log/wm" 2>&1 &
    wait_for 30 test -e "$dir/run/kwin.env" || fail "kwin_wayland did not start"
    adopt_environment "$dir/run/kwin.env" WAYLAND_DISPLAY DISPLAY XAUTHORITY
}

# --- sway: ready when it has started the first program. Without a keyboard no window would get the focus;
# wtype holds one.
start_sway() {
    become_user sway
    export XDG_SESSION_TYPE=wayland XDG_CURRENT_DESKTOP=sway
    unset DISPLAY GDK_BACKEND QT_QPA_PLATFORM
    printf '%s\n' "output * resolution $size" 'default_border none' \
        "exec env > $dir/run/env && mv $dir/run/env $dir/run/sway.env" > "$dir/sway.conf"
    WLR_BACKENDS=headless WLR_LIBINPUT_NO_DEVICES=1 WLR_RENDERER=pixman \
        "${as_user[@]}" sway -c "$dir/sway.conf" > "$dir/log/wm" 2>&1 &
    wait_for 20 test -e "$dir/run/sway.env" || fail "sway did not start"
    adopt_environment "$dir/run/sway.env" WAYLAND_DISPLAY SWAYSOCK DISPLAY
    wtype -s 86400000 2>> "$dir/log/wm" &
}

# --- window manager: ready when it has announced itself on the root window
has_wm() { xprop -root _NET_SUPPORTING_WM_CHECK 2>/dev/null | grep -q 'window id'; }
case $wm in
    none) ;;
    openbox) openbox --sm-disable > "$dir/log/wm" 2>&1 & ;;
    xfwm4) xfwm4 --compositor=off --sm-client-disable > "$dir/log/wm" 2>&1 & ;;
    mutter) mutter --x11 --sm-disable > "$dir/log/wm" 2>&1 & ;;
    gnome-shell) start_gnome_shell ;;
    kwin_wayland) start_kwin_wayland ;;
    sway) start_sway ;;
    kwin_x11) kwin_x11 --no-kactivities > "$dir/log/wm" 2>&1 & ;;
    *) fail "unknown window manager $wm" ;;
esac
[ "$wm" = none ] || wait_for 20 has_wm || fail "$wm did not start"

redirected() { xwininfo -root -tree 2>/dev/null | grep -qi "composite\|picom\|compton\|xcompmgr"; }
case $compositor in
    '') ;;
    picom) picom --backend xrender --config /dev/null > "$dir/log/compositor" 2>&1 & ;;
    xcompmgr) xcompmgr > "$dir/log/compositor" 2>&1 & ;;
    *) fail "unknown compositor $compositor" ;;
esac
if [ -n "$compositor" ]; then   # ready when the whole screen is redirected: the overlay window exists
    wait_for 10 redirected || fail "$compositor did not start"
fi

# --- secret service: a collection made here, unlocked, under the default alias
has_secrets() {
    dbus-send --session --print-reply --dest=org.freedesktop.DBus / \
        org.freedesktop.DBus.NameHasOwner string:org.freedesktop.secrets 2>/dev/null | grep -q 'boolean true'
}
if [ -n "$keyring" ]; then
    printf 'private desktop' | gnome-keyring-daemon --unlock --components=secrets \
        --control-directory="$dir/run/keyring" > "$dir/log/keyring" 2>&1 || fail "no secret service"
    wait_for 10 has_secrets || fail "no secret service"
fi

if [ "$verb" = start ]; then
    trap - EXIT INT TERM HUP
    for name in TEST_DESKTOP_ID TEST_DESKTOP_DIR TEST_DESKTOP_WM DISPLAY DBUS_SESSION_BUS_ADDRESS HOME \
        XDG_RUNTIME_DIR XDG_CONFIG_HOME XDG_CACHE_HOME XDG_DATA_HOME XDG_SESSION_TYPE XDG_DATA_DIRS XDG_CONFIG_DIRS \
        GSETTINGS_BACKEND LIBGL_ALWAYS_SOFTWARE QT_XCB_GL_INTEGRATION GTK_USE_PORTAL GIO_USE_VFS GDK_BACKEND \
        QT_QPA_PLATFORM MOZ_DISABLE_CONTENT_SANDBOX MOZ_CRASHREPORTER_DISABLE; do
        printf '%s=%q\n' "$name" "${!name}"
    done
    exit 0
fi

# a runner that is killed (a test's time limit) leaves no desktop behind
(env -u TEST_DESKTOP_ID -u TEST_DESKTOP_DIR setsid "$0" reap "$dir" $$ > /dev/null 2>&1 < /dev/null &)
"$@" <&0 &
child=$!
trap 'kill -TERM $child 2>/dev/null; exit 130' INT
trap 'kill -TERM $child 2>/dev/null; exit 143' TERM HUP
wait $child
status=$?
trap - EXIT
stop_desktop "$dir"
[ -n "$keep" ] || rm -rf "$dir"
exit $status
