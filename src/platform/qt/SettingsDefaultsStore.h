// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DefaultsStore.h"
#include <QSettings>
#include <QTimer>

namespace vellumo {

/// Keeps the user's settings in one INI file in the user's config folder. A change is written soon
/// after it is made, and at the latest when the store goes.
class SettingsDefaultsStore : public DefaultsStore {
    Q_OBJECT

public:
    explicit SettingsDefaultsStore(const QString &path, QObject *parent = nullptr);

    /// Where this user's settings live.
    [[nodiscard]] static QString defaultPath();

    [[nodiscard]] QVariant value(const QString &key) const override;
    void setValue(const QString &key, const QVariant &value) override;
    [[nodiscard]] bool hasFailed() const override { return hasFailed_; }

private:
    void write();

    QSettings settings_;
    QTimer writing_; ///< changes that belong together are written at once
    bool hasFailed_ = false;
};

} // namespace vellumo
