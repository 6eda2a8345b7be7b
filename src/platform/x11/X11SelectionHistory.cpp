// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11SelectionHistory.h"

#include "platform/x11/TerminalClasses.h"
#include "platform/x11/X11Connection.h"
#include <xcb/xfixes.h>
#include <xcb/xinput.h>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// A press that is processed later than this: the pointer may have moved since.
constexpr qint64 maxDelayMs = 150;

/// Maximum distance of the presses of a double click.
constexpr qint64 doubleClickMs = 500;

/// A selection published sooner than this after a press was not made by dragging.
constexpr qint64 minDragMs = 150;

/// Maximum time for processing the events that the server has reported.
constexpr std::chrono::milliseconds maxDrainTime{50};

/// Maximum depth of the window with the pointer below the root.
constexpr int maxNesting = 16;

/// More applications than run at once. Forgetting one only makes its copies less trusted.
constexpr qsizetype maxPublishers = 256;

bool isWheel(quint32 button)
{
    return button >= 4 && button <= 7;
}

} // namespace

X11SelectionHistory::X11SelectionHistory(X11Connection &connection)
    : connection_(connection)
    , windows_(connection)
{
    if (!connection_.isUsable()) {
        return;
    }
    selectEvents();
    connection_.setEventHandler([this](const auto &event) { handleEvent(event); });
    look();
    const auto owner = connection_.reply<xcb_get_selection_owner_reply_t>(
        xcb_get_selection_owner(connection_.xcb(), XCB_ATOM_PRIMARY));
    if (owner && owner->owner != XCB_WINDOW_NONE) {
        publish(owner->owner, clock_.now());
        published_.readAt = published_.at; // the time before is unknown
        publishers_.clear();
    }
}

X11SelectionHistory::~X11SelectionHistory()
{
    connection_.setEventHandler(nullptr);
}

void X11SelectionHistory::selectEvents()
{
    auto *xcb = connection_.xcb();
    const auto *fixes = connection_.extension(&xcb_xfixes_id);
    if (fixes != nullptr
        && connection_.reply<xcb_xfixes_query_version_reply_t>(
            xcb_xfixes_query_version(xcb, 5, 0))) {
        fixesEvent_ = fixes->first_event;
        xcb_xfixes_select_selection_input(
            xcb, connection_.root(), XCB_ATOM_PRIMARY,
            XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_WINDOW_DESTROY
                | XCB_XFIXES_SELECTION_EVENT_MASK_SELECTION_CLIENT_CLOSE);
    }
    // During another client's grab, raw events are sent only to clients that announce version 2.1
    // or later, touches from 2.2 on.
    const auto *input = connection_.extension(&xcb_input_id);
    if (input != nullptr
        && connection_.reply<xcb_input_xi_query_version_reply_t>(
            xcb_input_xi_query_version(xcb, 2, 2))) {
        xinputOpcode_ = input->major_opcode;
        const struct {
            xcb_input_event_mask_t head;
            uint32_t mask;
        } wanted{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                 XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS
                     | XCB_INPUT_XI_EVENT_MASK_RAW_TOUCH_BEGIN};
        xcb_input_xi_select_events(xcb, connection_.root(), 1, &wanted.head);
    }
    constexpr uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(xcb, connection_.root(), XCB_CW_EVENT_MASK, &mask);
}

void X11SelectionHistory::handleEvent(const xcb_generic_event_t &event)
{
    const quint8 type = eventType(event);
    if (fixesEvent_ != 0 && type == fixesEvent_ + XCB_XFIXES_SELECTION_NOTIFY) {
        const auto &change = eventAs<xcb_xfixes_selection_notify_event_t>(event);
        publish(change.owner, clock_.note(change.timestamp));
    } else if (type == XCB_PROPERTY_NOTIFY) {
        handlePropertyChange(eventAs<xcb_property_notify_event_t>(event));
    } else if (type == XCB_GE_GENERIC && xinputOpcode_ != 0) {
        const auto &press = eventAs<xcb_input_raw_button_press_event_t>(event);
        const bool isTouch = press.event_type == XCB_INPUT_RAW_TOUCH_BEGIN;
        if (press.extension == xinputOpcode_
            && (isTouch
                || (press.event_type == XCB_INPUT_RAW_BUTTON_PRESS && !isWheel(press.detail)))) {
            handlePress(press.time);
        }
    }
}

