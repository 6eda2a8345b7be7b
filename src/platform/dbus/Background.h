// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>
#include <QThread>
#include <functional>

namespace vellumo {

/// Runs `work` on a new thread and then `done` on the thread of `context`, unless the context is
/// destroyed first. For calls that another process can block without limit; such a thread is left
/// running at exit. The thread deletes itself through the event loop.
inline QThread *runInBackground(QObject *context, std::function<void()> work,
                                std::function<void()> done)
{
    QThread *thread = QThread::create(std::move(work));
    QObject::connect(thread, &QThread::finished, context, std::move(done));
    QObject::connect(thread, &QThread::finished, thread, &QObject::deleteLater);
    thread->start();
    return thread;
}

} // namespace vellumo
