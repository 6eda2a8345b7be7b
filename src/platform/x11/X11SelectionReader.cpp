// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11SelectionReader.h"

#include "platform/x11/X11Connection.h"
#include <cstring>

using namespace Qt::StringLiterals;

namespace vellumo {

X11SelectionReader::X11SelectionReader(X11Connection &connection, xcb_atom_t selection,
                                       QDeadlineTimer deadline, qsizetype limit)
    : connection_(connection)
    , selection_(selection)
    , property_(connection.atom("VELLUMO_SELECTION"_ba))
    , deadline_(deadline)
    , remaining_(limit)
{
    auto *xcb = connection_.xcb();
    const auto answer = connection_.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(xcb, selection_), deadline_);
    isOwnerKnown_ = answer != nullptr;
    owner_ = answer ? answer->owner : xcb_window_t{XCB_WINDOW_NONE};
    if (owner_ == XCB_WINDOW_NONE) {
        return;
    }
    // Another user of this connection may have selected events on the owner's window.
    const auto attributes = connection_.reply<xcb_get_window_attributes_reply_t>(
        xcb_get_window_attributes(xcb, owner_), deadline_);
    ownerMask_ = attributes ? attributes->your_event_mask : uint32_t{XCB_EVENT_MASK_NO_EVENT};
    const uint32_t ownerMask = ownerMask_ | XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(xcb, owner_, XCB_CW_EVENT_MASK, &ownerMask);
    window_ = xcb_generate_id(xcb);
    constexpr uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_create_window(xcb, 0, window_, connection_.root(), 0, 0, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &mask);
}

X11SelectionReader::~X11SelectionReader()
{
    if (owner_ != XCB_WINDOW_NONE) {
        xcb_change_window_attributes(connection_.xcb(), owner_, XCB_CW_EVENT_MASK, &ownerMask_);
        xcb_destroy_window(connection_.xcb(), window_);
        connection_.flush();
    }
}

X11SelectionReader::Answer X11SelectionReader::convert(xcb_atom_t target)
{
    if (owner_ == XCB_WINDOW_NONE || target == XCB_ATOM_NONE) {
        return {Outcome::Refused, {}};
    }
    xcb_delete_property(connection_.xcb(), window_, property_);
    xcb_convert_selection(connection_.xcb(), window_, selection_, target, property_,
                          XCB_CURRENT_TIME);
    xcb_atom_t property = XCB_ATOM_NONE;
    if (!waitForNotify(target, property)) {
        return {};
    }
    if (property != property_) {
        return {Outcome::Refused, {}};
    }
    auto chunk = readProperty();
    if (!chunk) {
        return {};
    }
    if (!chunk->exists) {
        return {Outcome::Refused, {}};
    }
    if (chunk->value.type == connection_.atom("INCR"_ba)) {
        return readIncrements();
    }
    remaining_ -= chunk->value.bytes.size();
    return {chunk->isCut ? Outcome::Cut : Outcome::Value, std::move(chunk->value)};
}

bool X11SelectionReader::waitForNotify(xcb_atom_t target, xcb_atom_t &property)
{
    bool gone = false;
    const auto event = connection_.takeEvent(
        [&](const xcb_generic_event_t &candidate) {
            gone = isOwnerGone(candidate);
            if (gone || eventType(candidate) != XCB_SELECTION_NOTIFY) {
                return gone;
            }
            const auto &notify = eventAs<xcb_selection_notify_event_t>(candidate);
            return notify.requestor == window_ && notify.selection == selection_
                && notify.target == target;
        },
        deadline_);
    if (!event || gone) {
        return false;
    }
    property = eventAs<xcb_selection_notify_event_t>(*event).property;
    return true;
}

bool X11SelectionReader::waitForNewValue()
{
    bool gone = false;
    const auto event = connection_.takeEvent(
        [&](const xcb_generic_event_t &candidate) {
            gone = isOwnerGone(candidate);
            if (gone || eventType(candidate) != XCB_PROPERTY_NOTIFY) {
                return gone;
            }
            const auto &notify = eventAs<xcb_property_notify_event_t>(candidate);
            return notify.window == window_ && notify.atom == property_
                && notify.state == XCB_PROPERTY_NEW_VALUE;
        },
        deadline_);
    return event && !gone;
}

bool X11SelectionReader::isOwnerGone(const xcb_generic_event_t &event) const
{
    return eventType(event) == XCB_DESTROY_NOTIFY
        && eventAs<xcb_destroy_notify_event_t>(event).window == owner_;
}

/// Reads and deletes the property, which makes the sender of an incremental transfer send the next
/// part. Absent on failure.
std::optional<X11SelectionReader::Chunk> X11SelectionReader::readProperty()
{
    const auto units = static_cast<uint32_t>((remaining_ / 4) + 1);
    const auto answer = connection_.reply<xcb_get_property_reply_t>(
        xcb_get_property(connection_.xcb(), 1, window_, property_, XCB_ATOM_ANY, 0, units),
        deadline_);
    if (!answer) {
        return std::nullopt;
    }
    Chunk chunk;
    if (answer->type == XCB_ATOM_NONE) {
        return chunk;
    }
    const auto length = xcb_get_property_value_length(answer.get());
    chunk.exists = true;
    chunk.isCut = answer->bytes_after > 0 || length > remaining_;
    chunk.value.type = answer->type;
    chunk.value.format = answer->format;
    chunk.value.bytes = {static_cast<const char *>(xcb_get_property_value(answer.get())), length};
    return chunk;
}

X11SelectionReader::Answer X11SelectionReader::readIncrements()
{
    SelectionValue whole;
    for (;;) {
        if (!waitForNewValue()) {
            return {};
        }
        const auto chunk = readProperty();
        if (!chunk) {
            return {};
        }
        if (!chunk->exists) {
            continue; // the notification is older than the value read last
        }
        const auto &[type, format, bytes] = chunk->value;
        if (whole.type == XCB_ATOM_NONE) {
            whole.type = type;
            whole.format = format;
        }
        if (bytes.isEmpty()) {
            return {Outcome::Value, std::move(whole)};
        }
        if (type != whole.type || format != whole.format) {
            return {};
        }
        whole.bytes += bytes;
        remaining_ -= bytes.size();
        if (chunk->isCut) {
            return {Outcome::Cut, std::move(whole)};
        }
    }
}

std::optional<QList<xcb_atom_t>> X11SelectionReader::targets()
{
    const auto answer = convert(connection_.atom("TARGETS"_ba));
    if (answer.outcome != Outcome::Value || answer.value.format != 32) {
        return std::nullopt;
    }
    QList<xcb_atom_t> targets;
    const auto &bytes = answer.value.bytes;
    for (qsizetype i = 0; i + 4 <= bytes.size(); i += 4) {
        xcb_atom_t target = XCB_ATOM_NONE;
        std::memcpy(&target, bytes.constData() + i, sizeof target);
        if (target != XCB_ATOM_NONE && !targets.contains(target)) {
            targets.append(target);
        }
    }
    return targets;
}

std::optional<QString> X11SelectionReader::text()
{
    for (const auto target :
         {connection_.atom("UTF8_STRING"_ba), connection_.atom("text/plain;charset=utf-8"_ba),
          static_cast<xcb_atom_t>(XCB_ATOM_STRING)}) {
        const auto answer = convert(target);
        if (answer.outcome == Outcome::Value || answer.outcome == Outcome::Cut) {
            return selectionText(answer.value);
        }
        if (answer.outcome == Outcome::Failed) {
            break;
        }
    }
    return std::nullopt;
}

} // namespace vellumo
