// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/wayland/client/DataControlProtocol.h"
#include <QByteArray>
#include <QList>
#include <atomic>
#include <thread>
#include <wayland-server.h>

namespace vellumo {

/// How the test's application answers a request for one of its types.
enum class Answer {
    Text,
    Nothing,
    Endless,
    Closed,
    Dies, ///< in the middle of the text
};

struct Behaviour {
    QByteArray types = "text/plain;charset=utf-8"; ///< separated by spaces
    QByteArray text = "selected";
    Answer answer = Answer::Text;
};

/// A compositor with data control, in a thread. Its application publishes one text as PRIMARY and
/// CLIPBOARD as soon as a client has a device.
class TestCompositor {
public:
    TestCompositor(const DataControlProtocol &protocol, Behaviour behaviour);
    ~TestCompositor();
    Q_DISABLE_COPY_MOVE(TestCompositor)

    /// Makes the compositor answer nothing until it is resumed.
    void stop() { isStopped_ = true; }
    void resume() { isStopped_ = false; }

    /// Lets a client that never reads request the first type of the clipboard's owner.
    void requestWithoutReading() { isRequested_ = true; }

private:
    static TestCompositor &self(wl_resource *resource);
    static void bindSeat(wl_client *client, void *data, uint32_t version, uint32_t id);
    static void bindManager(wl_client *client, void *data, uint32_t version, uint32_t id);
    static void createSource(wl_client *client, wl_resource *manager, uint32_t id);
    static void getDevice(wl_client *client, wl_resource *manager, uint32_t id, wl_resource *seat);
    static void setSelection(wl_client *client, wl_resource *device, wl_resource *source);
    static void receive(wl_client *client, wl_resource *offer, const char *type, int descriptor);

    void run();
    void announce(wl_resource *device, uint32_t event, const QByteArrayList &types);
    void replaceOwner(wl_resource *source, bool isEmpty);
    void answer(int descriptor);

    const DataControlProtocol &protocol_;
    Behaviour behaviour_;
    wl_display *display_;
    QList<wl_resource *> devices_;
    wl_resource *source_ = nullptr; ///< the clipboard's owner; null for the application
    QByteArrayList sourceTypes_; ///< of the last source
    QList<int> held_;
    std::atomic<bool> isOver_ = false;
    std::atomic<bool> isStopped_ = false;
    std::atomic<bool> isRequested_ = false;
    std::thread thread_;
};

} // namespace vellumo
