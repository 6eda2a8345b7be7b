// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/SettingsDefaultsStore.h"

#include <QStandardPaths>

using namespace Qt::StringLiterals;

namespace vellumo {

SettingsDefaultsStore::SettingsDefaultsStore(const QString &path, QObject *parent)
    : DefaultsStore(parent)
    , settings_(path, QSettings::IniFormat)
{
}

QString SettingsDefaultsStore::defaultPath()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + u"/vellumo/vellumo.ini"_s;
}

QVariant SettingsDefaultsStore::value(const QString &key) const
{
    return settings_.value(key);
}

void SettingsDefaultsStore::setValue(const QString &key, const QVariant &value)
{
    if (settings_.value(key) == value) {
        return;
    }
    if (value.isValid()) {
        settings_.setValue(key, value);
    } else {
        settings_.remove(key);
    }
    Q_EMIT changed(key);
}

} // namespace vellumo
