// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace vellumo {

class DefaultsStore;

/// The user's settings. A value: copies read the same store, afresh on every call.
class UserPreferences {
public:
    /// The store must outlive every copy.
    explicit UserPreferences(const DefaultsStore &defaults);

    /// The language of explanations by name, such as "English" or "Chinese"; never blank.
    [[nodiscard]] QString preferredOutputLanguage() const;

    /// "Chinese" or "English", by the first of the user's preferred languages.
    [[nodiscard]] static QString systemDefaultLanguage();
    [[nodiscard]] static QString defaultLanguage(const QStringList &preferredLanguages);

    /// Whether applications are made to copy at all, and which of them are not, by id or name.
    [[nodiscard]] bool readsByCopying() const;
    [[nodiscard]] QStringList noCopyingIn() const;

    /// Whether texts for the user are English rather than Chinese.
    [[nodiscard]] bool prefersEnglishTexts() const;
    /// The rule: the lower-cased name of the output language begins with "en".
    [[nodiscard]] static bool isEnglish(const QString &outputLanguage);

private:
    const DefaultsStore *defaults_;
};

} // namespace vellumo
