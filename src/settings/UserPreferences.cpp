// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "settings/UserPreferences.h"

#include "settings/SettingsKeys.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace vellumo {

UserPreferences::UserPreferences(const DefaultsStore &defaults) : defaults_(&defaults) { }

QString UserPreferences::preferredOutputLanguage() const
{
    const QString language = settings::preferredOutputLanguage.value(*defaults_).trimmed();
    return language.isEmpty() ? systemDefaultLanguage() : language;
}

QString UserPreferences::systemDefaultLanguage()
{
    return defaultLanguage(QLocale::system().uiLanguages());
}

QString UserPreferences::defaultLanguage(const QStringList &preferredLanguages)
{
    const QString first = preferredLanguages.value(0, u"en"_s).toLower();
    return first.startsWith(u"zh") ? u"Chinese"_s : u"English"_s;
}

bool UserPreferences::readsByCopying() const
{
    return settings::readsByCopying.value(*defaults_);
}

QStringList UserPreferences::noCopyingIn() const
{
    return settings::noCopyingIn.value(*defaults_);
}

bool UserPreferences::prefersEnglishTexts() const
{
    return isEnglish(preferredOutputLanguage());
}

bool UserPreferences::isEnglish(const QString &outputLanguage)
{
    return outputLanguage.toLower().startsWith(u"en");
}

} // namespace vellumo
