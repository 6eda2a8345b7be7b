// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ui/BilingualText.h"

#include "platform/DefaultsStore.h"

using namespace Qt::StringLiterals;

namespace vellumo {

bool isEnglishInterface(const QString &outputLanguage)
{
    return outputLanguage.toLower().startsWith(u"en"_s);
}

BilingualText::BilingualText(std::function<QString()> outputLanguage, QObject *parent)
    : QObject(parent)
    , outputLanguage_(std::move(outputLanguage))
    , english_(isEnglishInterface(outputLanguage_()))
{
}

void BilingualText::follow(DefaultsStore &store)
{
    connect(&store, &DefaultsStore::changed, this, [this](const QString &key) {
        if (key == "preferredOutputLanguage"_L1) {
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
    const bool english = isEnglishInterface(outputLanguage_());
    if (english != english_) {
        english_ = english;
        Q_EMIT languageChanged();
    }
}

} // namespace vellumo
