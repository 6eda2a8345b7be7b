// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QString>
#include <QVariant>

namespace vellumo {

/// The user's settings, kept between runs. Reads return the current value, so callers need no
/// cache. Main thread only.
class DefaultsStore : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Returns the value under `key`, or an invalid QVariant when there is none.
    [[nodiscard]] virtual QVariant value(const QString &key) const = 0;

    /// Stores `value`; an invalid QVariant removes the key. Emits changed() if the value differs.
    virtual void setValue(const QString &key, const QVariant &value) = 0;

    /// Returns whether a change of this run could not be saved.
    [[nodiscard]] virtual bool hasFailed() const { return false; }

Q_SIGNALS:
    /// Emitted when hasFailed() becomes true.
    void failed();

    /// Emitted synchronously after the value under `key` has changed.
    void changed(const QString &key);
};

} // namespace vellumo
