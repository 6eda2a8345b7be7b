// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11EventMonitors.h"

#include "platform/x11/LocalEvents.h"
#include "platform/x11/ModifierFlags.h"
#include "platform/x11/MonitorList.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Problems.h"
#include <QGuiApplication>
#include <QWindow>
#include <xcb/xinput.h>
#define explicit explicit_ // the header is written for C and has a field of this name
#include <xcb/xkb.h>
#undef explicit

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr EventMask mouseMask = maskOf(EventType::LeftMouseDown) | maskOf(EventType::RightMouseDown)
    | maskOf(EventType::ScrollWheel);

/// Maximum depth at which one of our windows is searched below the root; frames of window managers
/// add few levels.
constexpr int maxPointerDepth = 8;

/// Returns whether request number `a` comes before `b`; they wrap.
bool isBefore(quint32 a, quint32 b)
{
    return static_cast<qint32>(a - b) < 0;
}

std::optional<EventType> typeOfButton(quint32 button)
{
    switch (button) {
    case 1:
        return EventType::LeftMouseDown;
    case 3:
        return EventType::RightMouseDown;
    case 4:
    case 5:
    case 6:
    case 7:
        return EventType::ScrollWheel;
    default:
        return std::nullopt;
    }
}

bool isOwnWindow(xcb_window_t id)
{
    const auto windows = QGuiApplication::topLevelWindows();
    return std::ranges::any_of(windows, [id](QWindow *window) {
        return window->handle() != nullptr && window->winId() == id;
    });
}

} // namespace

X11EventMonitors::X11EventMonitors(X11Connection &connection, X11Problems &problems)
    : connection_(connection)
    , global_(std::make_shared<MonitorList>())
    , local_(std::make_shared<MonitorList>())
{
    connect(global_.get(), &MonitorList::changed, this, &X11EventMonitors::monitorsChanged);
    connect(local_.get(), &MonitorList::changed, this, &X11EventMonitors::monitorsChanged);
    if (connection_.isUsable()) {
        watchKeyboard(problems);
        watchButtons(problems);
        connection_.setEventHandler([this](const auto &event) { handleEvent(event); });
    }
}

X11EventMonitors::~X11EventMonitors()
{
    global_->disconnect(this);
    local_->disconnect(this);
    connection_.setEventHandler(nullptr);
}

void X11EventMonitors::watchKeyboard(X11Problems &problems)
{
    auto *xcb = connection_.xcb();
    const auto *extension = connection_.extension(&xcb_xkb_id);
    const auto version = extension == nullptr
        ? nullptr
        : connection_.reply<xcb_xkb_use_extension_reply_t>(xcb_xkb_use_extension(xcb, 1, 0));
    if (!version || version->supported == 0) {
        problems.add(u"no XKEYBOARD extension, so a double tap is not noticed"_s);
        return;
    }
    xkbEvent_ = extension->first_event;
    xcb_xkb_select_events_details_t details{};
    details.affectState = XCB_XKB_STATE_PART_MODIFIER_STATE;
    details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_STATE;
    xcb_xkb_select_events_aux(xcb, XCB_XKB_ID_USE_CORE_KBD, XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0,
                              0, 0, &details);
    if (const auto state = connection_.reply<xcb_xkb_get_state_reply_t>(
            xcb_xkb_get_state(xcb, XCB_XKB_ID_USE_CORE_KBD))) {
        flags_ = modifierFlags(state->baseMods, state->latchedMods, state->lockedMods);
    }
}

void X11EventMonitors::watchButtons(X11Problems &problems)
{
    const auto *extension = connection_.extension(&xcb_input_id);
    // During another client's grab, raw events are sent only to clients that announce version 2.1
    // or later.
    const auto version = extension == nullptr
        ? nullptr
        : connection_.reply<xcb_input_xi_query_version_reply_t>(
            xcb_input_xi_query_version(connection_.xcb(), 2, 2));
    if (!version || version->major_version < 2) {
        problems.add(u"no X Input 2 extension, so clicks elsewhere do not close the panel"_s);
        return;
    }
    xinputOpcode_ = extension->major_opcode;
}

std::unique_ptr<EventMonitorHandle>
X11EventMonitors::addGlobalMonitor(EventMask mask, std::function<void(const Event &)> handler)
{
    mask &= mouseMask | maskOf(EventType::FlagsChanged);
    const bool canWatch = ((mask & mouseMask) != 0 && xinputOpcode_ != 0)
        || ((mask & maskOf(EventType::FlagsChanged)) != 0 && xkbEvent_ != 0);
    if (!canWatch) {
        return nullptr;
    }
    return global_->add(mask, [handler = std::move(handler)](const Event &event) {
        handler(event);
        return true;
    });
}

std::unique_ptr<EventMonitorHandle>
X11EventMonitors::addLocalMonitor(EventMask mask, std::function<bool(const Event &)> handler)
{
    return local_->add(mask, std::move(handler));
}

void X11EventMonitors::monitorsChanged()
{
    qApp->removeEventFilter(this);
    if ((local_->wanted() & ~maskOf(EventType::FlagsChanged)) != 0) {
        qApp->installEventFilter(this);
    }

    const bool wanted = xinputOpcode_ != 0 && (global_->wanted() & mouseMask) != 0;
    if (wanted == buttonsSelected_) {
        return;
    }
    buttonsSelected_ = wanted;
    struct {
        xcb_input_event_mask_t head;
        uint32_t mask;
    } const selection{{XCB_INPUT_DEVICE_ALL_MASTER, 1},
                      wanted ? static_cast<uint32_t>(XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS)
                             : 0U};
    xcb_input_xi_select_events(connection_.xcb(), connection_.root(), 1, &selection.head);
    connection_.flush();
}

