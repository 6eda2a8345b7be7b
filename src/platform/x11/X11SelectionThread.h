// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/X11SelectionServer.h"
#include <QThread>
#include <future>

namespace vellumo {

/// Serves a selection from a thread with a connection of its own. Clients that ask for the contents
/// never wait for the main thread: it may be busy, or be the one that asks, through the toolkit's
/// clipboard. Values go in and out, nothing is shared; the destructor joins the thread.
///
/// Main thread only. Every call blocks for a second at most.
class X11SelectionThread : private QThread {
public:
    /// An empty display means the one that the environment names.
    X11SelectionThread(QByteArray display, QByteArray selection);
    ~X11SelectionThread() override;
    Q_DISABLE_COPY_MOVE(X11SelectionThread)

    /// The window that owns the selection while it is served; XCB_WINDOW_NONE when nothing can be
    /// served, because there is no server or it does not answer.
    [[nodiscard]] xcb_window_t window();

    /// Becomes the owner with these contents; false when the server does not agree in time.
    bool own(const QList<X11SelectionServer::Content> &contents);

    /// Asks the desktop's clipboard manager to take the contents over and serves it until it has
    /// done so or the deadline has passed. Does nothing while another client owns the selection.
    void handOver(QDeadlineTimer deadline);

private:
    void run() override;

    /// Runs `question` on the thread; absent when it is not answered in time. It may then still
    /// run later.
    template <typename Answer, typename Question>
    [[nodiscard]] std::optional<Answer> ask(Question question);

    QByteArray display_;
    QByteArray selection_;
    std::promise<X11SelectionServer *> started_;
    std::shared_future<X11SelectionServer *> server_; ///< lives on the thread; null without X
};

} // namespace vellumo
