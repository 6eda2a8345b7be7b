// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "computer/TapReach.h"

#include "computer/DesktopReporting.h"
#include "platform/DefaultsStore.h"
#include "settings/SettingsKeys.h"
#include "ui/BilingualText.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

using State = DesktopChange::State;

bool is(const DesktopChange *change, State state)
{
    return change != nullptr && change->state() == state;
}

} // namespace

TapReach::TapReach(DesktopReporting &desktop, const BilingualText &texts, DefaultsStore &defaults)
    : desktop_(desktop)
    , texts_(texts)
    , defaults_(defaults)
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
    const QList<DesktopChange *> changes{desktop_.tapSetting(), desktop_.extension(),
                                         desktop_.shortcut()};
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

/// Returns the best change in this state, which is the one that makes double taps heard.
DesktopChange *TapReach::firstWith(State state) const
{
    const std::array changes{desktop_.tapSetting(), desktop_.extension(), desktop_.shortcut()};
    const auto *const found = std::ranges::find_if(
        changes, [state](const DesktopChange *change) { return is(change, state); });
    return found != changes.end() ? *found : nullptr;
}

DesktopChange *TapReach::made() const
{
    return firstWith(State::Made);
}

DesktopChange *TapReach::offered() const
{
    return desktop_.hearsEveryTap() ? nullptr : firstWith(State::Possible);
}

bool TapReach::isEverywhere() const
{
    const DesktopChange *const made = this->made();
    return desktop_.hearsEveryTap() || (made != nullptr && made != desktop_.extension());
}

QString TapReach::title() const
{
    return is(desktop_.shortcut(), State::Made) && made() == desktop_.shortcut()
        ? texts_.pick(u"Double-tap, or %1"_s, u"按两下 Option，或 %1"_s)
              .arg(desktop_.shortcut()->keys())
        : texts_.pick(u"Double-tap"_s, u"按两下 Option"_s);
}

QString TapReach::failureText() const
{
    return texts_.pick(u"The desktop's settings could not be changed. They are as before."_s,
                       u"无法更改桌面设置，设置保持不变。"_s);
}

QString TapReach::question() const
{
    if (isAnswered_) {
        return hasFailed_ ? failureText() : QString();
    }
    const DesktopChange *const offered = this->offered();
    const bool isBetterLater = is(desktop_.extension(), State::AfterLogin);
    if (offered == nullptr || isBetterLater || settings::askedForReach.value(defaults_)) {
        return {};
    }
    if (offered == desktop_.extension()) {
        return texts_.pick(
            u"In this Wayland session some windows do not report double-taps. May vellumo turn on "
            "its extension of GNOME Shell, so that they work in every window? “This computer” "
            "turns it off again."_s,
            u"在这个 Wayland 会话里，部分窗口不会报告按两下。允许 vellumo 启用它的 GNOME Shell "
            "扩展，让按两下在所有窗口中有效吗？可以在“这台电脑”页面停用。"_s);
    }
    return offered == desktop_.tapSetting()
        ? texts_.pick(
            u"In this Wayland session some windows do not report double-taps. May vellumo add an "
            "entry to KWin's settings, so that they work in every window? “This computer” "
            "removes it."_s,
            u"在这个 Wayland 会话里，部分窗口不会报告按两下。允许 vellumo 在 KWin "
            "的设置中添加一个条目，让按两下在所有窗口中有效吗？可以在“这台电脑”页面移除。"_s)
        : texts_.pick(
            u"In this Wayland session some windows do not report double-taps. May vellumo add a "
            "keyboard shortcut to the desktop's settings that works in every window? “This "
            "computer” removes it."_s,
            u"在这个 Wayland 会话里，部分窗口不会报告按两下。允许 vellumo "
            "在桌面设置中添加一个在所有窗口中有效的快捷键吗？可以在“这台电脑”页面移除。"_s);
}

void TapReach::answer(bool accepts)
{
    settings::askedForReach.set(defaults_, true);
    isAnswered_ = accepts;
    if (accepts) {
        act();
    } else {
        hasFailed_ = false;
    }
    Q_EMIT changed();
}

