// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/AppConfig.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonValue>
#include <QSaveFile>
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

/// The value with the number of its layer: 0 for the environment.
std::optional<std::pair<qsizetype, QString>> find(const QString &key,
                                                  const QList<QJsonObject> &layers)
{
    const QString fromEnvironment = qEnvironmentVariable(key.toUtf8().constData()).trimmed();
    if (!fromEnvironment.isEmpty()) {
        return {{0, fromEnvironment}};
    }
    for (qsizetype i = 0; i < layers.size(); ++i) {
        const QString entry = layers.at(i).value(key).toString().trimmed();
        if (!entry.isEmpty()) {
            return {{i + 1, entry}};
        }
    }
    return std::nullopt;
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
    const auto found = find(key, informationDictionary_);
    return found ? std::optional(found->second) : std::nullopt;
}

std::optional<AppConfig::Layer> AppConfig::layerOf(const QString &key) const
{
    const auto found = find(key, informationDictionary_);
    return found ? std::optional(static_cast<Layer>(found->first)) : std::nullopt;
}

bool AppConfig::setUserValues(const QList<std::pair<QString, QString>> &values)
{
    QJsonObject changed;
    QFile present(userFile_);
    if (present.exists()) {
        // as it is now: somebody may have written it since it was read
        const bool isRead = present.open(QIODevice::ReadOnly);
        const QJsonDocument document = QJsonDocument::fromJson(present.readAll());
        if (!isRead || !document.isObject()) {
            return false;
        }
        changed = document.object();
        present.close();
    }
    for (const auto &[key, value] : values) {
        if (value.trimmed().isEmpty()) {
            changed.remove(key);
        } else {
            changed.insert(key, value.trimmed());
        }
    }
    const QFileInfo place(userFile_);
    QSaveFile file(userFile_);
    const bool isWritten = QDir().mkpath(place.absolutePath()) && file.open(QIODevice::WriteOnly)
        && file.setPermissions(QFile::ReadOwner | QFile::WriteOwner)
        && file.write(QJsonDocument(changed).toJson()) >= 0 && file.commit();
    if (isWritten) {
        informationDictionary_.first() = changed;
    }
    return isWritten;
}

} // namespace vellumo
