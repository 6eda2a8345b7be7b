// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "settings/ConfigurationFault.h"
#include <QJsonObject>
#include <QList>
#include <QString>
#include <optional>

namespace vellumo {

/// Configuration values from outside: keys and endpoints of services.
class AppConfig {
public:
    /// The information dictionary's layers, the strongest first.
    explicit AppConfig(QList<QJsonObject> informationDictionary);

    /// Reads the user's Info.json and below it the installation's. A missing file is an empty
    /// dictionary, and so is one with a fault.
    [[nodiscard]] static AppConfig load();
    [[nodiscard]] static AppConfig load(const QString &userFile, const QString &installedFile);

    /// Takes what the environment says out of it, for value() alone: programs that are started from
    /// here do not get it. Before there is another thread.
    static void takeFromEnvironment();

    /// What is wrong with who can read the file, for a log; empty if nothing is.
    [[nodiscard]] static QString exposureOf(const QString &userFile);

    /// The value from the process environment, else from the information dictionary, trimmed. A
    /// blank value, or one that is not a string, counts as absent and hides nothing.
    [[nodiscard]] std::optional<QString> value(const QString &key) const;
    /// Whether the environment says it, which goes before the rest.
    [[nodiscard]] static bool isInEnvironment(const QString &key);

    /// What is wrong with the files, the user's first; entries are looked at that a service needs.
    [[nodiscard]] const std::optional<ConfigurationFault> &fault() const { return fault_; }

    /// The user's Info.json; empty if the configuration does not come from files.
    [[nodiscard]] const QString &userFile() const { return userFile_; }

private:
    QList<QJsonObject> informationDictionary_;
    QString userFile_;
    std::optional<ConfigurationFault> fault_;
};

} // namespace vellumo
