// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Pasteboard.h"
#include "platform/wayland/client/DataControlProtocol.h"
#include <QList>
#include <QSocketNotifier>
#include <chrono>
#include <memory>
#include <wayland-client.h>

namespace vellumo {

/// PRIMARY of all windows, native ones and those of XWayland, on a separate connection. The
/// compositor does not name the application that published. After the connection is lost nothing is
/// published any more.
class DataControlPrimary : public PrimarySelection {
public:
    /// Connects to the compositor that the environment names. Returns null when there is none.
    /// Does not wait for answers: nothing is published until the compositor has answered, or if it
    /// offers no data control with PRIMARY.
    [[nodiscard]] static std::unique_ptr<DataControlPrimary> connect();
    ~DataControlPrimary() override;
    Q_DISABLE_COPY_MOVE(DataControlPrimary)

    [[nodiscard]] std::optional<Publication> publication() override;
    [[nodiscard]] bool publishes(qint64 processIdentifier) override;
    [[nodiscard]] std::optional<QString> string(QDeadlineTimer deadline) override;

private:
    using Time = std::chrono::steady_clock::time_point;

    /// Contents that are announced before they become a selection.
    struct Offer {
        wl_proxy *proxy = nullptr;
        QList<QByteArray> types;
    };
    struct Global {
        uint32_t name = 0;
        uint32_t version = 0;
    };

    explicit DataControlPrimary(wl_display *display);

    void expectAnswer();
    void bind();
    [[nodiscard]] bool flush(QDeadlineTimer deadline);
    void readEvents();
    void lose();
    void drop(wl_proxy *offer);
    [[nodiscard]] std::optional<QByteArray> read(wl_proxy *offer, const QByteArray &type,
                                                 QDeadlineTimer deadline);

    // Listeners, which the client library calls while it dispatches events.
    static void onGlobal(void *data, wl_registry *registry, uint32_t name, const char *interface,
                         uint32_t version);
    static void onGlobalRemoved(void *data, wl_registry *registry, uint32_t name);
    static void onSynchronized(void *data, wl_callback *callback, uint32_t serial);
    static void onDataOffer(void *data, wl_proxy *device, wl_proxy *offer);
    static void onSelection(void *data, wl_proxy *device, wl_proxy *offer);
    static void onFinished(void *data, wl_proxy *device);
    static void onPrimarySelection(void *data, wl_proxy *device, wl_proxy *offer);
    static void onOfferType(void *data, wl_proxy *offer, const char *type);

    wl_display *display_;
    wl_registry *registry_;
    std::unique_ptr<QSocketNotifier> notifier_;
    wl_callback *synchronization_ = nullptr; ///< null when no answer is awaited
    wl_proxy *manager_ = nullptr;
    wl_proxy *device_ = nullptr;
    wl_seat *seat_ = nullptr;
    const DataControlProtocol *protocol_ = nullptr;
    Global seatGlobal_;
    Global wlrGlobal_;
    Global extGlobal_;
    QList<Offer> offers_;
    wl_proxy *primary_ = nullptr; ///< one of offers_; null when nothing is published
    wl_proxy *clipboard_ = nullptr;
    Time publishedAt_;
    std::optional<Time> readAt_;
    bool isStarted_ = false; ///< the state at the start has arrived
};

} // namespace vellumo
