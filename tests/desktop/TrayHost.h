// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QDBusConnection>
#include <QDBusContext>
#include <QDBusMessage>
#include <QImage>
#include <QObject>
#include <QStringList>

namespace vellumo::test {

/// A desktop panel's tray on the bus: the watcher that icons register with
/// and the host that shows them. Exists as long as this object.
class TrayHost : public QObject, protected QDBusContext {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    struct MenuItem {
        int id;
        QString label; ///< empty for a separator
        bool isEnabled;
        QStringList shortcut;
    };

    TrayHost();
    ~TrayHost() override;
    TrayHost(const TrayHost &) = delete;
    TrayHost &operator=(const TrayHost &) = delete;
    TrayHost(TrayHost &&) = delete;
    TrayHost &operator=(TrayHost &&) = delete;

    [[nodiscard]] QStringList items() const { return items_; }
    [[nodiscard]] bool waitForItem() const;

    /// Asks the item that registered last.
    [[nodiscard]] QVariant property(const QString &name);
    void activate();
    /// Returns the first pixmap that it offers for its icon.
    [[nodiscard]] QImage icon();
    [[nodiscard]] QList<MenuItem> menu();
    void choose(int menuItem);

public Q_SLOTS:
    Q_SCRIPTABLE void RegisterStatusNotifierItem(const QString &service);
    Q_SCRIPTABLE void RegisterStatusNotifierHost(const QString & /*service*/) { }

private:
    [[nodiscard]] static bool hasHost() { return true; }
    [[nodiscard]] static int protocolVersion() { return 0; }
    QDBusMessage ask(const QString &path, const QString &interface, const QString &method,
                     const QVariantList &arguments);

    QDBusConnection bus_;
    QStringList items_;
};

} // namespace vellumo::test
