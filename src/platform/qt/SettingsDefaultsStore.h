// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DefaultsStore.h"
#include <QSettings>
#include <QTimer>

namespace vellumo {

/// Keeps the user's settings in an INI file in the user's config folder. Changes are written from
/// the event loop, and at the latest by the destructor.
class SettingsDefaultsStore : public DefaultsStore {
    Q_OBJECT

public:
    explicit SettingsDefaultsStore(const QString &path, QObject *parent = nullptr);

    /// Returns the path of the user's settings file.
    [[nodiscard]] static QString defaultPath();

    [[nodiscard]] QVariant value(const QString &key) const override;
    void setValue(const QString &key, const QVariant &value) override;
    [[nodiscard]] bool hasFailed() const override { return hasFailed_; }

private:
    void write();

    QSettings settings_;
    QTimer writing_; ///< combines changes into one write
    bool hasFailed_ = false;
};

} // namespace vellumo
