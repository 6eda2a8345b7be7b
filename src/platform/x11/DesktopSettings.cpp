// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/x11/DesktopSettings.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

QList<SettingsPage> pagesOf(const QString &desktop)
{
    if (desktop == "gnome"_L1 || desktop == "unity"_L1 || desktop == "budgie"_L1) {
        return {{u"gnome-control-center"_s, {u"universal-access"_s}}};
    }
    if (desktop == "kde"_L1) {
        return {{u"systemsettings"_s, {u"kcm_access"_s}},
                {u"systemsettings5"_s, {u"kcm_access"_s}}};
    }
    if (desktop == "xfce"_L1) {
        return {{u"xfce4-accessibility-settings"_s, {}}};
    }
    if (desktop == "mate"_L1) {
        return {{u"mate-at-properties"_s, {}}};
    }
    if (desktop == "x-cinnamon"_L1 || desktop == "cinnamon"_L1) {
        return {{u"cinnamon-settings"_s, {u"universal-access"_s}}};
    }
    return {};
}

} // namespace

QList<SettingsPage> accessibilitySettings(const QString &currentDesktop)
{
    QList<SettingsPage> pages;
    for (const QString &desktop : currentDesktop.toLower().split(u':')) {
        pages += pagesOf(desktop);
    }
    return pages;
}

} // namespace vellumo
