// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/DesktopTool.h"

#include <QProcess>
#include <QStandardPaths>
#include <QTimer>
#include <chrono>
#include <utility>

namespace vellumo::desktopTool {

namespace {

constexpr std::chrono::seconds deadline{5};

} // namespace

QString find(const QStringList &programs)
{
    for (const QString &program : programs) {
        if (QString path = QStandardPaths::findExecutable(program); !path.isEmpty()) {
            return path;
        }
    }
    return {};
}

void run(const QString &program, const QStringList &arguments, QObject *context,
         std::function<void(const std::optional<QByteArray> &output)> completion)
{
    auto *process = new QProcess(context);
    process->setStandardInputFile(QProcess::nullDevice());
    process->setStandardErrorFile(QProcess::nullDevice());
    const auto end = [process, completion = std::move(completion)] {
        const bool isGood = process->exitStatus() == QProcess::NormalExit
            && process->exitCode() == 0 && process->error() == QProcess::UnknownError;
        const auto output = isGood ? std::optional(process->readAllStandardOutput()) : std::nullopt;
        process->deleteLater();
        completion(output);
    };
    QObject::connect(process, &QProcess::finished, process, end, Qt::QueuedConnection);
    QObject::connect(
        process, &QProcess::errorOccurred, process,
        [end](QProcess::ProcessError error) {
            if (error == QProcess::FailedToStart) { // finished() does not follow
                end();
            }
        },
        Qt::QueuedConnection);
    QTimer::singleShot(deadline, process, &QProcess::kill);
    process->start(program, arguments);
}

} // namespace vellumo::desktopTool
