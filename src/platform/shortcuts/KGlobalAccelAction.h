// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopChange.h"
#include "platform/dbus/BusName.h"
#include "platform/shortcuts/KWinVersion.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QStringList>
#include <functional>

namespace vellumo {

/// A global shortcut of vellumo in KDE's registry, org.kde.kglobalaccel, which KWin serves in a
/// Wayland session. The registry stores it in the user's settings, where the desktop shows it and
/// the user can change its keys. KWin grabs the keys only while this object exists.
class KGlobalAccelAction final : public DesktopChange {
    Q_OBJECT

public:
    /// Keys are a Qt::Key with Qt::KeyboardModifiers. From KWin 6.1 on, modifiers without a key are
    /// allowed: the action is activated at the release of modifiers that were pressed alone, and
    /// applications see them as well.
    struct Action {
        QString name;
        QString description; ///< shown in the desktop's settings
        QList<int> keys; ///< the first that is free is taken
        QVersionNumber since; ///< the first KWin that allows such keys
    };

    /// `kwin` must outlive this object.
    KGlobalAccelAction(const QDBusConnection &bus, const KWinVersion &kwin, Action action,
                       QObject *parent = nullptr);
    ~KGlobalAccelAction() override;
    Q_DISABLE_COPY_MOVE(KGlobalAccelAction)

    [[nodiscard]] State state() const override { return state_; }
    [[nodiscard]] QString keys() const override { return keys_; }
    void refresh() override;
    void make() override;
    void undo() override;

Q_SIGNALS:
    /// Emitted when the user presses the keys.
    void activated();

private Q_SLOTS:
    void onPressed(const QString &component, const QString &action);
    void onKeysChanged(const QStringList &action);

private:
    using Handler = std::function<void(const QDBusMessage &answer)>;

    void follow();
    void findFree(const std::function<void(int key)> &then, qsizetype candidate = 0);
    void call(const QString &method, const QVariantList &arguments, const Handler &handle);
    void settle(State state, const QString &keys = {});
    [[nodiscard]] QStringList id() const;

    QDBusConnection bus_;
    const KWinVersion &kwin_;
    Action action_;
    BusName registry_;
    QString followed_; ///< the registry whose signals are received
    bool isGrabbed_ = false;
    State state_ = State::Unknown;
    QString keys_;
};

} // namespace vellumo
