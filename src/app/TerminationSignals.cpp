// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/TerminationSignals.h"

#include <QSocketNotifier>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace vellumo {

namespace {

// A handler may do little more than write. Blocking the signals instead would reach the programs
// that we start.
volatile std::sig_atomic_t writeEnd = -1;

void onSignal(int)
{
    const char byte = 0;
    [[maybe_unused]] const ssize_t written = ::write(writeEnd, &byte, 1);
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent) : QObject(parent)
{
    if (::pipe2(pipe_.data(), O_CLOEXEC | O_NONBLOCK) != 0) {
        return; // the signals keep their default, which ends the process at once
    }
    auto *notifier = new QSocketNotifier(pipe_[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this, notifier] {
        notifier->setEnabled(false);
        Q_EMIT received();
    });

    writeEnd = pipe_[1];
    struct sigaction action { };
    action.sa_handler = onSignal;
    action.sa_flags =
        SA_RESTART | static_cast<int>(SA_RESETHAND); // a second one ends a hung program
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

TerminationSignals::~TerminationSignals()
{
    if (pipe_[0] < 0) {
        return;
    }
    struct sigaction ignored { };
    ignored.sa_handler = SIG_IGN;
    sigaction(SIGINT, &ignored, nullptr);
    sigaction(SIGTERM, &ignored, nullptr);
    writeEnd = -1;
    ::close(pipe_[0]);
    ::close(pipe_[1]);
}

} // namespace vellumo
