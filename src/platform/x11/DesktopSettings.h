// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace vellumo {

/// The program that shows a page of a desktop's settings. It may not be installed.
struct SettingsPage {
    QString program;
    QStringList arguments;
    friend bool operator==(const SettingsPage &, const SettingsPage &) = default;
};

/// The pages on accessibility of the desktops in a list like that of XDG_CURRENT_DESKTOP, the best
/// first.
[[nodiscard]] QList<SettingsPage> accessibilitySettings(const QString &currentDesktop);

} // namespace vellumo