bool X11EventMonitors::waitForRelease(quint32 flags, QDeadlineTimer deadline)
{
    if (xkbEvent_ == 0) {
        return false;
    }
    const auto question = xcb_xkb_get_state(connection_.xcb(), XCB_XKB_ID_USE_CORE_KBD);
    const auto state = connection_.reply<xcb_xkb_get_state_reply_t>(question, deadline);
    if (!state) {
        return false;
    }
    if ((modifierFlags(state->baseMods, state->latchedMods, state->lockedMods) & flags) == 0) {
        return true;
    }
    return connection_.findEvent(
               [&](const xcb_generic_event_t &event) {
                   if (!isStateNotify(event) || isBefore(event.full_sequence, question.sequence)) {
                       return false;
                   }
                   const auto &change = eventAs<xcb_xkb_state_notify_event_t>(event);
                   const auto now =
                       modifierFlags(change.baseMods, change.latchedMods, change.lockedMods);
                   return (now & flags) == 0;
               },
               deadline)
        != nullptr;
}

bool X11EventMonitors::withoutMonitors(const std::function<void(X11Connection &)> &post)
{
    // The server processes the input of a request before it reads the next one, and an event
    // carries the number of the last request. The numbers therefore distinguish our keys from the
    // user's.
    const auto first = xcb_no_operation(connection_.xcb()).sequence;
    post(connection_);
    const auto last = xcb_get_input_focus(connection_.xcb());
    ownRequests_.append({first, last.sequence});
    return connection_.reply<xcb_get_input_focus_reply_t>(last) != nullptr;
}

bool X11EventMonitors::isOwnDoing(quint32 sequence)
{
    while (!ownRequests_.isEmpty() && !isBefore(sequence, ownRequests_.first().second)) {
        ownRequests_.removeFirst();
    }
    return !ownRequests_.isEmpty() && !isBefore(sequence, ownRequests_.first().first);
}

bool X11EventMonitors::isStateNotify(const xcb_generic_event_t &event) const
{
    return xkbEvent_ != 0 && eventType(event) == xkbEvent_ && event.pad0 == XCB_XKB_STATE_NOTIFY;
}

void X11EventMonitors::handleEvent(const xcb_generic_event_t &event)
{
    if (isStateNotify(event)) {
        handleState(event);
    } else if (eventType(event) == XCB_GE_GENERIC && xinputOpcode_ != 0) {
        handleRawButton(event);
    }
}

void X11EventMonitors::handleState(const xcb_generic_event_t &event)
{
    const auto &change = eventAs<xcb_xkb_state_notify_event_t>(event);
    const auto now = modifierFlags(change.baseMods, change.latchedMods, change.lockedMods);
    const bool changed = now != flags_; // Num Lock alone changes no flag
    flags_ = now;
    if (isOwnDoing(event.full_sequence) || !changed) {
        return;
    }
    Event flagsChanged;
    flagsChanged.type = EventType::FlagsChanged;
    flagsChanged.modifierFlags = now;
    flagsChanged.timestampMs = time_.widen(change.time);
    (QGuiApplication::focusWindow() != nullptr ? local_ : global_)->deliver(flagsChanged);
}

void X11EventMonitors::handleRawButton(const xcb_generic_event_t &event)
{
    const auto &generic = eventAs<xcb_ge_generic_event_t>(event);
    if (generic.extension != xinputOpcode_ || generic.event_type != XCB_INPUT_RAW_BUTTON_PRESS) {
        return;
    }
    const auto &press = eventAs<xcb_input_raw_button_press_event_t>(event);
    const auto type = typeOfButton(press.detail);
    if (!type || (global_->wanted() & maskOf(*type)) == 0 || isPointerOverOwnWindow()) {
        return;
    }
    Event pressed;
    pressed.type = *type;
    pressed.modifierFlags = flags_;
    pressed.timestampMs = time_.widen(press.time);
    global_->deliver(pressed);
}

bool X11EventMonitors::isPointerOverOwnWindow()
{
    xcb_window_t window = connection_.root();
    for (int depth = 0; depth < maxPointerDepth; ++depth) {
        const auto pointer = connection_.reply<xcb_query_pointer_reply_t>(
            xcb_query_pointer(connection_.xcb(), window));
        if (!pointer || pointer->child == XCB_WINDOW_NONE) {
            return false;
        }
        window = pointer->child;
        if (isOwnWindow(window)) {
            return true;
        }
    }
    return false;
}

bool X11EventMonitors::eventFilter(QObject *watched, QEvent *event)
{
    if (!watched->isWindowType()) {
        return false;
    }
    const auto seen = localEvent(*static_cast<QWindow *>(watched), *event);
    if (!seen) {
        return false;
    }
    Event local = *seen;
    local.timestampMs = seen->timestampMs == 0
        ? time_.last()
        : time_.widen(static_cast<quint32>(seen->timestampMs));
    const bool passOn = local_->deliver(local);
    return !passOn && event->type() != QEvent::Enter && event->type() != QEvent::Leave;
}

} // namespace vellumo
