// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11SelectionServer.h"

#include "platform/x11/X11Connection.h"
#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

/// Maximum size of a value in one property, well below the server's own limit.
constexpr qsizetype partSize = qsizetype{256} * 1024;

/// A requestor that takes no part for this long is dropped.
constexpr auto transferTimeout = 5s;

/// Maximum number of incremental transfers at once.
constexpr size_t maxTransfers = 16;

/// Maximum number of pairs in one MULTIPLE request.
constexpr uint32_t maxPairs = 256;

template <typename Number> QByteArray bytesOf(Number number)
{
    return {reinterpret_cast<const char *>(&number), sizeof number};
}

} // namespace

X11SelectionServer::X11SelectionServer(X11Connection &connection, xcb_atom_t selection)
    : connection_(connection)
    , selection_(selection)
{
    if (!connection_.isUsable()) {
        return;
    }
    window_ = xcb_generate_id(connection_.xcb());
    constexpr uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(connection_.xcb(), 0, window_, connection_.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
    expiryTimer_.setInterval(1s);
    connect(&expiryTimer_, &QTimer::timeout, this, [this] {
        endTransfers([](const Transfer &transfer) { return transfer.deadline.hasExpired(); });
    });
}

X11SelectionServer::~X11SelectionServer()
{
    if (window_ != XCB_WINDOW_NONE) {
        xcb_destroy_window(connection_.xcb(), window_);
        connection_.flush();
    }
}

/// Returns the server's time, which is available only in events: appends nothing to a property of
/// our own window and waits for the event.
xcb_timestamp_t X11SelectionServer::serverTime()
{
    const auto property = connection_.atom("VELLUMO_SELECTION"_ba);
    const auto change = xcb_change_property(connection_.xcb(), XCB_PROP_MODE_APPEND, window_,
                                            property, XCB_ATOM_INTEGER, 32, 0, nullptr);
    const auto event = connection_.takeEvent(
        [&](const xcb_generic_event_t &candidate) {
            return eventType(candidate) == XCB_PROPERTY_NOTIFY
                && static_cast<qint32>(candidate.full_sequence - change.sequence) >= 0
                && eventAs<xcb_property_notify_event_t>(candidate).window == window_;
        },
        X11Connection::replyDeadline());
    return event ? eventAs<xcb_property_notify_event_t>(*event).time : XCB_CURRENT_TIME;
}

bool X11SelectionServer::isOwner()
{
    const auto owner = connection_.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection_.xcb(), selection_));
    return owner && window_ != XCB_WINDOW_NONE && owner->owner == window_;
}

bool X11SelectionServer::own(QList<Content> contents)
{
    contents_ = std::move(contents);
    ownedSince_ = serverTime();
    xcb_set_selection_owner(connection_.xcb(), window_, selection_, ownedSince_);
    if (!isOwner()) {
        contents_.clear();
        return false;
    }
    return true;
}

SelectionValue X11SelectionServer::targetList() const
{
    SelectionValue list{XCB_ATOM_ATOM, 32, {}};
    for (const auto &content : contents_) {
        list.bytes += bytesOf(content.target);
    }
    return list;
}

void X11SelectionServer::handOver(QDeadlineTimer deadline)
{
    auto *xcb = connection_.xcb();
    const auto manager = connection_.atom("CLIPBOARD_MANAGER"_ba);
    const auto managerOwner =
        connection_.reply<xcb_get_selection_owner_reply_t>(xcb_get_selection_owner(xcb, manager));
    if (contents_.isEmpty() || !managerOwner || managerOwner->owner == XCB_WINDOW_NONE
        || !isOwner()) {
        return;
    }
    const auto property = connection_.atom("VELLUMO_SELECTION"_ba);
    const auto targets = targetList();
    setProperty(window_, property, targets, 0, targets.bytes.size());
    xcb_convert_selection(xcb, window_, manager, connection_.atom("SAVE_TARGETS"_ba), property,
                          ownedSince_);
    while (const auto event = connection_.takeEvent([](const auto &) { return true; }, deadline)) {
        if (eventType(*event) == XCB_SELECTION_NOTIFY
            && eventAs<xcb_selection_notify_event_t>(*event).selection == manager) {
            return;
        }
        handleEvent(*event);
    }
}

void X11SelectionServer::handleEvent(const xcb_generic_event_t &event)
{
    switch (eventType(event)) {
    case XCB_SELECTION_REQUEST:
        answer(eventAs<xcb_selection_request_event_t>(event));
        break;
    case XCB_SELECTION_CLEAR: // may refer to an earlier ownership
        if (eventAs<xcb_selection_clear_event_t>(event).selection == selection_ && !isOwner()) {
            contents_.clear();
        }
        break;
    case XCB_PROPERTY_NOTIFY: {
        const auto &notify = eventAs<xcb_property_notify_event_t>(event);
        if (notify.state == XCB_PROPERTY_DELETE) {
            continueTransfer(notify.window, notify.atom);
        }
        break;
    }
    case XCB_DESTROY_NOTIFY:
        endTransfers([window = eventAs<xcb_destroy_notify_event_t>(event).window](
                         const Transfer &transfer) { return transfer.requestor == window; });
        break;
    default:
        break;
    }
}

