// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/qt/SettingsDefaultsStore.h"

#include "platform/Diagnostics.h"

#include <QStandardPaths>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

SettingsDefaultsStore::SettingsDefaultsStore(const QString &path, QObject *parent)
    : DefaultsStore(parent)
    , settings_(path, QSettings::IniFormat)
{
    writing_.setSingleShot(true);
    writing_.setInterval(0);
    connect(&writing_, &QTimer::timeout, this, &SettingsDefaultsStore::write);
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
    writing_.start();
    Q_EMIT changed(key);
}

void SettingsDefaultsStore::write()
{
    settings_.sync();
    if (settings_.status() != QSettings::NoError && !std::exchange(hasFailed_, true)) {
        printDiagnostic(u"the settings cannot be written: "_s + settings_.fileName());
        Q_EMIT failed();
    }
}

} // namespace vellumo
