// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// Another X client for the tests, in a separate process. Prints one line when it is ready.
//
//   vellumo_x11_peer own [TARGET|TYPE|FORMAT|FILE...]   owns the clipboard and serves it
//   vellumo_x11_peer stall [...]      as own, but stops the process once it owns the clipboard
//   vellumo_x11_peer die [...]        as own, but ends after the first part of a large value
//   vellumo_x11_peer endless          owns the clipboard, and every value goes on for ever
//   vellumo_x11_peer manager          is the clipboard manager: takes contents over when asked to
//   vellumo_x11_peer stalled-manager  as manager, but stops the process before it is asked
//   vellumo_x11_peer dump             prints "TARGET TYPE FORMAT SHA1" for all that is offered
//   vellumo_x11_peer window INSTANCE CLASS [X]   shows a window; prints its number, then "KEY
//   STATE"
//                                     for each key pressed in it. A publishes a selection, W gives
//                                     the window another title, Q shows a second window.
#include "driver/Desktop.h"
#include "platform/x11/X11Connection.h"
#include "platform/x11/X11Problems.h"
#include "platform/x11/X11SelectionReader.h"
#include "platform/x11/X11SelectionServer.h"
#include <QCryptographicHash>
#include <QFile>
#include <QGuiApplication>
#include <array>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

void say(const QByteArray &line)
{
    std::puts(line.constData());
    std::fflush(stdout);
}

QList<X11SelectionServer::Content> contentsFrom(X11Connection &connection, const QStringList &specs)
{
    QList<X11SelectionServer::Content> contents;
    for (const QString &spec : specs) {
        const auto parts = spec.split(u'|');
        QFile file(parts.value(3));
        if (parts.size() != 4 || !file.open(QIODevice::ReadOnly)) {
            qFatal("bad content");
        }
        contents.append({connection.atom(parts[0].toUtf8()),
                         {connection.atom(parts[1].toUtf8()), static_cast<quint8>(parts[2].toInt()),
                          file.readAll()}});
    }
    return contents;
}

