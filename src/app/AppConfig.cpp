// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/AppConfig.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonValue>
#include <QStandardPaths>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

QJsonObject readDictionary(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                          : QJsonObject();
}

} // namespace

AppConfig::AppConfig(QList<QJsonObject> informationDictionary)
    : informationDictionary_(std::move(informationDictionary))
{
}

AppConfig AppConfig::load()
{
    const QString userFile = QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + u"/vellumo/Info.json"_s;
    const QString installedFile =
        QCoreApplication::applicationDirPath() + u"/../share/vellumo/Info.json"_s;
    return AppConfig({readDictionary(userFile), readDictionary(installedFile)});
}

std::optional<QString> AppConfig::value(const QString &key) const
{
    const QString fromEnvironment = qEnvironmentVariable(key.toUtf8().constData()).trimmed();
    if (!fromEnvironment.isEmpty()) {
        return fromEnvironment;
    }
    for (const QJsonObject &layer : informationDictionary_) {
        const QString entry = layer.value(key).toString().trimmed();
        if (!entry.isEmpty()) {
            return entry;
        }
    }
    return std::nullopt;
}

} // namespace vellumo
