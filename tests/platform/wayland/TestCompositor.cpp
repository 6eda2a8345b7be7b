// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "TestCompositor.h"

#include <chrono>
#include <fcntl.h>
#include <unistd.h>
#include <utility>

using namespace std::chrono_literals;

namespace vellumo {

namespace {

// Numbers of events.
enum DeviceEvent { DataOffer = 0, Clipboard = 1, Primary = 3 };
enum SourceEvent { Send = 0, Cancelled = 1 };

void destroy(wl_client * /*client*/, wl_resource *resource)
{
    wl_resource_destroy(resource);
}

} // namespace

TestCompositor::TestCompositor(const DataControlProtocol &protocol, Behaviour behaviour)
    : protocol_(protocol)
    , behaviour_(std::move(behaviour))
    , display_(wl_display_create())
{
    wl_display_add_socket(display_, "test");
    wl_global_create(display_, &wl_seat_interface, 1, this, &bindSeat);
    wl_global_create(display_, &protocol_.manager, protocol_.manager.version, this, &bindManager);
    thread_ = std::thread([this] { run(); });
}

TestCompositor::~TestCompositor()
{
    isOver_ = true;
    thread_.join();
    wl_display_destroy_clients(display_);
    wl_display_destroy(display_);
    for (const int descriptor : std::as_const(held_)) {
        ::close(descriptor);
    }
}

void TestCompositor::run()
{
    while (!isOver_) {
        if (isStopped_) {
            std::this_thread::sleep_for(5ms);
            continue;
        }
        wl_event_loop_dispatch(wl_display_get_event_loop(display_), 10);
        if (source_ != nullptr && isRequested_.exchange(false)) {
            int ends[2] = {-1, -1};
            static_cast<void>(::pipe2(ends, O_CLOEXEC));
            wl_resource_post_event(source_, Send, sourceTypes_.first().constData(), ends[1]);
            ::close(ends[1]);
            held_.append(ends[0]);
        }
        wl_display_flush_clients(display_);
    }
}

TestCompositor &TestCompositor::self(wl_resource *resource)
{
    return *static_cast<TestCompositor *>(wl_resource_get_user_data(resource));
}

void TestCompositor::bindSeat(wl_client *client, void *data, uint32_t version, uint32_t id)
{
    wl_resource *seat =
        wl_resource_create(client, &wl_seat_interface, static_cast<int>(version), id);
    wl_resource_set_implementation(seat, nullptr, data, nullptr);
}

void TestCompositor::bindManager(wl_client *client, void *data, uint32_t version, uint32_t id)
{
    static const struct {
        void (*createSource)(wl_client *, wl_resource *, uint32_t);
        void (*getDevice)(wl_client *, wl_resource *, uint32_t, wl_resource *);
    } requests{&createSource, &getDevice};
    wl_resource *manager =
        wl_resource_create(client, &static_cast<TestCompositor *>(data)->protocol_.manager,
                           static_cast<int>(version), id);
    wl_resource_set_implementation(manager, &requests, data, nullptr);
}

void TestCompositor::createSource(wl_client *client, wl_resource *manager, uint32_t id)
{
    static const struct {
        void (*offer)(wl_client *, wl_resource *, const char *);
        void (*destroy)(wl_client *, wl_resource *);
    } requests{[](wl_client *, wl_resource *source, const char *type) {
                   self(source).sourceTypes_.append(type);
               },
               &destroy};
    TestCompositor &compositor = self(manager);
    wl_resource *source = wl_resource_create(client, &compositor.protocol_.source,
                                             wl_resource_get_version(manager), id);
    compositor.sourceTypes_.clear();
    wl_resource_set_implementation(source, &requests, &compositor, [](wl_resource *destroyed) {
        if (self(destroyed).source_ == destroyed) {
            self(destroyed).replaceOwner(nullptr, true);
        }
    });
}

void TestCompositor::getDevice(wl_client *client, wl_resource *manager, uint32_t id,
                               wl_resource * /*seat*/)
{
    static const struct {
        void (*setSelection)(wl_client *, wl_resource *, wl_resource *);
    } requests{&setSelection};
    TestCompositor &compositor = self(manager);
    wl_resource *device = wl_resource_create(client, &compositor.protocol_.device,
                                             wl_resource_get_version(manager), id);
    wl_resource_set_implementation(device, &requests, &compositor, [](wl_resource *destroyed) {
        self(destroyed).devices_.removeOne(destroyed);
    });
    compositor.devices_.append(device);
    const auto types = compositor.behaviour_.types.split(' ');
    compositor.announce(device, Primary, types);
    compositor.announce(device, Clipboard,
                        compositor.source_ != nullptr ? compositor.sourceTypes_ : types);
}

void TestCompositor::announce(wl_resource *device, uint32_t event, const QByteArrayList &types)
{
    static const struct {
        void (*receive)(wl_client *, wl_resource *, const char *, int);
        void (*destroy)(wl_client *, wl_resource *);
    } requests{&receive, &destroy};
    if (types.isEmpty()) {
        wl_resource_post_event(device, event, nullptr);
        return;
    }
    wl_resource *offer = wl_resource_create(wl_resource_get_client(device), &protocol_.offer,
                                            wl_resource_get_version(device), 0);
    wl_resource_set_implementation(offer, &requests, this, nullptr);
    wl_resource_post_event(device, DataOffer, offer);
    for (const QByteArray &type : types) {
        wl_resource_post_event(offer, 0, type.constData());
    }
    wl_resource_post_event(device, event, offer);
}

void TestCompositor::setSelection(wl_client * /*client*/, wl_resource *device, wl_resource *source)
{
    self(device).replaceOwner(source, source == nullptr);
}

void TestCompositor::replaceOwner(wl_resource *source, bool isEmpty)
{
    if (wl_resource *former = std::exchange(source_, source); former != nullptr && !isEmpty) {
        wl_resource_post_event(former, Cancelled);
    }
    for (wl_resource *each : std::as_const(devices_)) {
        announce(each, Clipboard, isEmpty ? QByteArrayList() : sourceTypes_);
    }
}

void TestCompositor::receive(wl_client * /*client*/, wl_resource *offer, const char *type,
                             int descriptor)
{
    TestCompositor &compositor = self(offer);
    if (compositor.source_ == nullptr) {
        compositor.answer(descriptor);
        return;
    }
    wl_resource_post_event(compositor.source_, Send, type, descriptor);
    ::close(descriptor);
}

void TestCompositor::answer(int descriptor)
{
    const auto write = [descriptor](const QByteArray &bytes) {
        return ::write(descriptor, bytes.constData(), static_cast<std::size_t>(bytes.size())) > 0;
    };
    switch (behaviour_.answer) {
    case Answer::Nothing:
        held_.append(descriptor);
        return;
    case Answer::Endless:
        while (write("abcdefgh")) { }
        break;
    case Answer::Text:
        write(behaviour_.text);
        break;
    case Answer::Dies:
        write(behaviour_.text.first(behaviour_.text.size() / 2));
        replaceOwner(nullptr, true);
        break;
    case Answer::Closed:
        break;
    }
    ::close(descriptor);
}

} // namespace vellumo
