// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "computer/ComputerModel.h"

#include "computer/DesktopFacts.h"
#include "computer/FailureText.h"
#include "explain/ForwardingExplainer.h"
#include "platform/Clock.h"
#include "platform/DefaultsStore.h"
#include "platform/ReferenceDate.h"
#include "settings/SettingsKeys.h"
#include "settings/UserPreferences.h"
#include "ui/BilingualText.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

ComputerModel::ComputerModel(const Collaborators &collaborators, QObject *parent)
    : QObject(parent)
    , with_(collaborators)
    , service_(collaborators.service, collaborators.clock, collaborators.texts)
    , taps_(collaborators.desktop, collaborators.texts, collaborators.defaults)
{
    connect(&with_.accessibility, &Accessibility::trustChanged, this, [this] {
        Q_EMIT trustChanged();
        Q_EMIT factsChanged();
    });
    connect(&with_.defaults, &DefaultsStore::changed, this, &ComputerModel::copyingChanged);
    connect(&with_.defaults, &DefaultsStore::changed, this, &ComputerModel::pillChanged);
    connect(&with_.desktop, &DesktopReporting::changed, this, &ComputerModel::factsChanged);
    connect(&with_.login, &LoginStart::changed, this, &ComputerModel::loginChanged);
    connect(&with_.explainer, &ForwardingExplainer::lastFailureChanged, this,
            &ComputerModel::problemsChanged);
    connect(&with_.texts, &BilingualText::languageChanged, this, [this] {
        Q_EMIT copyingChanged();
        Q_EMIT factsChanged();
        Q_EMIT loginChanged();
        Q_EMIT problemsChanged();
    });
}

void ComputerModel::allow()
{
    with_.accessibility.isProcessTrustedWithPrompt();
}

void ComputerModel::withdraw()
{
    if (onWithdrawConsent) {
        onWithdrawConsent();
    }
}

bool ComputerModel::readsByCopying() const
{
    return UserPreferences(with_.defaults).readsByCopying();
}

void ComputerModel::setReadsByCopying(bool copies)
{
    settings::readsByCopying.set(with_.defaults, copies);
}

bool ComputerModel::showsPill() const
{
    return settings::showsPill.value(with_.defaults);
}

void ComputerModel::setShowsPill(bool shows)
{
    settings::showsPill.set(with_.defaults, shows);
}

QString ComputerModel::copyingText() const
{
    const BilingualText &texts = with_.texts;
    const QString text = texts.pick(
        u"A few applications give a selection away only by copying it. vellumo then copies for "
        "you and puts the clipboard back; a clipboard history may keep what you selected."_s,
        u"少数应用只能通过复制读到选中的文字。这时 vellumo "
        u"会代你复制，再恢复剪贴板；剪贴板历史可能会"
        "留下选中的文字。"_s);
    const QStringList exceptions = UserPreferences(with_.defaults).noCopyingIn();
    return exceptions.isEmpty() ? text
                                : text
            + texts.pick(u" Never in: %1."_s, u"以下应用除外：%1。"_s)
                  .arg(exceptions.join(texts.pick(u", "_s, u"、"_s)));
}

QVariantList ComputerModel::facts() const
{
    QVariantList facts;
    for (const DesktopFact &fact : desktopFacts(with_.desktop, with_.accessibility, with_.texts)) {
        facts.append(QVariant::fromValue(fact));
    }
    return facts;
}

bool ComputerModel::needsAction() const
{
    return std::ranges::any_of(desktopFacts(with_.desktop, with_.accessibility, with_.texts),
                               &DesktopFact::needsAction);
}

bool ComputerModel::startsAtLogin() const
{
    const LoginStart::State state = with_.login.state();
    return state == LoginStart::State::On || state == LoginStart::State::OnForAll;
}

QString ComputerModel::loginText() const
{
    const BilingualText &texts = with_.texts;
    if (hasLoginFailed_) {
        return texts.pick(u"The autostart entry could not be written."_s,
                          u"无法写入开机启动的条目。"_s);
    }
    switch (with_.login.state()) {
    case LoginStart::State::Off:
    case LoginStart::State::On:
        return {};
    case LoginStart::State::OnForAll:
        return texts.pick(u"On for all users of this computer."_s, u"已为所有用户开启。"_s);
    case LoginStart::State::SwitchedOff:
        return texts.pick(u"An entry exists but is turned off."_s, u"已设置，但已关闭。"_s);
    case LoginStart::State::Broken:
        return texts.pick(
            u"The entry points to a program that no longer exists. Turn it on again to "
            "repair it."_s,
            u"已设置，但其中的程序不存在。重新打开即可修复。"_s);
    }
    Q_UNREACHABLE();
}

void ComputerModel::setStartsAtLogin(bool starts)
{
    hasLoginFailed_ = !with_.login.setOn(starts);
    Q_EMIT loginChanged();
}

QString ComputerModel::explanationProblem() const
{
    const auto &failure = with_.explainer.lastFailure();
    return failure ? failureText(*failure, with_.texts) : QString();
}

QString ComputerModel::explanationTime() const
{
    const auto &failure = with_.explainer.lastFailure();
    return failure ? timeText(localTime(failure->at)) : QString();
}

void ComputerModel::refresh()
{
    with_.desktop.refresh();
    taps_.refresh();
    Q_EMIT trustChanged();
    Q_EMIT loginChanged();
    Q_EMIT problemsChanged();
}

QString ComputerModel::timeText(const QDateTime &time) const
{
    const bool isToday = time.date() == localTime(with_.clock.secondsSinceReferenceDate()).date();
    return time.toString(isToday ? u"HH:mm"_s : u"yyyy-MM-dd HH:mm"_s);
}

} // namespace vellumo
