// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/Processes.h"

#include <QFile>
#include <QList>

namespace vellumo {
namespace {

/// Sandboxes insert two or three processes between an application and its children.
constexpr int maxGenerations = 6;

QByteArray contentsOf(qint64 process, const QByteArray &file)
{
    QFile opened(QStringLiteral("/proc/%1/%2").arg(process).arg(QLatin1StringView(file)));
    return opened.open(QIODevice::ReadOnly) ? opened.readAll() : QByteArray();
}

qint64 parentOf(qint64 process)
{
    // The name, which may contain any character, is in parentheses before the state and the parent.
    const QByteArray stat = contentsOf(process, "stat");
    return stat.mid(stat.lastIndexOf(')') + 2).split(' ').value(1).toLongLong();
}

} // namespace

QByteArray processName(qint64 processIdentifier)
{
    return contentsOf(processIdentifier, "comm").trimmed();
}

bool isAncestor(qint64 ancestor, qint64 processIdentifier)
{
    qint64 process = processIdentifier;
    for (int i = 0; i < maxGenerations && process > 1; ++i) {
        process = parentOf(process);
        if (process == ancestor) {
            return true;
        }
    }
    return false;
}

bool hasDescendant(qint64 processIdentifier, const QByteArray &name)
{
    QList<qint64> generation{processIdentifier};
    for (int i = 0; i < maxGenerations && !generation.isEmpty(); ++i) {
        QList<qint64> next;
        for (const qint64 process : std::as_const(generation)) {
            const auto children =
                contentsOf(process, "task/" + QByteArray::number(process) + "/children");
            for (const QByteArray &child : children.split(' ')) {
                if (const qint64 started = child.toLongLong(); started > 0) {
                    next.append(started);
                }
            }
        }
        for (const qint64 process : std::as_const(next)) {
            if (processName(process) == name) {
                return true;
            }
        }
        generation = next;
    }
    return false;
}

} // namespace vellumo
