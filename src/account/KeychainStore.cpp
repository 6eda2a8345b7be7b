// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "account/KeychainStore.h"

#include "platform/SecretItems.h"

#include <QStringDecoder>

namespace vellumo {

namespace {

std::optional<QString> textOf(const SecretAnswer &answer)
{
    if (answer.kind != SecretAnswer::Kind::Found) {
        return std::nullopt;
    }
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless);
    const QString text = decoder(answer.value);
    return decoder.hasError() ? std::nullopt : std::optional(text);
}

} // namespace

void KeychainStore::get(const QString &account, QObject *context, Completion completion)
{
    items_.get(account, context, [completion = std::move(completion)](const SecretAnswer &answer) {
        completion(textOf(answer));
    });
}

void KeychainStore::checkMissing(const QString &account, QObject *context,
                                 std::function<void(bool)> completion)
{
    items_.get(account, context, [completion = std::move(completion)](const SecretAnswer &answer) {
        completion(answer.kind == SecretAnswer::Kind::Missing);
    });
}

void KeychainStore::set(const QString &value, const QString &account)
{
    items_.set(account, value.toUtf8());
}

void KeychainStore::remove(const QString &account)
{
    items_.remove(account);
}

void KeychainStore::unlock()
{
    items_.unlock();
}

void KeychainStore::onReadable(QObject *context, std::function<void()> action)
{
    QObject::connect(&items_, &SecretItems::becameReadable, context, std::move(action));
}

} // namespace vellumo
