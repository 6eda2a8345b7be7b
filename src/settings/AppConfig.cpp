// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "settings/AppConfig.h"

#include "platform/Diagnostics.h"
#include "platform/ProgramEnvironment.h"
#include "settings/ConfigurationKeys.h"

#include <QCoreApplication>
#include <QFile>
#include <QJsonDocument>
#include <QJsonValue>
#include <QStandardPaths>
#include <algorithm>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

std::optional<ConfigurationFault> faultOfEntries(const QJsonObject &dictionary, const QString &path)
{
    constexpr std::array prefixes{"OPENAI_"_L1, "VELLUMO_"_L1, "FIREBASE_"_L1};
    for (auto entry = dictionary.begin(); entry != dictionary.end(); ++entry) {
        const bool isKnown = std::ranges::any_of(
            prefixes, [&](QLatin1StringView prefix) { return entry.key().startsWith(prefix); });
        if (isKnown && !entry.value().isString()) {
            return ConfigurationFault{
                .kind = ConfigurationFault::Kind::Entry, .path = path, .entry = entry.key()};
        }
    }
    return std::nullopt;
}

/// The dictionary, as far as there is one; the first fault that is found stays.
QJsonObject readDictionary(const QString &path, std::optional<ConfigurationFault> &fault)
{
    const auto note = [&fault](const std::optional<ConfigurationFault> &found) {
        fault = fault ? fault : found;
    };
    QFile file(path);
    if (!file.exists()) {
        return {};
    }
    if (!file.open(QIODevice::ReadOnly)) {
        note(ConfigurationFault{.kind = ConfigurationFault::Kind::Unopenable, .path = path});
        return {};
    }
    const QByteArray content = file.readAll();
    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(content, &error);
    if (!document.isObject()) {
        const auto lines = content.left(error.offset).count('\n');
        note(ConfigurationFault{.path = path, .line = static_cast<int>(lines) + 1});
    }
    note(faultOfEntries(document.object(), path));
    return document.object();
}

QString fromEnvironment(const QString &key)
{
    return programEnvironment::own(key).trimmed();
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
    if (const QString exposure = exposureOf(userFile); !exposure.isEmpty()) {
        printDiagnostic(exposure);
    }
    return load(userFile,
                QCoreApplication::applicationDirPath() + u"/../share/vellumo/Info.json"_s);
}

void AppConfig::takeFromEnvironment()
{
    programEnvironment::takeOwn(configuration::all);
}

QString AppConfig::exposureOf(const QString &userFile)
{
    constexpr QFile::Permissions others = QFile::ReadGroup | QFile::ReadOther;
    std::optional<ConfigurationFault> fault;
    const QJsonObject dictionary = readDictionary(userFile, fault);
    const auto has = [&dictionary](const QString &key) {
        return !dictionary.value(key).toString().trimmed().isEmpty();
    };
    const bool hasSecret = has(configuration::openAIKey) || has(configuration::clientToken);
    return hasSecret && (QFile::permissions(userFile) & others)
        ? u"other users can read the key in %1; chmod 600 keeps it from them"_s.arg(userFile)
        : QString();
}

AppConfig AppConfig::load(const QString &userFile, const QString &installedFile)
{
    std::optional<ConfigurationFault> fault;
    const QJsonObject ofUser = readDictionary(userFile, fault);
    AppConfig config({ofUser, readDictionary(installedFile, fault)});
    config.userFile_ = userFile;
    config.fault_ = fault;
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