int own(X11Connection &connection, const QString &manner, const QStringList &specs)
{
    X11SelectionServer server(connection, connection.atom("CLIPBOARD"_ba));
    auto contents = contentsFrom(connection, specs);
    if (manner == "endless"_L1) {
        contents = {{connection.atom("UTF8_STRING"_ba),
                     {connection.atom("UTF8_STRING"_ba), 8, QByteArray(300'000, 'x')}}};
    }
    if (!server.own(contents)) {
        return 1;
    }
    connection.setEventHandler([&](const xcb_generic_event_t &event) {
        const auto &notify = eventAs<xcb_property_notify_event_t>(event);
        const bool isPartTaken = eventType(event) == XCB_PROPERTY_NOTIFY
            && notify.state == XCB_PROPERTY_DELETE && notify.window != server.window();
        if (isPartTaken && manner == "endless"_L1) {
            const QByteArray part(200'000, 'x');
            xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, notify.window, notify.atom,
                                connection.atom("UTF8_STRING"_ba), 8,
                                static_cast<uint32_t>(part.size()), part.constData());
            connection.flush();
            return;
        }
        server.handleEvent(event);
        if (isPartTaken && manner == "die"_L1) {
            connection.roundTrip();
            _exit(0);
        }
    });
    say("ready");
    if (manner == "stall"_L1) {
        raise(SIGSTOP);
    }
    return QGuiApplication::exec();
}

int manage(X11Connection &connection, bool stalls)
{
    const auto selection = connection.atom("CLIPBOARD"_ba);
    X11SelectionServer manager(connection, connection.atom("CLIPBOARD_MANAGER"_ba));
    X11SelectionServer clipboard(connection, selection);
    if (!manager.own({})) {
        return 1;
    }
    connection.setEventHandler([&](const xcb_generic_event_t &event) {
        const auto &request = eventAs<xcb_selection_request_event_t>(event);
        if (eventType(event) != XCB_SELECTION_REQUEST || request.owner != manager.window()) {
            clipboard.handleEvent(event);
            return;
        }
        QList<X11SelectionServer::Content> contents;
        X11SelectionReader reader(connection, selection, QDeadlineTimer(5000));
        const auto targets = reader.targets().value_or(QList<xcb_atom_t>());
        for (const auto target : targets) {
            const auto name = connection.atomName(target);
            if (name != "TARGETS" && name != "MULTIPLE" && name != "TIMESTAMP") {
                contents.append({target, reader.convert(target).value});
            }
        }
        clipboard.own(contents);
        xcb_selection_notify_event_t notify{};
        notify.response_type = XCB_SELECTION_NOTIFY;
        notify.requestor = request.requestor;
        notify.selection = request.selection;
        notify.target = request.target;
        notify.property = request.property;
        std::array<char, 32> wire{};
        std::memcpy(wire.data(), &notify, sizeof notify);
        xcb_send_event(connection.xcb(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                       wire.data());
        connection.flush();
    });
    say("ready");
    if (stalls) {
        raise(SIGSTOP);
    }
    return QGuiApplication::exec();
}

int dump(X11Connection &connection)
{
    X11SelectionReader reader(connection, connection.atom("CLIPBOARD"_ba), QDeadlineTimer(10'000));
    const auto targets = reader.targets();
    for (const auto target : targets.value_or(QList<xcb_atom_t>())) {
        const auto [outcome, value] = reader.convert(target);
        if (outcome == X11SelectionReader::Outcome::Value) {
            const auto hash = QCryptographicHash::hash(value.bytes, QCryptographicHash::Sha1);
            say(connection.atomName(target) + ' ' + connection.atomName(value.type) + ' '
                + QByteArray::number(value.format) + ' ' + hash.toHex());
        }
    }
    return targets ? 0 : 1;
}

xcb_window_t makeWindow(X11Connection &connection, const QString &instance,
                        const QString &className, int x)
{
    auto *xcb = connection.xcb();
    const auto window = xcb_generate_id(xcb);
    constexpr uint32_t mask = XCB_EVENT_MASK_KEY_PRESS;
    xcb_create_window(xcb, XCB_COPY_FROM_PARENT, window, connection.root(), static_cast<int16_t>(x),
                      300, 200, 100, 0, XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT,
                      XCB_CW_EVENT_MASK, &mask);
    const QByteArray classes = instance.toLatin1() + '\0' + className.toLatin1() + '\0';
    const QByteArray title = "title of " + instance.toLatin1();
    const auto pid = static_cast<uint32_t>(getpid());
    const auto set = [&](xcb_atom_t name, xcb_atom_t type, const QByteArray &value) {
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, name, type, 8,
                            static_cast<uint32_t>(value.size()), value.constData());
    };
    set(XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, classes);
    set(XCB_ATOM_WM_NAME, XCB_ATOM_STRING, title);
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, connection.atom("_NET_WM_PID"_ba),
                        XCB_ATOM_CARDINAL, 32, 1, &pid);
    xcb_map_window(xcb, window);
    connection.roundTrip();
    return window;
}

int showWindow(X11Connection &connection, const QString &instance, const QString &className, int x)
{
    const auto window = makeWindow(connection, instance, className, x);
    X11SelectionServer primary(connection, XCB_ATOM_PRIMARY);
    connection.setEventHandler([&](const xcb_generic_event_t &event) {
        if (eventType(event) == XCB_KEY_PRESS) {
            const auto &press = eventAs<xcb_key_press_event_t>(event);
            if (press.detail == test::Key::A) {
                primary.own({{connection.atom("UTF8_STRING"_ba),
                              {connection.atom("UTF8_STRING"_ba), 8, "selected"_ba}}});
            } else if (press.detail == test::Key::W) {
                xcb_change_property(connection.xcb(), XCB_PROP_MODE_REPLACE, window,
                                    XCB_ATOM_WM_NAME, XCB_ATOM_STRING, 8, 5, "other");
            } else if (press.detail == test::Key::Q) {
                makeWindow(connection, instance + u"-second"_s, className, x);
            }
            connection.roundTrip();
            say(QByteArray::number(press.detail) + ' ' + QByteArray::number(press.state));
        }
    });
    say(QByteArray::number(window));
    return QGuiApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const QGuiApplication application(argc, argv);
    const auto arguments = QGuiApplication::arguments();
    const QString verb = arguments.value(1);
    X11Problems problems;
    X11Connection connection(problems);
    if (verb == "dump"_L1) {
        return dump(connection);
    }
    if (verb.endsWith("manager"_L1)) {
        return manage(connection, verb.startsWith("stalled"_L1));
    }
    if (verb == "window"_L1) {
        return showWindow(connection, arguments.value(2), arguments.value(3),
                          arguments.value(4, u"400"_s).toInt());
    }
    return own(connection, verb, arguments.mid(2));
}
