// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/WorkSlices.h"

#include <QElapsedTimer>

namespace vellumo {

WorkSlices::WorkSlices(std::chrono::milliseconds slice, Portion portion, QObject *parent)
    : QObject(parent)
    , slice_(slice)
    , portion_(std::move(portion))
{
    connect(&timer_, &QTimer::timeout, this, &WorkSlices::work);
}

void WorkSlices::start()
{
    stop();
    work();
}

void WorkSlices::work()
{
    QElapsedTimer sinceBegin;
    sinceBegin.start();
    while (portion_()) {
        if (!sinceBegin.hasExpired(slice_.count())) {
            continue;
        }
        const bool isFirst = !isActive();
        timer_.start(); // anew, so that other timers that are due come before the next slice
        if (isFirst) {
            Q_EMIT postponed();
        }
        return;
    }
    stop();
    Q_EMIT finished();
}

} // namespace vellumo
