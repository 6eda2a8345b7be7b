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

/// Secrets in the desktop's keyring, over the bus (org.freedesktop.secrets). Every item has the
/// attributes "service", the program's id, and "account". If several collections have an item of an
/// account, the one that this program wrote into the default collection counts, and writing removes
/// the others. Without a session bus or a keyring there are no secrets.
class SecretServiceItems final : public SecretItems {
    Q_OBJECT

public:
    /// The bus must outlive this object and may be opened later. `cipherModule` is the path of the
    /// module that encrypts secrets on the bus; empty for none.
    explicit SecretServiceItems(SessionBus &bus, const QString &cipherModule = {},
                                QObject *parent = nullptr);

    void get(const QString &account, QObject *context, Completion completion) override;
    void set(const QString &account, const QByteArray &value) override;
    void remove(const QString &account) override;
    void unlock() override;

private:
    /// A queued operation.
    struct Operation {
        enum class Kind : quint8 { Read, Write, Remove, Unlock };
        Kind kind = Kind::Read;
        QString account = {};
        QByteArray value = {}; ///< for write
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
    /// Chooses the item that counts. `items` is not empty.
    void choose(const QStringList &items, const std::function<void(const QString &item)> &then);
    /// Passes an absent value when there is no default collection.
    void askWhetherLocked(const std::function<void(std::optional<bool> isLocked)> &then);

    void onOwnerChanged(bool isThere);
    void onCollectionsChanged();

    void call(const QString &path, const char *interface, const char *method,
              const secretservice::Arguments &arguments, const char *signature,
              secretservice::Reply then);
    /// Returns the attributes of the item to be written.
    [[nodiscard]] secretservice::Attributes attributes() const;

    SessionBus &bus_;
    SecretServiceWatch watch_;
    SecretServicePrompts prompts_; ///< pending prompts of changes, shown by unlock()
    SecretServiceSession session_; ///< opened with the first secret
    QList<Operation> operations_; ///< the first one is running
    bool isRunning_ = false;
    bool isWaiting_ = false; ///< an operation could not be completed
    QString collection_; ///< path of the default collection, once known
    /// Pending writes, and removals if absent, by account.
    QHash<QString, std::optional<QByteArray>> owed_;
};

} // namespace vellumo
