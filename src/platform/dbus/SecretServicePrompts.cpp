// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/SecretServicePrompts.h"

#include "platform/dbus/SecretServiceWire.h"
#include "platform/dbus/SessionBus.h"

#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

using namespace secretservice;

SecretServicePrompts::SecretServicePrompts(SessionBus &bus, QObject *parent)
    : QObject(parent)
    , bus_(bus)
{
}

void SecretServicePrompts::add(const QString &account, const QString &path)
{
    questions_.append({account, path});
}

void SecretServicePrompts::dismiss(const QString &account)
{
    questions_.removeIf([&](const Question &question) {
        const bool isOutdated = question.account == account;
        if (isOutdated) {
            call(*bus_.connection(), this, question.path, promptInterface, "Dismiss", {}, "",
                 [](const auto *) {});
        }
        return isOutdated;
    });
}

void SecretServicePrompts::askAll()
{
    const auto questions = std::exchange(questions_, {});
    for (const Question &question : questions) {
        bus_.connection()->connect(QString(), question.path, QString::fromLatin1(promptInterface),
                                   u"Completed"_s, this, SLOT(onCompleted(QDBusMessage)));
        ask(question.path);
    }
}

void SecretServicePrompts::ask(const QString &path)
{
    if (!path.isEmpty()) {
        call(*bus_.connection(), this, path, promptInterface, "Prompt", {QString()}, "",
             [](const auto *) {});
    }
}

void SecretServicePrompts::onCompleted(const QDBusMessage &message)
{
    bus_.connection()->disconnect(QString(), message.path(), QString::fromLatin1(promptInterface),
                                  u"Completed"_s, this, SLOT(onCompleted(QDBusMessage)));
    const bool isDismissed = message.signature() != "bv"_L1 || message.arguments().at(0).toBool();
    if (!isDismissed) {
        Q_EMIT agreed();
    }
}

} // namespace vellumo
