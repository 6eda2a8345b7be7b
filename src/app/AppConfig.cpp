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

QString fromEnvironment(const QString &key)
{
    return qEnvironmentVariable(key.toUtf8().constData()).trimmed();
}

} // namespace

AppConfig::AppConfig(QList<QJsonObject> informationDictionary)
    : informationDictionary_(std::move(informationDictionary))
{
}

AppConfig AppConfig::load()
{
    return load(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
                    + u"/vellumo/Info.json"_s,
                QCoreApplication::applicationDirPath() + u"/../share/vellumo/Info.json"_s);
}

AppConfig AppConfig::load(const QString &userFile, const QString &installedFile)
{
    AppConfig config({readDictionary(userFile), readDictionary(installedFile)});
    config.userFile_ = userFile;
    return config;
}

std::optional<QString> AppConfig::value(const QString &key) const
{
    if (const QString value = fromEnvironment(key); !value.isEmpty()) {
        return value;
    }
    for (const QJsonObject &layer : informationDictionary_) {
        const QString entry = layer.value(key).toString().trimmed();
        if (!entry.isEmpty()) {
            return entry;
        }
    }
    return std::nullopt;
}

bool AppConfig::isInEnvironment(const QString &key)
{
    return !fromEnvironment(key).isEmpty();
}

} // namespace vellumo
