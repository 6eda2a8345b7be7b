// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DefaultsStore.h"
#include <QString>
#include <QVariant>

namespace vellumo {

/// A value in the settings file. Main thread only, like the store.
template <typename T> struct Setting {
    QStringView name;
    T fallback{}; ///< read when the file has no value

    [[nodiscard]] T value(const DefaultsStore &defaults) const
    {
        const QVariant stored = defaults.value(name.toString());
        return stored.isValid() ? stored.value<T>() : fallback;
    }

    [[nodiscard]] bool isSet(const DefaultsStore &defaults) const
    {
        return defaults.value(name.toString()).isValid();
    }

    void set(DefaultsStore &defaults, const T &value) const
    {
        defaults.setValue(name.toString(), QVariant::fromValue(value));
    }

    void remove(DefaultsStore &defaults) const { defaults.setValue(name.toString(), {}); }
};

} // namespace vellumo
