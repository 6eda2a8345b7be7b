#!/bin/bash
# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
#
# test_package.sh PACKAGE [--install]: checks the package vellumo-taps: systemd accepts its units, the
# service is shut off from the rest of the system, and nothing turns it on. --install also installs it,
# turns it on and removes it, as root on a machine that may be changed.
set -euo pipefail
package=$1
die() { echo "FAIL: $*" >&2; exit 1; }

unpacked=$(mktemp -d)
trap 'rm -rf "$unpacked"' EXIT
dpkg-deb -x "$package" "$unpacked"
units=$unpacked/usr/lib/systemd/system
(cd "$unpacked" && find . -type f | sort) > "$unpacked.files"
trap 'rm -rf "$unpacked" "$unpacked.files"' EXIT
diff - "$unpacked.files" <<'EOF' || die "the package has other files"
./usr/lib/systemd/system-preset/50-vellumo-taps.preset
./usr/lib/systemd/system/vellumo-taps.service
./usr/lib/systemd/system/vellumo-taps.socket
./usr/libexec/vellumo-taps
./usr/share/doc/vellumo-taps/README.md
./usr/share/doc/vellumo-taps/copyright
EOF
[ "$(find "$unpacked" -type l)" = "" ] || die "a link turns something on"
"$unpacked/usr/libexec/vellumo-taps" 2> /dev/null && die "it runs without its socket"

grep -qx "ExecStart=/usr/libexec/vellumo-taps" "$units/vellumo-taps.service" || die "another program is started"
sed -i "s|^ExecStart=|&$unpacked|" "$units/vellumo-taps.service"
warnings=$(systemd-analyze verify --man=no "$units"/vellumo-taps.* 2>&1) || die "units: $warnings"
[ -z "$warnings" ] || die "units: $warnings"
# the exposure in tenths; 100 is a service that is not restricted at all
systemd-analyze security --offline=true --threshold=10 --no-pager "$units/vellumo-taps.service" \
    > "$unpacked/security" || die "the service may do too much: $(tail -n 1 "$unpacked/security")"

[ "${2:-}" = --install ] || exit 0
left() { find /usr/lib/systemd /usr/libexec /usr/share/doc /etc/systemd /run -name '*vellumo-taps*' 2>/dev/null; }
enabled=/etc/systemd/system/sockets.target.wants/vellumo-taps.socket
[ -z "$(left)" ] || die "it is here already: $(left)"
apt-get install -y -qq --no-install-recommends "./$package" > /dev/null
[ ! -e $enabled ] || die "installing has turned it on"
systemctl enable --quiet vellumo-taps.socket
[ -e $enabled ] || die "it could not be turned on"
apt-get install -y -qq --reinstall --no-install-recommends "./$package" > /dev/null
[ -e $enabled ] || die "an upgrade has turned it off"
apt-get remove -y -qq vellumo-taps > /dev/null
[ ! -L $enabled ] || die "removing left it on"
[ -z "$(left)" ] || die "removing left $(left)"
