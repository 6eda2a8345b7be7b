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

/// The session in which the keyring takes and gives secrets: encrypted where the keyring and the
/// cipher's module allow it, else in the clear. The keyring is not authenticated by it: it keeps
/// secrets from those who overhear the bus. Needs an open bus.
class SecretServiceSession final : public QObject {
public:
    /// The bus must outlive this object. `cipherModule` is the module's full name; it is loaded
    /// when a session is opened first. Without one secrets go in the clear.
    SecretServiceSession(SessionBus &bus, QString cipherModule, QObject *parent = nullptr);
    ~SecretServiceSession() override;
    Q_DISABLE_COPY_MOVE(SecretServiceSession)

    /// Runs `then` with whether there is a session; at once if it is open already.
    void open(const std::function<void(bool isOpen)> &then);
    /// The keyring that it was opened with is gone.
    void forget();

    /// Its path on the bus; empty while it is not open.
    [[nodiscard]] const QString &path() const { return path_; }
    [[nodiscard]] bool isEncrypted() const { return !key_.isEmpty(); }

    /// The value as it travels; nothing when it cannot be encrypted.
    [[nodiscard]] std::optional<secretservice::BusSecret> seal(const QByteArray &value) const;
    /// What has travelled; nothing when it cannot be decrypted.
    [[nodiscard]] std::optional<QByteArray> unseal(const secretservice::BusSecret &secret) const;

private:
    void openEncrypted(const std::function<void(bool)> &then);
    void openPlain(const std::function<void(bool)> &then);
    /// Asks for a session; runs `then` with what the keyring puts beside its path, if it gives one.
    void ask(const QString &algorithm, const QVariant &input,
             std::function<void(const std::optional<QVariant> &output)> then);

    SessionBus &bus_;
    QString module_;
    const secretCipherModule::Functions *cipher_ = nullptr; ///< once it has been loaded
    QString path_;
    QByteArray key_; ///< empty while nothing is encrypted
};

} // namespace vellumo
