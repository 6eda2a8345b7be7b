// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/SecretServiceSession.h"

#include "platform/Wiping.h"
#include "platform/dbus/SessionBus.h"

#include <QDBusVariant>
#include <QLibrary>
#include <limits>
#include <memory>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

using namespace secretservice;
namespace cipher = secretCipherModule;

namespace {

const unsigned char *bytes(const QByteArray &array)
{
    return reinterpret_cast<const unsigned char *>(array.constData());
}

unsigned char *bytes(QByteArray &array)
{
    return reinterpret_cast<unsigned char *>(array.data());
}

bool canBeProcessed(const QByteArray &value)
{
    constexpr auto maxSize = std::numeric_limits<int>::max() - static_cast<int>(cipher::blockSize);
    return value.size() <= maxSize;
}

QByteArray blank(std::size_t size)
{
    return {static_cast<qsizetype>(size), '\0'};
}

} // namespace

SecretServiceSession::SecretServiceSession(SessionBus &bus, QString cipherModule, QObject *parent)
    : QObject(parent)
    , bus_(bus)
    , module_(std::move(cipherModule))
{
}

SecretServiceSession::~SecretServiceSession()
{
    wipe(key_);
}

void SecretServiceSession::open(const std::function<void(bool)> &then)
{
    if (!path_.isEmpty()) {
        then(true);
        return;
    }
    if (cipher_ == nullptr && !module_.isEmpty()) {
        // stays loaded
        const auto find =
            reinterpret_cast<cipher::Find>(QLibrary::resolve(module_, cipher::function));
        cipher_ = find != nullptr ? find() : nullptr;
        module_.clear();
    }
    if (cipher_ != nullptr) {
        openEncrypted(then);
    } else {
        openPlain(then);
    }
}

void SecretServiceSession::forget()
{
    path_.clear();
    wipe(key_);
}

void SecretServiceSession::openEncrypted(const std::function<void(bool)> &then)
{
    const auto secretHalf = std::make_shared<QByteArray>(blank(cipher::pairSize));
    QByteArray openHalf = blank(cipher::pairSize);
    if (cipher_->makePair(bytes(*secretHalf), bytes(openHalf)) != 1) {
        openPlain(then);
        return;
    }
    ask(u"dh-ietf1024-sha256-aes128-cbc-pkcs7"_s, openHalf,
        [this, secretHalf, then](const std::optional<QVariant> &output) {
            const bool isOffered = output && output->typeId() == QMetaType::QByteArray;
            const QByteArray peer = isOffered ? output->toByteArray() : QByteArray();
            QByteArray key = blank(cipher::blockSize);
            const bool isAgreed = !peer.isEmpty()
                && cipher_->agree(bytes(*secretHalf), bytes(peer),
                                  static_cast<std::size_t>(peer.size()), bytes(key))
                    == 1;
            wipe(*secretHalf);
            if (isAgreed) {
                key_ = std::move(key);
                then(true);
            } else {
                path_.clear();
                openPlain(then);
            }
        });
}

void SecretServiceSession::openPlain(const std::function<void(bool)> &then)
{
    ask(u"plain"_s, QString(),
        [then](const std::optional<QVariant> &output) { then(output.has_value()); });
}

void SecretServiceSession::ask(const QString &algorithm, const QVariant &input,
                               std::function<void(const std::optional<QVariant> &)> then)
{
    call(*bus_.connection(), this, servicePath, serviceInterface, "OpenSession",
         {algorithm, QVariant::fromValue(QDBusVariant(input))}, "vo",
         [this, then = std::move(then)](const auto *answer) {
             path_ = answer ? pathIn(answer->at(1)) : QString();
             then(path_.isEmpty()
                      ? std::nullopt
                      : std::optional(answer->at(0).template value<QDBusVariant>().variant()));
         });
}

std::optional<BusSecret> SecretServiceSession::seal(const QByteArray &value) const
{
    BusSecret secret{QDBusObjectPath(path_), {}, value, u"text/plain"_s};
    if (!isEncrypted()) {
        return secret;
    }
    if (!canBeProcessed(value)) {
        return std::nullopt;
    }
    secret.parameters = blank(cipher::blockSize);
    secret.value = blank(static_cast<std::size_t>(value.size()) + cipher::blockSize);
    const int size = cipher_->encrypt(bytes(key_), bytes(secret.parameters), bytes(value),
                                      static_cast<int>(value.size()), bytes(secret.value));
    if (size < 0) {
        return std::nullopt;
    }
    secret.value.truncate(size);
    return secret;
}

std::optional<QByteArray> SecretServiceSession::unseal(const BusSecret &secret) const
{
    if (!isEncrypted()) {
        return secret.value;
    }
    if (secret.parameters.size() != static_cast<qsizetype>(cipher::blockSize)
        || !canBeProcessed(secret.value)) {
        return std::nullopt;
    }
    QByteArray plain = blank(static_cast<std::size_t>(secret.value.size()) + cipher::blockSize);
    const int size = cipher_->decrypt(bytes(key_), bytes(secret.parameters), bytes(secret.value),
                                      static_cast<int>(secret.value.size()), bytes(plain));
    if (size < 0) {
        return std::nullopt;
    }
    plain.truncate(size);
    return plain;
}

} // namespace vellumo
