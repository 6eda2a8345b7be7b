// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/SessionBus.h"

#include "platform/Diagnostics.h"
#include "platform/dbus/Background.h"

namespace vellumo {

void SessionBus::open()
{
    if (result_) {
        return;
    }
    result_ = std::make_shared<std::optional<QDBusConnection>>();
    thread_ = runInBackground(
        this, [result = result_] { *result = QDBusConnection::sessionBus(); },
        [this] { finish(); });
}

void SessionBus::waitUntilOpened(std::chrono::milliseconds timeout)
{
    if (!finished_ && thread_ && thread_->wait(QDeadlineTimer(timeout))) {
        finish();
    }
}

void SessionBus::finish()
{
    if (finished_) {
        return;
    }
    finished_ = true;
    if (*result_ && (*result_)->isConnected()) {
        connection_ = **result_;
    } else {
        printDiagnostic(QStringLiteral("there is no session bus; other applications cannot be "
                                       "read"));
    }
    Q_EMIT opened();
}

} // namespace vellumo
