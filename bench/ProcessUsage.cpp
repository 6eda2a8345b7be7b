// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "ProcessUsage.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace vellumo::bench {

namespace {

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Returns the number after a name in a file such as /proc/PID/status.
double valueOf(const QByteArray &text, const QByteArray &name)
{
    const qsizetype at = text.indexOf('\n' + name + ':');
    if (at < 0)
        return 0;
    const QByteArray line = text.mid(at + name.size() + 2).trimmed();
    return line.left(line.indexOf('\n')).split(' ').first().toDouble();
}

} // namespace

Usage usageOf(qint64 process)
{
    Usage usage;
    const QString tasks = u"/proc/%1/task"_s.arg(process);
    const QStringList threads = QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &thread : threads) {
        const QString folder = tasks + u'/' + thread;
        usage.processorMs +=
            contentOf(folder + u"/schedstat"_s).split(' ').first().toDouble() / 1e6;
        usage.wakeUps += valueOf(contentOf(folder + u"/status"_s), "voluntary_ctxt_switches");
    }
    return usage;
}

Memory memoryOf(qint64 process)
{
    const QByteArray memory = '\n' + contentOf(u"/proc/%1/smaps_rollup"_s.arg(process));
    return {valueOf(memory, "Rss") / 1024, valueOf(memory, "Private_Dirty") / 1024};
}

} // namespace vellumo::bench
