// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/x11/X11SelectionServer.h"
#include <QThread>
#include <future>

namespace vellumo {

/// Serves a selection from a thread with a connection of its own. Requestors never wait for the
/// main thread, which may be busy or be the requestor itself, through the toolkit's clipboard.
/// Values are copied in and out; nothing is shared. The destructor joins the thread.
///
/// Main thread only. Every call blocks for a second at most.
class X11SelectionThread : private QThread {
public:
    /// An empty display means the one that the environment names.
    X11SelectionThread(QByteArray display, QByteArray selection);
    ~X11SelectionThread() override;
    Q_DISABLE_COPY_MOVE(X11SelectionThread)

    /// Returns the window that owns the selection while it is served; XCB_WINDOW_NONE when nothing
    /// can be served, because there is no server or it does not answer.
    [[nodiscard]] xcb_window_t window();

    /// Becomes the owner with these contents. Returns false when the server refuses or does not
    /// answer in time.
    bool own(const QList<X11SelectionServer::Content> &contents);

    /// Asks the desktop's clipboard manager to take over the contents and serves it until it has
    /// done so or the deadline has passed. Does nothing while another client owns the selection.
    void handOver(QDeadlineTimer deadline);

private:
    void run() override;

    /// Runs `question` on the thread and returns its result; absent on timeout, in which case it
    /// may still run later.
    template <typename Answer, typename Question>
    [[nodiscard]] std::optional<Answer> ask(Question question);

    QByteArray display_;
    QByteArray selection_;
    std::promise<X11SelectionServer *> started_;
    std::shared_future<X11SelectionServer *> server_; ///< belongs to the thread; null without X
};

} // namespace vellumo
