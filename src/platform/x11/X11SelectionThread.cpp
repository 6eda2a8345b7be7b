// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11SelectionThread.h"

#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Problems.h"
#include <chrono>
#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// A working server answers within milliseconds.
constexpr auto answerTimeout = 1s;

} // namespace

X11SelectionThread::X11SelectionThread(QByteArray display, QByteArray selection)
    : display_(std::move(display))
    , selection_(std::move(selection))
    , server_(started_.get_future())
{
    setObjectName(u"selection"_s);
    start();
}

X11SelectionThread::~X11SelectionThread()
{
    quit();
    wait();
}

void X11SelectionThread::run()
{
    X11Problems problems;
    problems.muteLoss();
    X11Connection connection(problems, display_);
    X11SelectionServer server(connection, connection.atom(selection_));
    connection.setEventHandler([&server](const auto &event) { server.handleEvent(event); });
    connection.flush();
    started_.set_value(connection.isUsable() ? &server : nullptr);
    exec();
    connection.setEventHandler(nullptr);
}

template <typename Answer, typename Question>
std::optional<Answer> X11SelectionThread::ask(Question question)
{
    if (window() == XCB_WINDOW_NONE) {
        return std::nullopt;
    }
    auto promise = std::make_shared<std::promise<Answer>>();
    auto answer = promise->get_future();
    auto *server = server_.get();
    QMetaObject::invokeMethod(
        server, [server, promise, question] { promise->set_value(question(*server)); },
        Qt::QueuedConnection);
    if (answer.wait_for(answerTimeout) != std::future_status::ready) {
        return std::nullopt;
    }
    return answer.get();
}

xcb_window_t X11SelectionThread::window()
{
    const bool isStarted = server_.wait_for(answerTimeout) == std::future_status::ready;
    return isStarted && server_.get() != nullptr ? server_.get()->window()
                                                 : xcb_window_t{XCB_WINDOW_NONE};
}

bool X11SelectionThread::own(const QList<X11SelectionServer::Content> &contents)
{
    return ask<bool>([contents](X11SelectionServer &server) { return server.own(contents); })
        .value_or(false);
}

void X11SelectionThread::handOver(QDeadlineTimer deadline)
{
    static_cast<void>(ask<bool>([deadline](X11SelectionServer &server) {
        server.handOver(deadline);
        return true;
    }));
}

} // namespace vellumo
