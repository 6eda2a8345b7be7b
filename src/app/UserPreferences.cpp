// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/UserPreferences.h"

#include "platform/DefaultsStore.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace vellumo {

UserPreferences::UserPreferences(const DefaultsStore &defaults) : defaults_(&defaults) { }

QString UserPreferences::preferredOutputLanguage() const
{
    const QVariant stored = defaults_->value(DefaultsKey::preferredOutputLanguage.toString());
    const QString language = stored.toString().trimmed();
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
    const QVariant stored = defaults_->value(DefaultsKey::readsByCopying.toString());
    return !stored.isValid() || stored.toBool();
}

QStringList UserPreferences::noCopyingIn() const
{
    return defaults_->value(DefaultsKey::noCopyingIn.toString()).toStringList();
}

bool UserPreferences::prefersEnglishTexts() const
{
    return preferredOutputLanguage().toLower().startsWith(u"en");
}

} // namespace vellumo
