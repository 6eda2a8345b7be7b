// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SecretItems.h"
#include "platform/dbus/SecretServicePrompts.h"
#include "platform/dbus/SecretServiceSession.h"
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
/// attributes "service", the program's id, and "account". Items of one account may be in several
/// collections: the one that was written by this program into the default collection counts, and
/// writing removes the others. Without a session bus or a keyring there are no secrets.
class SecretServiceItems final : public SecretItems {
    Q_OBJECT

public:
    /// The bus must outlive this object; it may be opened later. `cipherModule` is the full name of
    /// the module that encrypts what is handed over; empty for none.
    explicit SecretServiceItems(SessionBus &bus, const QString &cipherModule = {},
                                QObject *parent = nullptr);

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
    void read();
    void readItem(const QString &item);
    void write();
    void createItem();
    void removeOthers(const QString &item);
    void removeAll();
    void removeItem(const QString &item);
    void askToUnlock();
    using Found = std::function<void(const QStringList &open, const QStringList &locked)>;
    void search(const Found &then);
    void search(const secretservice::Attributes &wanted, const Found &then);
    /// Chooses the item that counts; there is one at least.
    void choose(const QStringList &items, const std::function<void(const QString &item)> &then);
    /// With nothing when there is no default collection.
    void askWhetherLocked(const std::function<void(std::optional<bool> isLocked)> &then);

    void onOwnerChanged(bool isThere);
    void onCollectionsChanged();

    void call(const QString &path, const char *interface, const char *method,
              const secretservice::Arguments &arguments, const char *signature,
              secretservice::Reply then);
    /// Of the item that is written.
    [[nodiscard]] secretservice::Attributes attributes() const;

    SessionBus &bus_;
    SecretServiceWatch watch_;
    SecretServicePrompts prompts_; ///< of changes, not asked before unlock()
    SecretServiceSession session_; ///< opened for the first secret that is handed over
    QList<Operation> operations_; ///< the first is the one that runs
    bool isRunning_ = false;
    bool isWaiting_ = false; ///< something could not be read or done
    QString collection_; ///< path of the default one, once it has been looked for
    QHash<QString, std::optional<QByteArray>> owed_; ///< to be written, or removed, by account
};

} // namespace vellumo
