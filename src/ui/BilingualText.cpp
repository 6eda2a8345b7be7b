// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/BilingualText.h"

#include "settings/SettingsKeys.h"
#include "settings/UserPreferences.h"

using namespace Qt::StringLiterals;

namespace vellumo {

BilingualText::BilingualText(std::function<QString()> outputLanguage, QObject *parent)
    : QObject(parent)
    , outputLanguage_(std::move(outputLanguage))
    , english_(UserPreferences::isEnglish(outputLanguage_()))
{
}

void BilingualText::follow(DefaultsStore &store)
{
    connect(&store, &DefaultsStore::changed, this, [this](const QString &key) {
        if (key == settings::preferredOutputLanguage.name) {
            refresh();
        }
    });
}

QString BilingualText::pick(const QString &english, const QString &chinese) const
{
    return english_ ? english : chinese;
}

void BilingualText::refresh()
{
    const bool english = UserPreferences::isEnglish(outputLanguage_());
    if (english != english_) {
        english_ = english;
        Q_EMIT languageChanged();
    }
}

} // namespace vellumo
