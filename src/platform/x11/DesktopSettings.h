// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace vellumo {

/// The command that opens a page of a desktop's settings. The program may not be installed.
struct SettingsPage {
    QString program;
    QStringList arguments;
    friend bool operator==(const SettingsPage &, const SettingsPage &) = default;
};

/// Returns the accessibility pages of the desktops in a list in the form of XDG_CURRENT_DESKTOP,
/// the preferred one first.
[[nodiscard]] QList<SettingsPage> accessibilitySettings(const QString &currentDesktop);

} // namespace vellumo
