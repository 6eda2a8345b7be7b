// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "computer/TapReach.h"

#include "computer/DesktopReporting.h"
#include "ui/BilingualText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

using State = DesktopChange::State;

bool is(const DesktopChange *change, State state)
{
    return change != nullptr && change->state() == state;
}

} // namespace

TapReach::TapReach(DesktopReporting &desktop, const BilingualText &texts)
    : desktop_(desktop)
    , texts_(texts)
{
    connect(&desktop, &DesktopReporting::changed, this, [this] {
        follow();
        Q_EMIT changed();
    });
    connect(&texts, &BilingualText::languageChanged, this, &TapReach::changed);
    follow();
}

/// The changes are there once the session bus is open.
void TapReach::follow()
{
    const QList<DesktopChange *> changes{desktop_.tapSetting(), desktop_.shortcut()};
    for (DesktopChange *change : changes) {
        if (change != nullptr && !followed_.contains(change)) {
            followed_.append(change);
            connect(change, &DesktopChange::changed, this, &TapReach::changed);
            connect(change, &DesktopChange::finished, this, [this](bool hasSucceeded) {
                isBusy_ = false;
                hasFailed_ = !hasSucceeded;
                Q_EMIT changed();
            });
        }
    }
}

DesktopChange *TapReach::made() const
{
    DesktopChange *const taps = desktop_.tapSetting();
    DesktopChange *const shortcut = desktop_.shortcut();
    return is(taps, State::Made) ? taps : is(shortcut, State::Made) ? shortcut : nullptr;
}

DesktopChange *TapReach::offered() const
{
    DesktopChange *const taps = desktop_.tapSetting();
    DesktopChange *const shortcut = desktop_.shortcut();
    return desktop_.hearsEveryTap()     ? nullptr
        : is(taps, State::Possible)     ? taps
        : is(shortcut, State::Possible) ? shortcut
                                        : nullptr;
}

bool TapReach::isEverywhere() const
{
    return desktop_.hearsEveryTap() || made() != nullptr;
}

QString TapReach::title() const
{
    return is(desktop_.shortcut(), State::Made) && made() == desktop_.shortcut()
        ? texts_.pick(u"Double tap, or %1"_s, u"双击,或 %1"_s).arg(desktop_.shortcut()->keys())
        : texts_.pick(u"Double tap"_s, u"双击"_s);
}

QString TapReach::text() const
{
    if (hasFailed_) {
        return texts_.pick(u"The desktop's settings could not be changed. They are as before."_s,
                           u"无法更改桌面设置,设置保持不变。"_s);
    }
    const DesktopChange *const made = this->made();
    if (made != nullptr && made == desktop_.tapSetting()) {
        return texts_.pick(
            u"In every window of this Wayland session. For this, KWin reports Alt pressed alone to "
            "vellumo; the entry is in its settings until you turn this off."_s,
            u"在这个 Wayland 会话的所有窗口中有效。为此,KWin 会把单独按下 Alt 告知 vellumo;在这里"
            "停用之前,该条目会保留在 KWin 的设置中。"_s);
    }
    if (made != nullptr) {
        return texts_.pick(
            u"Double taps are heard in X11 windows, GTK 3 windows and Firefox; the shortcut works "
            u"in "
            "every window. vellumo added it to the desktop's keyboard settings, where you can "
            "change its keys."_s,
            u"双击在 X11 窗口、GTK 3 窗口和 Firefox 中有效;快捷键在所有窗口中有效。它由 vellumo "
            "添加到桌面的键盘设置中,可以在那里更改按键。"_s);
    }
    if (desktop_.hearsEveryTap()) {
        return desktop_.isWayland()
            ? texts_.pick(u"Everywhere in this Wayland session."_s,
                          u"在这个 Wayland 会话里处处可用。"_s)
            : texts_.pick(u"Everywhere in this X11 session."_s, u"在这个 X11 会话里处处可用。"_s);
    }
    const QString some = texts_.pick(
        u"In this Wayland session, double taps are heard in X11 windows, GTK 3 windows and "
        "Firefox."_s,
        u"在这个 Wayland 会话里,双击在 X11 窗口、GTK 3 窗口和 Firefox 中有效。"_s);
    const DesktopChange *const offered = this->offered();
    if (offered == nullptr) {
        return some
            + texts_.pick(u" For the others, bind a keyboard shortcut of the desktop to “vellumo "
                          "-\u2060-\u2060explain”: it does the same as a double tap."_s,
                          u"其他窗口请在桌面设置里给“vellumo -\u2060-\u2060explain”绑定一个快捷键,"
                          "效果与双击相同。"_s);
    }
    return some
        + (offered == desktop_.tapSetting()
               ? texts_.pick(u" KWin can report Alt pressed alone to vellumo in every window: one "
                             "entry in its settings, which you can remove here."_s,
                             u"KWin 可以在所有窗口中把单独按下 Alt 告知 vellumo:只需在其设置中添加"
                             "一个条目,可随时在这里移除。"_s)
               : texts_.pick(u" A keyboard shortcut reaches vellumo in every window: one entry in "
                             "the desktop's keyboard settings, which you can remove here."_s,
                             u"快捷键可以在所有窗口中使用 vellumo:只需在桌面的键盘设置中添加一个"
                             "条目,可随时在这里移除。"_s));
}

QString TapReach::actionText() const
{
    if (const DesktopChange *const made = this->made()) {
        return made == desktop_.tapSetting() ? texts_.pick(u"Turn off"_s, u"停用"_s)
                                             : texts_.pick(u"Remove shortcut"_s, u"移除快捷键"_s);
    }
    const DesktopChange *const offered = this->offered();
    return offered == nullptr              ? QString()
        : offered == desktop_.tapSetting() ? texts_.pick(u"Turn on"_s, u"启用"_s)
                                           : texts_.pick(u"Add shortcut"_s, u"添加快捷键"_s);
}

void TapReach::act()
{
    DesktopChange *const undone = made();
    DesktopChange *const offered = this->offered();
    if (isBusy_ || (undone == nullptr && offered == nullptr)) {
        return;
    }
    isBusy_ = true;
    hasFailed_ = false;
    Q_EMIT changed();
    if (undone != nullptr) {
        undone->undo();
    } else {
        offered->make();
    }
}

void TapReach::refresh()
{
    hasFailed_ = false;
    for (DesktopChange *change : std::as_const(followed_)) {
        change->refresh();
    }
}

} // namespace vellumo
