// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/TerminalClasses.h"

#include <QByteArray>
#include <algorithm>
#include <array>
#include <string_view>

namespace vellumo {

namespace {

/// Lower case. Names that contain "terminal" or "rxvt" or end in "term" need no entry.
constexpr auto terminals = std::to_array<std::string_view>({
    "alacritty",
    "blackbox",
    "com.mitchellh.ghostty",
    "com.raggesilver.blackbox",
    "contour",
    "dev.warp.warp",
    "foot",
    "footclient",
    "ghostty",
    "guake",
    "hyper",
    "kgx",
    "kitty",
    "konsole",
    "org.gnome.console",
    "org.gnome.ptyxis",
    "org.kde.konsole",
    "org.kde.yakuake",
    "org.wezfurlong.wezterm",
    "ptyxis",
    "rio",
    "sakura",
    "st",
    "st-256color",
    "tabby",
    "terminator",
    "terminology",
    "termite",
    "termius",
    "tilda",
    "tilix",
    "warp",
    "waveterm",
    "wezterm-gui",
    "yakuake",
});

} // namespace

bool isTerminalClass(QByteArrayView windowClass)
{
    const QByteArray name = windowClass.toByteArray().toLower();
    return name.contains("terminal") || name.contains("rxvt") || name.endsWith("term")
        || std::ranges::find(terminals,
                             std::string_view(name.constData(), static_cast<size_t>(name.size())))
        != terminals.end();
}

bool republishesEndedSelection(QByteArrayView windowClass)
{
    return windowClass.compare("emacs", Qt::CaseInsensitive) == 0;
}

bool mishandlesCopyKeys(QByteArrayView windowClass)
{
    return isTerminalClass(windowClass) || republishesEndedSelection(windowClass)
        || windowClass.compare("libreoffice-calc", Qt::CaseInsensitive) == 0;
}

} // namespace vellumo
