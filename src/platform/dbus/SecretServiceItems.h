// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SecretItems.h"
#include "platform/dbus/SecretServicePrompts.h"
#include "platform/dbus/SecretServiceWatch.h"
#include "platform/dbus/SecretServiceWire.h"
#include <QHash>
#include <QList>
#include <QPointer>
#include <QVariant>
#include <optional>

namespace vellumo {

class SessionBus;

/// Secrets in the desktop's keyring, over the bus (org.freedesktop.secrets). Every item carries the
/// attributes "service", the program's id, and "account". Without a session bus or a keyring there
/// are no secrets.
class SecretServiceItems final : public SecretItems {
    Q_OBJECT

public:
    /// The bus must outlive this object; it may be opened later.
    explicit SecretServiceItems(SessionBus &bus, QObject *parent = nullptr);

    void get(const QString &account, QObject *context, Completion completion) override;
    void set(const QString &account, const QByteArray &value) override;
    void remove(const QString &account) override;
    void unlock() override;

private:
    /// What is done one after another.
    struct Operation {
        enum class Kind : quint8 { read, write, remove, unlock };
        Kind kind = Kind::read;
        QString account = {};
        QByteArray value = {}; ///< of write
        QPointer<QObject> context = {}; ///< of read
        Completion completion = {}; ///< of read
    };

    void begin(Operation operation);
    void next();
    void finish(const SecretAnswer &answer = {});

    // The steps of an operation.
    void openSession();
    void read();
    void write();
    void createItem();
    void removeAll();
    void askToUnlock();
    void
    search(const std::function<void(const QStringList &open, const QStringList &locked)> &then);
    /// With nothing when there is no default collection.
    void askWhetherLocked(const std::function<void(std::optional<bool> isLocked)> &then);

    void onOwnerChanged(bool isThere);
    void onCollectionsChanged();

    void call(const QString &path, const char *interface, const char *method,
              const secretservice::Arguments &arguments, const char *signature,
              secretservice::Reply then);
    [[nodiscard]] QVariant attributes() const;

    SessionBus &bus_;
    SecretServiceWatch watch_;
    SecretServicePrompts prompts_; ///< of changes, not asked before unlock()
    QList<Operation> operations_; ///< the first is the one that runs
    bool isRunning_ = false;
    bool isWaiting_ = false; ///< something could not be read or done
    QString session_; ///< its path; empty before it is opened
    QString collection_; ///< path of the default one, once it has been looked for
    QHash<QString, std::optional<QByteArray>> owed_; ///< to be written, or removed, by account
};

} // namespace vellumo