QString TapReach::text() const
{
    if (hasFailed_) {
        return failureText();
    }
    const DesktopChange *const made = this->made();
    if (made != nullptr && made == desktop_.tapSetting()) {
        return texts_.pick(
            u"In every window of this Wayland session. For this, KWin reports Alt pressed alone to "
            "vellumo; the entry is in its settings until you turn this off."_s,
            u"在这个 Wayland 会话的所有窗口中有效。为此，KWin 会把单独按下 Alt 告知 vellumo；在这里"
            "停用之前，该条目会保留在 KWin 的设置中。"_s);
    }
    if (made != nullptr && made == desktop_.extension()) {
        return desktop_.hearsEveryTap()
            ? texts_.pick(
                u"In every window of this Wayland session. For this, vellumo's extension "
                "in GNOME Shell reports Alt pressed alone and the window in front."_s,
                u"在这个 Wayland 会话的所有窗口中有效。为此，vellumo 在 GNOME Shell 中的扩展"
                "会告知单独按下 Alt 和当前窗口。"_s)
            : texts_.pick(
                u"vellumo's extension in GNOME Shell is turned on, but does not report at "
                "the moment. If this lasts, log out and in again."_s,
                u"vellumo 在 GNOME Shell 中的扩展已启用，但目前没有报告。如果一直如此，请"
                "注销后重新登录。"_s);
    }
    if (made != nullptr && desktop_.hearsEveryTap()) {
        return texts_.pick(
            u"Everywhere in this Wayland session. The shortcut does the same; vellumo "
            "added it to the desktop's keyboard settings."_s,
            u"在当前 Wayland 会话中均可使用。快捷键的效果相同，它由 vellumo 添加到桌面的"
            "键盘设置中。"_s);
    }
    if (made != nullptr) {
        return texts_.pick(
            u"Double-taps are heard in X11, GTK 3 and Qt windows and in Firefox; the shortcut "
            "works in every window. vellumo added it to the desktop's keyboard settings, where you "
            "can "
            "change its keys."_s,
            u"按两下在 X11、GTK 3、Qt 窗口和 Firefox 中有效；快捷键在所有窗口中有效。它由 vellumo "
            "添加到桌面的键盘设置中，可以在那里更改按键。"_s);
    }
    if (desktop_.hearsEveryTap()) {
        return desktop_.isWayland()
            ? texts_.pick(u"Everywhere in this Wayland session."_s,
                          u"在当前 Wayland 会话中均可使用。"_s)
            : texts_.pick(u"Everywhere in this X11 session."_s, u"在当前 X11 会话中均可使用。"_s);
    }
    QString some = texts_.pick(
        u"In this Wayland session, double-taps are heard in X11, GTK 3 and Qt windows and in "
        "Firefox."_s,
        u"在这个 Wayland 会话里，按两下在 X11、GTK 3、Qt 窗口和 Firefox 中有效。"_s);
    if (is(desktop_.extension(), State::AfterLogin)) {
        some +=
            texts_.pick(u" An extension of GNOME Shell makes them heard in every window: log out "
                        "and in once, and it can be turned on here."_s,
                        u"GNOME Shell 的一个扩展可以让按两下在所有窗口中有效：注销并重新登录一次"
                        "后，即可在这里启用。"_s);
    }
    const DesktopChange *const offered = this->offered();
    if (offered == nullptr) {
        return some
            + texts_.pick(u" For the others, bind a keyboard shortcut of the desktop to “vellumo "
                          "-\u2060-\u2060explain”: it does the same as a double-tap."_s,
                          u"其他窗口请在桌面设置里给“vellumo -\u2060-\u2060explain”绑定一个快捷键，"
                          "效果与按两下相同。"_s);
    }
    return some
        + (offered == desktop_.tapSetting()
               ? texts_.pick(u" KWin can report Alt pressed alone to vellumo in every window: one "
                             "entry in its settings, which you can remove here."_s,
                             u"KWin 可以在所有窗口中把单独按下 Alt 告知 vellumo：只需在其设置中添加"
                             "一个条目，可随时在这里移除。"_s)
               : offered == desktop_.extension()
               ? texts_.pick(u" An extension of GNOME Shell, which came with vellumo, makes them "
                             "heard in every window. You can turn it off here again."_s,
                             u"随 vellumo 一起安装的 GNOME Shell 扩展可以让按两下在所有窗口中有效，"
                             "可随时在这里停用。"_s)
               : texts_.pick(u" A keyboard shortcut reaches vellumo in every window: one entry in "
                             "the desktop's keyboard settings, which you can remove here."_s,
                             u"快捷键可以在所有窗口中使用 vellumo：只需在桌面的键盘设置中添加一个"
                             "条目，可随时在这里移除。"_s));
}

QString TapReach::actionText() const
{
    if (const DesktopChange *const made = this->made()) {
        return made == desktop_.shortcut() ? texts_.pick(u"Remove shortcut"_s, u"移除快捷键"_s)
                                           : texts_.pick(u"Turn off"_s, u"停用"_s);
    }
    const DesktopChange *const offered = this->offered();
    return offered == nullptr            ? QString()
        : offered == desktop_.shortcut() ? texts_.pick(u"Add shortcut"_s, u"添加快捷键"_s)
                                         : texts_.pick(u"Turn on"_s, u"启用"_s);
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
