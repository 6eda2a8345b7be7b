// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "settings/Setting.h"
#include <QRect>
#include <QStringList>

/// Every value of the settings file.
namespace vellumo::settings {

/// The language of explanations by name, such as "English" or "Chinese". Blank counts as absent:
/// the desktop's language decides then.
inline const Setting<QString> preferredOutputLanguage{u"preferredOutputLanguage"};
inline const Setting<bool> hasCompletedOnboarding{u"hasCompletedOnboarding"};

/// The user has agreed to the use of the desktop's accessibility.
inline const Setting<bool> accessibilityConsent{u"accessibilityConsent"};
/// Accessibility was turned off in the desktop, and the user declined to turn it on again.
inline const Setting<bool> accessibilityLeftOff{u"accessibilityLeftOff"};

/// The user goes without an account, until they sign in or out.
inline const Setting<bool> usesWithoutAccount{u"usesWithoutAccount"};
/// The user has signed out; the session in the keyring is still to be removed.
inline const Setting<bool> signedOut{u"signedOut"};
/// The uid of the account that the notes on this computer belong to.
inline const Setting<QString> notesOwner{u"notesOwner"};
/// The uid of the account that the user last declined to upload them to.
inline const Setting<QString> notesDeclinedFor{u"notesDeclinedFor"};

/// The name of the newest unreadable notes file that the user has been shown.
inline const Setting<QString> acknowledgedNotesFile{u"acknowledgedNotesFile"};
/// The modification time of the unreadable notes file that the user was shown before it was set
/// aside.
inline const Setting<QString> acknowledgedNotesTime{u"acknowledgedNotesTime"};

/// The user was asked whether to change the desktop's settings, so that double taps or a shortcut
/// work in every window.
inline const Setting<bool> askedForReach{u"askedForReach"};

/// The user was asked whether to start at login.
inline const Setting<bool> askedForLoginStart{u"askedForLoginStart"};

/// Whether applications may be made to copy what is selected in them.
inline const Setting<bool> readsByCopying{u"readsByCopying", true};
/// The .desktop ids or names of the applications that may not.
inline const Setting<QStringList> noCopyingIn{u"noCopyingIn"};

/// "own", "samples", or absent for the configured service.
inline const Setting<QString> explanationService{u"explanationService"};
inline const Setting<QString> ownServiceBase{u"ownServiceBase"};
inline const Setting<QString> ownServiceModel{u"ownServiceModel"};
/// The origins that have a key in the keyring.
inline const Setting<QStringList> serviceKeysFor{u"serviceKeysFor"};
/// The origins whose key is still to be removed from the keyring.
inline const Setting<QStringList> serviceKeysToRemove{u"serviceKeysToRemove"};

/// Whether the user has agreed to a daily check for updates; absent until asked.
inline const Setting<bool> looksForUpdates{u"looksForUpdates"};
/// The time of the last check, in seconds since the reference date.
inline const Setting<double> lookedForUpdates{u"lookedForUpdates"};

/// The main window without its frame, in the desktop's coordinates, when it was last not maximized.
inline const Setting<QRect> mainWindowFrame{u"mainWindowFrame"};
inline const Setting<bool> isMainWindowMaximized{u"isMainWindowMaximized"};

/// Whether the pill is on the screen; its list can be opened without it.
inline const Setting<bool> showsPill{u"showsPill", true};
/// The pill's origin, in the form that pillGeometry::storableOrigin() gives it.
inline const Setting<QVariant> notesPillOrigin{u"notesPillOrigin"};

} // namespace vellumo::settings
