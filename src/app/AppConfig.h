// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QJsonObject>
#include <QList>
#include <QString>
#include <optional>
#include <utility>

namespace vellumo {

/// Configuration values from outside: keys and endpoints of services.
class AppConfig {
public:
    /// Where a value stands, the strongest first.
    enum class Layer : quint8 { environment, user, installation };

    /// The information dictionary's layers, the strongest first.
    explicit AppConfig(QList<QJsonObject> informationDictionary);

    /// Reads the user's Info.json and below it the installation's. A missing or malformed file is
    /// an empty dictionary.
    [[nodiscard]] static AppConfig load();
    [[nodiscard]] static AppConfig load(const QString &userFile, const QString &installedFile);

    /// The value from the process environment, else from the information dictionary, trimmed. A
    /// blank value, or one that is not a string, counts as absent and hides nothing.
    [[nodiscard]] std::optional<QString> value(const QString &key) const;
    /// Where value() finds it; absent without a value.
    [[nodiscard]] std::optional<Layer> layerOf(const QString &key) const;

    /// The user's Info.json; empty if the configuration does not come from files.
    [[nodiscard]] const QString &userFile() const { return userFile_; }

    /// Writes entries into the user's Info.json, which stays readable by the user alone, and takes
    /// them over; a blank value removes its entry. False, with nothing changed, when the file
    /// cannot be written, or stands there and is no object: that would lose what somebody wrote.
    [[nodiscard]] bool setUserValues(const QList<std::pair<QString, QString>> &values);

private:
    QList<QJsonObject> informationDictionary_;
    QString userFile_;
};

} // namespace vellumo
