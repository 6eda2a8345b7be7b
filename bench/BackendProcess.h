// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "backend/BackendTables.h"
#include <QProcess>
#include <memory>

namespace vellumo::bench {

using Environment = QList<std::pair<QString, QString>>;

/// The stand-in backend in a separate process, so that it does not affect the measured time. Has
/// one account.
class BackendProcess {
public:
    BackendProcess(const QString &program, const QString &database);
    ~BackendProcess();
    BackendProcess(const BackendProcess &) = delete;
    BackendProcess &operator=(const BackendProcess &) = delete;
    BackendProcess(BackendProcess &&) = delete;
    BackendProcess &operator=(BackendProcess &&) = delete;

    [[nodiscard]] const Environment &environment() const { return environment_; }
    [[nodiscard]] const QString &uid() const { return uid_; }
    /// The backend's database, read and written directly.
    [[nodiscard]] test::BackendTables &tables() const { return *tables_; }

private:
    std::unique_ptr<test::BackendTables> tables_;
    QString uid_;
    QProcess process_;
    Environment environment_;
};

/// Writes a notes file with this many notes, none of which the backend has.
void writePendingNotes(const QString &path, int count);

} // namespace vellumo::bench