void X11SelectionServer::answer(const xcb_selection_request_event_t &request)
{
    // Old clients let the owner choose the property.
    const auto property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    const bool served = request.owner == window_ && request.selection == selection_
        && !contents_.isEmpty() && request.requestor != window_
        && (request.target == connection_.atom("MULTIPLE"_ba)
                ? request.property != XCB_ATOM_NONE && convertMultiple(request.requestor, property)
                : convert(request.requestor, request.target, property));

    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    notify.property = served ? property : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
    static_assert(sizeof notify <= 32);
    std::array<char, 32> wire{};
    std::memcpy(wire.data(), &notify, sizeof notify);
    xcb_send_event(connection_.xcb(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, wire.data());
    connection_.flush();
}

bool X11SelectionServer::convert(xcb_window_t requestor, xcb_atom_t target, xcb_atom_t property)
{
    if (target == connection_.atom("TARGETS"_ba)) {
        auto list = targetList();
        for (const auto &name : {"TARGETS"_ba, "MULTIPLE"_ba, "TIMESTAMP"_ba}) {
            list.bytes += bytesOf(connection_.atom(name));
        }
        return send(requestor, property, list);
    }
    if (target == connection_.atom("TIMESTAMP"_ba)) {
        return send(requestor, property, {XCB_ATOM_INTEGER, 32, bytesOf(ownedSince_)});
    }
    const auto content = std::ranges::find(contents_, target, &Content::target);
    return content != contents_.cend() && send(requestor, property, content->value);
}

bool X11SelectionServer::convertMultiple(xcb_window_t requestor, xcb_atom_t property)
{
    const auto asked = connection_.reply<xcb_get_property_reply_t>(
        xcb_get_property(connection_.xcb(), 0, requestor, property, XCB_ATOM_ANY, 0, 2 * maxPairs));
    if (!asked || asked->format != 32 || asked->bytes_after > 0) {
        return false;
    }
    const int count = xcb_get_property_value_length(asked.get()) / 4;
    const auto *atoms = static_cast<const xcb_atom_t *>(xcb_get_property_value(asked.get()));
    QList<xcb_atom_t> pairs(atoms, atoms + count);
    for (qsizetype i = 0; i + 1 < pairs.size(); i += 2) {
        const bool isNested = pairs[i] == connection_.atom("MULTIPLE"_ba);
        if (isNested || pairs[i + 1] == XCB_ATOM_NONE
            || !convert(requestor, pairs[i], pairs[i + 1])) {
            pairs[i + 1] = XCB_ATOM_NONE;
        }
    }
    xcb_change_property(connection_.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, asked->type,
                        32, static_cast<uint32_t>(pairs.size()), pairs.constData());
    return true;
}

bool X11SelectionServer::send(xcb_window_t requestor, xcb_atom_t property,
                              const SelectionValue &value)
{
    // A new request for the same property replaces the old one.
    endTransfers([&](const Transfer &transfer) {
        return transfer.requestor == requestor && transfer.property == property;
    });
    if (value.bytes.size() > partSize) {
        return startTransfer(requestor, property, value);
    }
    setProperty(requestor, property, value, 0, value.bytes.size());
    return true;
}

bool X11SelectionServer::startTransfer(xcb_window_t requestor, xcb_atom_t property,
                                       const SelectionValue &value)
{
    if (transfers_.size() >= maxTransfers) {
        return false;
    }
    constexpr uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(connection_.xcb(), requestor, XCB_CW_EVENT_MASK, &mask);
    const auto size = static_cast<uint32_t>(value.bytes.size());
    setProperty(requestor, property, {connection_.atom("INCR"_ba), 32, bytesOf(size)}, 0, 4);
    transfers_.push_back({requestor, property, value, 0, QDeadlineTimer(transferTimeout)});
    expiryTimer_.start();
    return true;
}

void X11SelectionServer::setProperty(xcb_window_t requestor, xcb_atom_t property,
                                     const SelectionValue &value, qsizetype from, qsizetype length)
{
    xcb_change_property(connection_.xcb(), XCB_PROP_MODE_REPLACE, requestor, property, value.type,
                        value.format, static_cast<uint32_t>(length / (value.format / 8)),
                        value.bytes.constData() + from);
}

void X11SelectionServer::continueTransfer(xcb_window_t requestor, xcb_atom_t property)
{
    const auto transfer = std::ranges::find_if(transfers_, [&](const Transfer &candidate) {
        return candidate.requestor == requestor && candidate.property == property;
    });
    if (transfer == transfers_.end()) {
        return;
    }
    const auto length = std::min(partSize, transfer->value.bytes.size() - transfer->sent);
    setProperty(requestor, property, transfer->value, transfer->sent, length);
    transfer->sent += length;
    transfer->deadline = QDeadlineTimer(transferTimeout);
    if (length == 0) { // the empty part ends the transfer
        const Transfer *done = &*transfer;
        endTransfers([done](const Transfer &candidate) { return &candidate == done; });
    }
    connection_.flush();
}

void X11SelectionServer::endTransfers(const std::function<bool(const Transfer &)> &which)
{
    for (auto transfer = transfers_.begin(); transfer != transfers_.end();) {
        if (!which(*transfer)) {
            ++transfer;
            continue;
        }
        const auto requestor = transfer->requestor;
        transfer = transfers_.erase(transfer);
        if (std::ranges::find(transfers_, requestor, &Transfer::requestor) == transfers_.end()) {
            constexpr uint32_t none = XCB_EVENT_MASK_NO_EVENT;
            xcb_change_window_attributes(connection_.xcb(), requestor, XCB_CW_EVENT_MASK, &none);
        }
    }
    if (transfers_.empty()) {
        expiryTimer_.stop();
    }
}

} // namespace vellumo
