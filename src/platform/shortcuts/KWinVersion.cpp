// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/KWinVersion.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr int versionTimeoutMs = 5000;

/// Returns the version in the text for bug reports, in which this line is not translated.
QVersionNumber versionIn(const QString &supportInformation)
{
    static const QRegularExpression line(u"^KWin version: (\\d+(?:\\.\\d+)+)"_s,
                                         QRegularExpression::MultilineOption);
    return QVersionNumber::fromString(line.match(supportInformation).captured(1));
}

} // namespace

KWinVersion::KWinVersion(const QDBusConnection &bus, QObject *parent)
    : QObject(parent)
    , bus_(bus)
    , kwin_(bus, u"org.kde.KWin"_s)
{
    connect(&kwin_, &BusName::ownerChanged, this, &KWinVersion::ask);
}

void KWinVersion::ask()
{
    const QString owner = kwin_.owner();
    if (owner.isEmpty()) {
        set({});
        return;
    }
    auto *call = new QDBusPendingCallWatcher(
        bus_.asyncCall(QDBusMessage::createMethodCall(owner, u"/KWin"_s, u"org.kde.KWin"_s,
                                                      u"supportInformation"_s),
                       versionTimeoutMs),
        this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this, call, owner] {
        call->deleteLater();
        const QDBusPendingReply<QString> answer = *call;
        if (owner == kwin_.owner()) {
            set(answer.isValid() ? versionIn(answer.value()) : QVersionNumber());
        }
    });
}

void KWinVersion::set(const QVersionNumber &number)
{
    number_ = number;
    Q_EMIT changed();
}

} // namespace vellumo
