// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/wayland/client/DataControlPrimary.h"

#include "platform/Accessibility.h"
#include "platform/wayland/client/WaylandClientModule.h"
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace vellumo {

namespace {

/// A longer text exceeds maxSelectionLength in any encoding.
constexpr qsizetype maxBytes = 4 * (maxSelectionLength + 1);

constexpr qsizetype maxTypes = 256;

/// The types of plain text, the best one first. Those of X11 are offered for XWayland's windows.
constexpr const char *textTypes[] = {"text/plain;charset=utf-8", "UTF8_STRING", "text/plain",
                                     "STRING", "TEXT"};

/// Password managers add this type to what must not be kept.
constexpr const char *secretType = "x-kde-passwordManagerHint";

/// Waits for an event of the file descriptor. Returns whether it occurred before the deadline.
bool waitFor(int descriptor, short events, QDeadlineTimer deadline)
{
    pollfd request{descriptor, events, 0};
    int count = 0;
    do {
        const qint64 remaining = deadline.remainingTime();
        count = ::poll(&request, 1, static_cast<int>(std::clamp<qint64>(remaining, 0, 60'000)));
    } while (count < 0 && errno == EINTR);
    return count > 0;
}

const DataControlProtocol &wlrProtocol()
{
    static const DataControlProtocol protocol(
        "zwlr_data_control_manager_v1", "zwlr_data_control_device_v1",
        "zwlr_data_control_source_v1", "zwlr_data_control_offer_v1", 2);
    return protocol;
}

const DataControlProtocol &extProtocol()
{
    static const DataControlProtocol protocol(
        "ext_data_control_manager_v1", "ext_data_control_device_v1", "ext_data_control_source_v1",
        "ext_data_control_offer_v1", 1);
    return protocol;
}

DataControlPrimary *selfOf(void *data)
{
    return static_cast<DataControlPrimary *>(data);
}

/// The client library takes listeners as an array of untyped functions.
template <typename... Functions> using Listener = std::array<void (*)(), sizeof...(Functions)>;

template <typename... Functions>
void listen(wl_proxy *proxy, void *data, Listener<Functions...> &listener, Functions... functions)
{
    listener = {reinterpret_cast<void (*)()>(functions)...};
    wl_proxy_add_listener(proxy, listener.data(), data);
}

} // namespace

std::unique_ptr<DataControlPrimary> DataControlPrimary::connect()
{
    wl_display *display = wl_display_connect(nullptr);
    return display == nullptr
        ? nullptr
        : std::unique_ptr<DataControlPrimary>(new DataControlPrimary(display));
}

DataControlPrimary::DataControlPrimary(wl_display *display)
    : display_(display)
    , registry_(wl_display_get_registry(display))
    , notifier_(
          std::make_unique<QSocketNotifier>(wl_display_get_fd(display), QSocketNotifier::Read))
{
    static constexpr wl_registry_listener registryListener{&onGlobal, &onGlobalRemoved};
    wl_registry_add_listener(registry_, &registryListener, this);
    expectAnswer();
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(),
                     [this] { readEvents(); });
}

DataControlPrimary::~DataControlPrimary()
{
    notifier_.reset();
    for (const Offer &offer : std::as_const(offers_)) {
        wl_proxy_destroy(offer.proxy);
    }
    for (wl_proxy *proxy :
         {reinterpret_cast<wl_proxy *>(synchronization_), device_, manager_,
          reinterpret_cast<wl_proxy *>(seat_), reinterpret_cast<wl_proxy *>(registry_)}) {
        if (proxy != nullptr) {
            wl_proxy_destroy(proxy);
        }
    }
    wl_display_disconnect(display_); // the server destroys what belonged to the connection
}

/// Calls onSynchronized() when the compositor has answered all earlier requests.
void DataControlPrimary::expectAnswer()
{
    static constexpr wl_callback_listener callbackListener{&onSynchronized};
    synchronization_ = wl_display_sync(display_);
    wl_callback_add_listener(synchronization_, &callbackListener, this);
    static_cast<void>(wl_display_flush(display_));
}

/// Takes PRIMARY's device from the globals that the compositor has announced.
void DataControlPrimary::bind()
{
    const bool isExt = extGlobal_.name != 0;
    if (seatGlobal_.name == 0 || (!isExt && (wlrGlobal_.name == 0 || wlrGlobal_.version < 2))) {
        lose();
        return;
    }
    protocol_ = isExt ? &extProtocol() : &wlrProtocol();
    seat_ = static_cast<wl_seat *>(
        wl_registry_bind(registry_, seatGlobal_.name, &wl_seat_interface, 1));
    manager_ = static_cast<wl_proxy *>(
        wl_registry_bind(registry_, isExt ? extGlobal_.name : wlrGlobal_.name, &protocol_->manager,
                         static_cast<uint32_t>(protocol_->manager.version)));
    device_ =
        wl_proxy_marshal_flags(manager_, DataControlProtocol::GetDataDevice, &protocol_->device,
                               wl_proxy_get_version(manager_), 0, nullptr, seat_);
    static Listener<decltype(&onDataOffer), decltype(&onSelection), decltype(&onFinished),
                    decltype(&onPrimarySelection)>
        deviceListener;
    listen(device_, this, deviceListener, &onDataOffer, &onSelection, &onFinished,
           &onPrimarySelection);
    expectAnswer();
}

bool DataControlPrimary::flush(QDeadlineTimer deadline)
{
    while (wl_display_flush(display_) < 0) {
        if (errno != EAGAIN || !waitFor(wl_display_get_fd(display_), POLLOUT, deadline)) {
            return false;
        }
    }
    return true;
}

void DataControlPrimary::readEvents()
{
    bool isAlive = true;
    while (isAlive && wl_display_prepare_read(display_) != 0) {
        isAlive = wl_display_dispatch_pending(display_) >= 0;
    }
    if (isAlive) {
        if (waitFor(wl_display_get_fd(display_), POLLIN, QDeadlineTimer(0))) {
            isAlive = wl_display_read_events(display_) == 0;
        } else {
            wl_display_cancel_read(display_);
        }
    }
    isAlive = isAlive && wl_display_dispatch_pending(display_) >= 0;
    static_cast<void>(wl_display_flush(display_)); // the destroyed offers
    if (!isAlive) {
        lose();
    }
}

void DataControlPrimary::lose()
{
    if (notifier_) {
        notifier_->setEnabled(false);
    }
    primary_ = nullptr;
}

void DataControlPrimary::drop(wl_proxy *offer)
{
    const auto dropped = std::ranges::find(offers_, offer, &Offer::proxy);
    if (offer == nullptr || dropped == offers_.end()) {
        return;
    }
    offers_.erase(dropped);
    wl_proxy_marshal_flags(offer, DataControlProtocol::DestroyOffer, nullptr,
                           wl_proxy_get_version(offer), WL_MARSHAL_FLAG_DESTROY);
}

std::optional<Publication> DataControlPrimary::publication()
{
    readEvents();
    if (primary_ == nullptr) {
        return std::nullopt;
    }
    const auto since = [](Time time) {
        return std::chrono::duration_cast<std::chrono::milliseconds>(
            std::chrono::steady_clock::now() - time);
    };
    Publication publication;
    publication.processIdentifier = waylandClientModule::unknownProcess;
    publication.age = since(publishedAt_);
    if (readAt_) {
        publication.sinceRead = since(*readAt_);
    }
    return publication;
}

bool DataControlPrimary::publishes(qint64 /*processIdentifier*/)
{
    return false;
}

std::optional<QString> DataControlPrimary::string(QDeadlineTimer deadline)
{
    readEvents();
    const auto offer = std::ranges::find(offers_, primary_, &Offer::proxy);
    if (primary_ == nullptr || offer == offers_.end() || offer->types.contains(secretType)) {
        return std::nullopt;
    }
    readAt_ = std::chrono::steady_clock::now();
    const auto type = std::ranges::find_if(
        textTypes, [&](const char *each) { return offer->types.contains(each); });
    if (type == std::end(textTypes)) {
        return std::nullopt;
    }
    const auto bytes = read(offer->proxy, *type, deadline);
    if (!bytes) {
        return std::nullopt;
    }
    return std::strcmp(*type, "STRING") == 0 ? QString::fromLatin1(*bytes)
                                             : QString::fromUtf8(*bytes);
}

/// Returns what the owner writes until it closes the pipe, or up to the limit; absent when it does
/// not finish in time.
std::optional<QByteArray> DataControlPrimary::read(wl_proxy *offer, const QByteArray &type,
                                                   QDeadlineTimer deadline)
{
    int ends[2] = {-1, -1};
    if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) != 0) {
        return std::nullopt;
    }
    // The owner may not expect a descriptor that does not block.
    ::fcntl(ends[1], F_SETFL, ::fcntl(ends[1], F_GETFL) & ~O_NONBLOCK);
    wl_proxy_marshal_flags(offer, DataControlProtocol::Receive, nullptr,
                           wl_proxy_get_version(offer), 0, type.constData(), ends[1]);
    const bool isSent = flush(deadline);
    ::close(ends[1]);
    QByteArray bytes;
    bool isWhole = false;
    while (isSent && !isWhole && waitFor(ends[0], POLLIN, deadline)) {
        std::array<char, 4096> buffer;
        const ssize_t count = ::read(ends[0], buffer.data(), buffer.size());
        if (count < 0 && (errno == EAGAIN || errno == EINTR)) {
            continue;
        }
        if (count < 0) {
            break;
        }
        bytes.append(buffer.data(), count);
        isWhole = count == 0 || bytes.size() >= maxBytes;
    }
    ::close(ends[0]);
    return isWhole ? std::optional(bytes) : std::nullopt;
}

void DataControlPrimary::onGlobal(void *data, wl_registry * /*registry*/, uint32_t name,
                                  const char *interface, uint32_t version)
{
    DataControlPrimary &self = *selfOf(data);
    const auto note = [&](Global &global, const char *wanted) {
        if (global.name == 0 && std::strcmp(interface, wanted) == 0) {
            global = {name, version};
        }
    };
    note(self.seatGlobal_, wl_seat_interface.name);
    note(self.wlrGlobal_, wlrProtocol().manager.name);
    note(self.extGlobal_, extProtocol().manager.name);
}

void DataControlPrimary::onGlobalRemoved(void * /*data*/, wl_registry * /*registry*/,
                                         uint32_t /*name*/)
{
}

void DataControlPrimary::onSynchronized(void *data, wl_callback *callback, uint32_t /*serial*/)
{
    DataControlPrimary &self = *selfOf(data);
    wl_callback_destroy(callback);
    self.synchronization_ = nullptr;
    if (self.device_ == nullptr) {
        self.bind();
    } else {
        self.isStarted_ = true;
    }
}

void DataControlPrimary::onDataOffer(void *data, wl_proxy * /*device*/, wl_proxy *offer)
{
    selfOf(data)->offers_.append(Offer{offer, {}});
    static Listener<decltype(&onOfferType)> offerListener;
    listen(offer, data, offerListener, &onOfferType);
}

void DataControlPrimary::onOfferType(void *data, wl_proxy *offer, const char *type)
{
    const auto announced = std::ranges::find(selfOf(data)->offers_, offer, &Offer::proxy);
    if (announced != selfOf(data)->offers_.end() && announced->types.size() < maxTypes) {
        announced->types.append(type);
    }
}

void DataControlPrimary::onSelection(void *data, wl_proxy * /*device*/, wl_proxy *offer)
{
    DataControlPrimary &self = *selfOf(data);
    self.drop(std::exchange(self.clipboard_, offer));
}

void DataControlPrimary::onPrimarySelection(void *data, wl_proxy * /*device*/, wl_proxy *offer)
{
    DataControlPrimary &self = *selfOf(data);
    self.drop(std::exchange(self.primary_, offer));
    self.publishedAt_ = std::chrono::steady_clock::now();
    self.readAt_.reset();
    if (!self.isStarted_) {
        self.readAt_ = self.publishedAt_; // the time before is unknown
    }
}

void DataControlPrimary::onFinished(void *data, wl_proxy * /*device*/)
{
    selfOf(data)->lose();
}

} // namespace vellumo

extern "C" __attribute__((visibility("default"))) vellumo::PrimarySelection *
vellumo_wayland_primary_1()
{
    return vellumo::DataControlPrimary::connect().release();
}
