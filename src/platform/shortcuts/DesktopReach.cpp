// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/DesktopReach.h"

#include <QLocale>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// The desktop's settings show these, in the desktop's language.
QString pick(const QString &english, const QString &chinese)
{
    return QLocale::system().language() == QLocale::Chinese ? chinese : english;
}

KGlobalAccelAction::Action loneAlt()
{
    return {.name = u"tap"_s,
            .description =
                pick(u"Press twice to explain the selection"_s, u"按两下解释选中的文字"_s),
            .keys = {static_cast<int>(Qt::ALT)},
            .since = KWinTapSetting::removedIn};
}

KGlobalAccelAction::Action explainKeys()
{
    // Plasma has no use for them as it comes.
    return {.name = u"explain"_s,
            .description = pick(u"Explain the selection"_s, u"解释选中的文字"_s),
            .keys = {(Qt::META | Qt::CTRL | Qt::Key_E).toCombined(),
                     (Qt::META | Qt::ALT | Qt::Key_E).toCombined(),
                     (Qt::META | Qt::CTRL | Qt::Key_Y).toCombined()},
            .since = {}};
}

} // namespace

DesktopReach::DesktopReach(const QDBusConnection &bus, const QString &command)
    : kwin_(bus)
    , kwinEntry_(bus, kwin_)
    , loneAlt_(bus, kwin_, loneAlt())
    , tapSetting_({&loneAlt_, &kwinEntry_})
    , extension_(bus)
    , gnomeShortcut_(bus, command)
    , kdeShortcut_(bus, kwin_, explainKeys())
    , shortcut_({&gnomeShortcut_, &kdeShortcut_})
    , taps_(bus)
{
    connect(&kwinEntry_, &DesktopChange::changed, this,
            [this] { taps_.setOn(kwinEntry_.state() == DesktopChange::State::Made); });
    connect(&loneAlt_, &KGlobalAccelAction::activated, &taps_,
            [this] { Q_EMIT taps_.tapped(std::chrono::steady_clock::now()); });
    connect(&kdeShortcut_, &KGlobalAccelAction::activated, this, &DesktopReach::explainRequested);
}

void DesktopReach::replaceOutdated()
{
    for (const DesktopChange *change :
         {static_cast<DesktopChange *>(&kwinEntry_), static_cast<DesktopChange *>(&loneAlt_)}) {
        connect(change, &DesktopChange::changed, this, &DesktopReach::replaceEntry);
    }
    replaceEntry();
}

void DesktopReach::replaceEntry()
{
    if (!kwinEntry_.isOutdated()) {
        return;
    }
    if (loneAlt_.state() == DesktopChange::State::Possible) {
        loneAlt_.make();
    } else if (loneAlt_.state() == DesktopChange::State::Made) {
        kwinEntry_.undo();
    }
}

QList<DesktopChange *> DesktopReach::changes()
{
    return {&kwinEntry_, &loneAlt_, &extension_, &gnomeShortcut_, &kdeShortcut_};
}

} // namespace vellumo
