// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/LoginStart.h"
#include <QFileSystemWatcher>
#include <QStringList>

namespace vellumo {

/// An XDG autostart entry, which the desktop's own settings may switch off and on as well.
class AutostartEntry final : public LoginStart {
    Q_OBJECT

public:
    /// `folders` are the "autostart" folders, the user's own first; `program` is the name or the
    /// path of the program. Lines that others added to the user's entry are kept.
    AutostartEntry(QStringList folders, QString program, QObject *parent = nullptr);

    /// Returns the folders of XDG_CONFIG_HOME and XDG_CONFIG_DIRS.
    [[nodiscard]] static QStringList standardFolders();
    /// Returns this program's name if PATH resolves it to this file, else its path.
    [[nodiscard]] static QString ownProgram();

    [[nodiscard]] State state() const override;
    [[nodiscard]] bool setOn(bool isOn) override;

private:
    [[nodiscard]] QString userFile() const;
    [[nodiscard]] bool isSetForAll() const;
    [[nodiscard]] bool switchOff();
    [[nodiscard]] bool switchOn();
    [[nodiscard]] bool write(const QByteArray &entry);

    QStringList folders_;
    QString program_;
    QFileSystemWatcher watcher_;
};

} // namespace vellumo
