// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/atspi/AltKeys.h"

#include "platform/atspi/AltKeyListener.h"
#include "platform/atspi/AtspiBus.h"
#include <QThread>
#include <utility>

namespace vellumo {

AltKeys::AltKeys(AtspiBus &bus)
{
    connect(&bus, &AtspiBus::opened, this, [this, &bus] { listen(bus.address()); });
    connect(&bus, &AtspiBus::closed, this, &AltKeys::stop);
    if (bus.isOpen()) {
        listen(bus.address());
    }
}

AltKeys::~AltKeys()
{
    stop();
}

void AltKeys::listen(const QString &address)
{
    stop();
    listener_ = std::make_shared<AltKeyListener>();
    thread_ = new QThread;
    thread_->setObjectName(QStringLiteral("alt keys"));
    connect(thread_, &QThread::finished, thread_, &QObject::deleteLater);
    listener_->moveToThread(thread_);
    connect(listener_.get(), &AltKeyListener::pressed, this, &TapSource::pressed);
    connect(listener_.get(), &AltKeyListener::released, this, &TapSource::released);
    thread_->start();
    QMetaObject::invokeMethod(
        listener_.get(), [listener = listener_, address] { listener->open(address); },
        Qt::QueuedConnection);
}

void AltKeys::stop()
{
    const auto listener = std::exchange(listener_, nullptr);
    if (!listener) {
        return;
    }
    disconnect(listener.get(), nullptr, this, nullptr);
    // Not waited for: the thread may be connecting to a bus that does not answer.
    QMetaObject::invokeMethod(
        listener.get(),
        [listener, thread = thread_] {
            listener->close();
            thread->quit();
        },
        Qt::QueuedConnection);
}

bool AltKeys::waitForRelease(QDeadlineTimer deadline)
{
    return !listener_ || listener_->waitForRelease(deadline);
}

} // namespace vellumo
