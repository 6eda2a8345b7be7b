// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/dbus/SecretServiceWire.h"
#include "platform/dbus/cipher/SecretCipherModule.h"
#include <QByteArray>
#include <QObject>
#include <QString>
#include <functional>
#include <optional>

namespace vellumo {

class SessionBus;

/// The session in which secrets are exchanged with the keyring, encrypted if the keyring and the
/// cipher module support it. It protects secrets from eavesdroppers on the bus, but does not
/// authenticate the keyring. Needs an open bus.
class SecretServiceSession final : public QObject {
public:
    /// The bus must outlive this object. `cipherModule` is the module's path; it is loaded with the
    /// first session. Without it secrets are sent unencrypted.
    SecretServiceSession(SessionBus &bus, QString cipherModule, QObject *parent = nullptr);
    ~SecretServiceSession() override;
    Q_DISABLE_COPY_MOVE(SecretServiceSession)

    /// Opens the session and runs `then` with the result; immediately if it is already open.
    void open(const std::function<void(bool isOpen)> &then);
    /// Drops the session, when the keyring has gone.
    void forget();

    /// Returns the session's path on the bus; empty while it is not open.
    [[nodiscard]] const QString &path() const { return path_; }
    [[nodiscard]] bool isEncrypted() const { return !key_.isEmpty(); }

    /// Returns the value in the form that is sent; absent when encryption fails.
    [[nodiscard]] std::optional<secretservice::BusSecret> seal(const QByteArray &value) const;
    /// Returns the received value; absent when decryption fails.
    [[nodiscard]] std::optional<QByteArray> unseal(const secretservice::BusSecret &secret) const;

private:
    void openEncrypted(const std::function<void(bool)> &then);
    void openPlain(const std::function<void(bool)> &then);
    /// Requests a session and runs `then` with the keyring's output; absent if it fails.
    void ask(const QString &algorithm, const QVariant &input,
             std::function<void(const std::optional<QVariant> &output)> then);

    SessionBus &bus_;
    QString module_;
    const secretCipherModule::Functions *cipher_ = nullptr; ///< null until it is loaded
    QString path_;
    QByteArray key_; ///< empty in an unencrypted session
};

} // namespace vellumo
