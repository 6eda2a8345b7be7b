// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "BackendProcess.h"

#include "NoteMaker.h"
#include "notes/StoreFile.h"
#include <QFile>

namespace vellumo::bench {

using namespace Qt::StringLiterals;

BackendProcess::BackendProcess(const QString &program, const QString &database)
    : tables_(std::make_unique<test::BackendTables>(database))
    , uid_(tables_->uidOf(u"reader@example.org"_s))
{
    process_.start(program, {u"--data"_s, database});
    while (environment_.size() < 4 && process_.waitForReadyRead()) {
        while (process_.canReadLine()) {
            const QString line = QString::fromLocal8Bit(process_.readLine()).trimmed();
            const qsizetype equals = line.indexOf(u'=');
            if (equals > 0 && !line.contains(u' '))
                environment_.append({line.left(equals), line.mid(equals + 1)});
        }
    }
    if (environment_.size() < 4)
        qFatal("the backend does not start");
    process_.closeReadChannel(QProcess::StandardOutput);
}

BackendProcess::~BackendProcess()
{
    process_.kill();
    process_.waitForFinished();
}

void writePendingNotes(const QString &path, int count)
{
    NoteMaker maker;
    StoreFile file;
    file.syncStates.emplace();
    file.buckets.append({NoteMaker::context(0), {}});
    for (int number = 0; number < count; ++number)
        file.buckets.first().notes.append(maker.note());
    QFile out(path);
    if (!out.open(QIODevice::WriteOnly) || out.write(file.toJson()) < 0)
        qFatal("cannot write %s", qPrintable(path));
}

} // namespace vellumo::bench
