// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace vellumo {

class DefaultsStore;

/// Keys of the defaults store that the whole program knows.
namespace DefaultsKey {
inline constexpr QStringView preferredOutputLanguage = u"preferredOutputLanguage";
inline constexpr QStringView hasCompletedOnboarding = u"hasCompletedOnboarding";
/// The user goes without an account, until they sign in or out.
inline constexpr QStringView usesWithoutAccount = u"usesWithoutAccount";
/// The name of the newest unreadable file of notes that the user has been told of.
inline constexpr QStringView acknowledgedNotesFile = u"acknowledgedNotesFile";
/// When that file was last changed which the user was told of before it was set aside.
inline constexpr QStringView acknowledgedNotesTime = u"acknowledgedNotesTime";
/// The uid of the account that the notes on this computer belong to.
inline constexpr QStringView notesOwner = u"notesOwner";
/// The uid of the account that the user last chose not to upload them to.
inline constexpr QStringView notesDeclinedFor = u"notesDeclinedFor";
/// False: no application is made to copy what is selected in it.
inline constexpr QStringView readsByCopying = u"readsByCopying";
/// The .desktop ids or names of the applications that are not made to copy.
inline constexpr QStringView noCopyingIn = u"noCopyingIn";
/// The user has agreed that new versions are looked for, or has declined; absent before.
inline constexpr QStringView looksForUpdates = u"looksForUpdates";
/// When that was done last, in seconds since 2001.
inline constexpr QStringView lookedForUpdates = u"lookedForUpdates";
} // namespace DefaultsKey

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

private:
    const DefaultsStore *defaults_;
};

} // namespace vellumo