void X11SelectionHistory::handlePropertyChange(const xcb_property_notify_event_t &event)
{
    clock_.note(event.time);
    if (event.window == connection_.root()) {
        if (event.atom == connection_.atom("_NET_ACTIVE_WINDOW"_ba)) {
            look();
            bind();
        }
        return;
    }
    const bool isTitle =
        event.atom == XCB_ATOM_WM_NAME || event.atom == connection_.atom("_NET_WM_NAME"_ba);
    if (isTitle && published_.isTitleWatched && event.window == published_.window
        && windows_.title(event.window) != published_.title) {
        published_.isOver = true;
        setTitleWatched(false);
    }
}

void X11SelectionHistory::handlePress(quint32 time)
{
    const qint64 at = clock_.note(time);
    isLonePress_ = !pressedAt_ || at - *pressedAt_ > doubleClickMs;
    pressedAt_ = at;
    if (published_.process && !published_.isOver && isPressInside(at)) {
        published_.isOver = true;
        setTitleWatched(false);
    }
}

/// Returns whether the pointer is in the application that published, and true for a press that was
/// processed late.
bool X11SelectionHistory::isPressInside(qint64 time)
{
    if (clock_.now() - time > maxDelayMs) {
        return true;
    }
    xcb_window_t window = connection_.root();
    for (int depth = 0; depth < maxNesting; ++depth) {
        const auto pointer = connection_.reply<xcb_query_pointer_reply_t>(
            xcb_query_pointer(connection_.xcb(), window));
        if (!pointer || pointer->child == XCB_WINDOW_NONE) {
            break;
        }
        window = pointer->child;
    }
    if (window == connection_.root()) {
        return false;
    }
    const auto process = windows_.clientProcess(window);
    return !process || process == published_.process;
}

void X11SelectionHistory::publish(xcb_window_t owner, qint64 at)
{
    // repeatedly while the mouse is dragged
    const auto process =
        owner == published_.owner ? published_.process : windows_.clientProcess(owner);
    setTitleWatched(false);
    published_ = {};
    published_.owner = owner;
    published_.process = process;
    published_.at = at;
    published_.isOfPress = isLonePress_ && at >= *pressedAt_ && at - *pressedAt_ < minDragMs;
    if (process) {
        if (publishers_.size() >= maxPublishers) {
            publishers_.clear();
        }
        publishers_.insert(*process);
        bind();
    }
}

/// Records the window with the selection: the application's active one when the text was published,
/// else its next active one.
void X11SelectionHistory::bind()
{
    if (!windows_.isManaged()) {
        look(); // another active window is not reported
    }
    if (published_.window != XCB_WINDOW_NONE || published_.isOver || !published_.process
        || activeProcess_ != published_.process) {
        return;
    }
    published_.window = activeWindow_;
    // A terminal changes its title with the program that runs in it, and keeps the selection.
    const auto [instance, className] = windows_.windowClass(activeWindow_);
    setTitleWatched(!isTerminalClass(instance) && !isTerminalClass(className));
    published_.title = windows_.title(activeWindow_);
    published_.isOver = published_.isOfPress && republishesEndedSelection(className);
}

void X11SelectionHistory::setTitleWatched(bool watched)
{
    if (published_.isTitleWatched == watched || published_.window == XCB_WINDOW_NONE) {
        return;
    }
    published_.isTitleWatched = watched;
    const uint32_t mask = watched ? XCB_EVENT_MASK_PROPERTY_CHANGE : XCB_EVENT_MASK_NO_EVENT;
    xcb_change_window_attributes(connection_.xcb(), published_.window, XCB_CW_EVENT_MASK, &mask);
    connection_.flush();
}

void X11SelectionHistory::look()
{
    activeWindow_ = windows_.activeWindow();
    activeProcess_ = windows_.clientProcess(activeWindow_);
}

std::optional<Publication> X11SelectionHistory::publication()
{
    connection_.roundTrip();
    const auto any = [](const xcb_generic_event_t &) { return true; };
    const QDeadlineTimer deadline(maxDrainTime);
    while (const auto event = connection_.takeEvent(any, QDeadlineTimer(0))) {
        handleEvent(*event);
        if (deadline.hasExpired()) {
            return std::nullopt; // a client that publishes without pause
        }
    }
    bind();
    if (!published_.process || !connection_.isUsable()) {
        return std::nullopt;
    }
    const auto since = [this](qint64 time) {
        return std::chrono::milliseconds(std::max<qint64>(clock_.now() - time, 0));
    };
    Publication publication;
    publication.processIdentifier = *published_.process;
    publication.age = since(published_.at);
    publication.isOver = published_.isOver || published_.window == XCB_WINDOW_NONE
        || published_.window != activeWindow_;
    if (published_.readAt) {
        publication.sinceRead = since(*published_.readAt);
    }
    return publication;
}

void X11SelectionHistory::noteRead()
{
    published_.readAt = clock_.now();
}

} // namespace vellumo
