// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/wayland/client/DataControlProtocol.h"
#include <QByteArray>
#include <QList>
#include <functional>

namespace vellumo {

class WaylandConnection;

/// Contents that a compositor announces.
struct DataOffer {
    wl_proxy *proxy = nullptr;
    QList<QByteArray> types;
};

/// Follows CLIPBOARD and PRIMARY of all windows, native ones and those of XWayland, through the
/// compositor's data control. The compositor does not name the applications that own them.
class DataControlDevice {
public:
    /// Called when a selection has changed, while events are read.
    using Changed = std::function<void()>;

    /// `connection` must outlive this object. Selections are known after it was answered twice;
    /// `onChange` is also called for those that exist at the start.
    DataControlDevice(WaylandConnection &connection, Changed onClipboardChange,
                      Changed onPrimaryChange);
    ~DataControlDevice();
    Q_DISABLE_COPY_MOVE(DataControlDevice)

    /// Returns whether the compositor has data control and its connection is not lost.
    [[nodiscard]] bool isOffered() const;

    /// Returns whether the selections that exist at the start have been announced.
    [[nodiscard]] bool isStarted() const { return isStarted_; }

    /// Both return null when nothing is published. The offer is valid until events are read.
    [[nodiscard]] const DataOffer *clipboard() const { return find(clipboard_); }
    [[nodiscard]] const DataOffer *primary() const { return find(primary_); }

    /// Returns a new source that offers these types and has its events in this queue. The caller
    /// owns the proxy.
    [[nodiscard]] wl_proxy *makeSource(const QList<QByteArray> &types, wl_event_queue *queue);

    /// Replaces the clipboard by a source, or by nothing if it is null. The request is not sent
    /// yet.
    void setClipboard(wl_proxy *source);

private:
    void bind();
    void drop(wl_proxy *offer);
    [[nodiscard]] const DataOffer *find(const wl_proxy *offer) const;

    // Listeners, which the client library calls while it dispatches events.
    static void onDataOffer(void *data, wl_proxy *device, wl_proxy *offer);
    static void onSelection(void *data, wl_proxy *device, wl_proxy *offer);
    static void onFinished(void *data, wl_proxy *device);
    static void onPrimarySelection(void *data, wl_proxy *device, wl_proxy *offer);
    static void onOfferType(void *data, wl_proxy *offer, const char *type);

    WaylandConnection &connection_;
    Changed onClipboardChange_;
    Changed onPrimaryChange_;
    const DataControlProtocol *protocol_ = nullptr;
    wl_proxy *seat_ = nullptr;
    wl_proxy *manager_ = nullptr;
    wl_proxy *device_ = nullptr; ///< null before the first answer and without data control
    QList<DataOffer> offers_; ///< some may not be a selection yet
    wl_proxy *primary_ = nullptr; ///< one of offers_, like the next
    wl_proxy *clipboard_ = nullptr;
    bool isStarted_ = false;
    bool isFinished_ = false; ///< by the compositor
};

} // namespace vellumo
