// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DefaultsStore.h"
#include <QSettings>

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

private:
    QSettings settings_;
};

} // namespace vellumo
