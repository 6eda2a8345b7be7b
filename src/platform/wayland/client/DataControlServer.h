// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"
#include <QDeadlineTimer>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <thread>
#include <wayland-client-core.h>

namespace vellumo {

class DataControlDevice;

/// Owns the clipboard and serves it from a thread with a separate event queue of the connection, so
/// that other programs paste without waiting for the main thread. A second connection would have to
/// be accepted, for which compositors that check the program need a while. A client that stops
/// reading delays no other one and is dropped. Main thread only.
class DataControlServer {
public:
    /// The connection of `display` must outlive this object. `onRead` is called in the thread when
    /// it may have read events of other queues, whose readers do not notice this themselves.
    DataControlServer(wl_display *display, std::function<void()> onRead);

    /// Ends the ownership after clients that are reading have got everything; blocks for a second
    /// at most. Clipboard managers have read the contents when they were announced.
    ~DataControlServer();
    Q_DISABLE_COPY_MOVE(DataControlServer)

    /// Becomes the owner with these contents. The requests are not sent yet.
    void own(DataControlDevice &device, const PasteboardItem &contents);

private:
    /// Contents that are owned until the compositor cancels them.
    struct Source {
        DataControlServer &server;
        PasteboardItem contents;
        wl_proxy *proxy = nullptr;
    };
    /// A client that is reading one type.
    struct Transfer {
        int descriptor = -1;
        QByteArray bytes;
        qsizetype sent = 0;
        QDeadlineTimer deadline;
    };

    void run();
    [[nodiscard]] bool isOver();
    [[nodiscard]] bool readEvents(QDeadlineTimer end);
    [[nodiscard]] bool waitForWork(bool isConnected, QDeadlineTimer end) const;
    void continueTransfers();
    [[nodiscard]] static bool continueTransfer(Transfer &transfer);

    // Listeners, which the client library calls in the thread.
    static void onSend(void *data, wl_proxy *proxy, const char *type, int descriptor);
    static void onCancelled(void *data, wl_proxy *proxy);

    wl_display *display_;
    wl_event_queue *queue_;
    std::function<void()> onRead_;
    int wakeDescriptor_;
    std::mutex mutex_;
    std::list<std::unique_ptr<Source>> sources_; ///< guarded by the mutex, like the next
    bool isOver_ = false;
    std::list<Transfer> transfers_; ///< of the thread
    std::thread thread_;
};

} // namespace vellumo
