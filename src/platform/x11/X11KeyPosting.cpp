// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11KeyPosting.h"

#include "platform/x11/KeyboardMap.h"
#include "platform/x11/TerminalClasses.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11EventMonitors.h"
#include "platform/x11/X11Problems.h"
#include "platform/x11/X11Windows.h"
#include <unistd.h>
#include <xcb/xtest.h>

using namespace Qt::StringLiterals;

namespace vellumo {

X11KeyPosting::X11KeyPosting(X11Connection &connection, X11EventMonitors &monitors,
                             X11Windows &windows, X11Problems &problems)
    : connection_(connection)
    , monitors_(monitors)
    , windows_(windows)
{
    hasTest_ = connection_.extension(&xcb_test_id) != nullptr
        && connection_.reply<xcb_test_get_version_reply_t>(
            xcb_test_get_version(connection_.xcb(), 2, 2));
    if (connection_.isUsable() && !hasTest_) {
        problems.add(u"no XTEST extension, so applications cannot be asked to copy"_s);
    }
}

bool X11KeyPosting::canPostCopy(qint64 process)
{
    // Keys go to the focused window; the active window may have disappeared unnoticed.
    return hasTest_ && process != getpid() && mayReceiveKeys(windows_.activeWindow(), process)
        && mayReceiveKeys(windows_.focusedTopLevel(), process);
}

bool X11KeyPosting::mayReceiveKeys(xcb_window_t window, qint64 process)
{
    // The client id that the server knows, by which the owner of the copy is identified later.
    if (windows_.clientProcess(window) != process) {
        return false;
    }
    const auto [instance, className] = windows_.windowClass(window);
    return !mishandlesCopyKeys(instance) && !mishandlesCopyKeys(className);
}

bool X11KeyPosting::postCopy(qint64 process)
{
    if (!canPostCopy(process)) {
        return false;
    }
    const auto keys = KeyboardMap::read(connection_);
    if (!keys) {
        return false;
    }
    return monitors_.withoutMonitors([&](X11Connection &connection) {
        const auto send = [&](uint8_t type, xcb_keycode_t key) {
            xcb_test_fake_input(connection.xcb(), type, key, XCB_CURRENT_TIME, XCB_WINDOW_NONE, 0,
                                0, 0);
        };
        const auto release = [&](const QList<xcb_keycode_t> &held) {
            for (const auto key : held) {
                send(XCB_KEY_RELEASE, key);
            }
        };
        release(keys->heldControls);
        release(keys->heldBeforeControl);
        // Press Control before Alt or Super is released: Alt released alone would open a menu bar
        // in the application, which would then get the copy keys.
        send(XCB_KEY_PRESS, keys->control);
        release(keys->heldAfterControl);
        send(XCB_KEY_PRESS, keys->insert);
        send(XCB_KEY_RELEASE, keys->insert);
        send(XCB_KEY_RELEASE, keys->control);
    });
}

} // namespace vellumo
