// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The connection to sway, with a server that answers as sway does.

#include "platform/wayland/SwayConnection.h"
#include "platform/wayland/SwayTaps.h"
#include "platform/wayland/SwayWindows.h"
#include <QJsonObject>
#include <QLocalServer>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

using Type = SwayMessage::Type;

const QByteArray terminal =
    R"({"id": 5, "pid": 41, "app_id": "foot", "name": "sh", "focused": true})";
const QByteArray xterm = R"({"id": 6, "pid": 42, "app_id": null, "name": "x",
    "window_properties": {"class": "XTerm"}, "focused": true})";
const QByteArray workspace = R"({"id": 4, "name": "1", "focused": true})";

const QByteArray newTitle = R"({"id": 5, "name": "new"})";
const QByteArray otherTitle = R"({"id": 9, "name": "other"})";

/// Events after which the bindings of Alt are gone.
const std::pair<quint32, QByteArray> unbindingEvents[] = {
    {Type::WorkspaceEvent, R"({"change": "reload"})"},
    {Type::ModeEvent, R"({"change": "default"})"},
    {Type::TickEvent, R"({"payload": "vellumo-tap unbound"})"},
};

class Server {
public:
    Server() { server_.listen(folder_.filePath(u"sway"_s)); }

    [[nodiscard]] QString path() const { return server_.fullServerName(); }
    [[nodiscard]] bool isConnected() { return socket_ || server_.hasPendingConnections(); }

    /// Answers the requests that have arrived. Returns the commands of all requests.
    const QByteArrayList &answer()
    {
        if (auto *next = server_.nextPendingConnection()) {
            socket_.reset(next);
            reader_ = {};
        }
        reader_.append(socket_ ? socket_->readAll() : QByteArray());
        while (const auto request = reader_.next()) {
            if (request->type == Type::RunCommand) {
                commands_.append(request->payload);
            }
            send(request->type,
                 request->type == Type::GetTree
                     ? R"({"nodes": [{}, {"floating_nodes": [)" + front + "]}]}"
                     : QByteArray(R"([{"success": true}])"));
        }
        return commands_;
    }

    void send(quint32 type, const QByteArray &payload)
    {
        for (const char byte : SwayMessage{type, payload}.framed()) {
            sendBytes({1, byte});
        }
    }

    void sendBytes(const QByteArray &bytes)
    {
        socket_->write(bytes);
        socket_->flush();
    }

    QByteArray front = terminal;

private:
    QTemporaryDir folder_;
    QLocalServer server_;
    std::unique_ptr<QLocalSocket> socket_;
    SwayMessageReader reader_;
    QByteArrayList commands_;
};

QByteArray ownWindow()
{
    return R"({"id": 8, "pid": )" + QByteArray::number(getpid()) + "}";
}

QByteArray windowEvent(const QByteArray &change, const QByteArray &container)
{
    return R"({"change": ")" + change + R"(", "container": )" + container + "}";
}

QByteArray bindingEvent(const QByteArray &command)
{
    return R"({"change": "run", "binding": {"command": ")" + command + R"("}})";
}

} // namespace

class TestSway : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void followsTheWindowInFront()
    {
        Server server;
        SwayConnection sway(server.path(), [](qint64 process) { return process == getpid(); });
        SwayWindows windows(sway);
        sway.open();
        QVERIFY(!windows.frontWindow());
        const auto front = [&]() -> std::optional<FrontWindow> {
            server.answer();
            return windows.frontWindow();
        };
        QTRY_VERIFY(front());
        QCOMPARE(front()->processIdentifier, 41);
        QCOMPARE(front()->applicationId, u"foot"_s);
        const auto since = front()->since;

        server.send(Type::WindowEvent, windowEvent("title", newTitle));
        server.send(Type::WindowEvent, windowEvent("title", otherTitle));
        server.send(Type::WindowEvent, windowEvent("focus", terminal).replace("sh", "v\xff"));
        server.send(Type::WindowEvent, "not an object");
        server.send(Type::WindowEvent, windowEvent("focus", ownWindow()));
        QTRY_COMPARE(windows.windowTitle(41), QString(u"v\ufffd"_s));
        QVERIFY(front()->since == since);
        QVERIFY(!windows.windowTitle(42));

        server.send(Type::WindowEvent, windowEvent("focus", xterm));
        QTRY_COMPARE(front()->processIdentifier, 42);
        QCOMPARE(front()->applicationName, u"XTerm"_s);
        server.front = workspace;
        server.send(Type::WindowEvent, windowEvent("close", xterm));
        QTRY_VERIFY(!front()->isActive);
    }

    void noticesThatNoWindowIsLeft()
    {
        for (const QByteArray &change : {"close"_ba, "move"_ba}) {
            Server server;
            SwayConnection sway(server.path(), [](qint64 /*process*/) { return true; });
            SwayWindows windows(sway);
            sway.open();
            QTRY_VERIFY(server.answer().isEmpty() && windows.frontWindow());
            server.front = workspace;
            server.send(Type::WindowEvent, windowEvent(change, terminal));
            QTRY_VERIFY(server.answer().isEmpty() && !windows.frontWindow()->isActive);
        }
    }

    void opensABrokenConnectionAgain()
    {
        Server server;
        SwayConnection sway(server.path(), [](qint64 /*process*/) { return true; });
        SwayWindows windows(sway);
        const QSignalSpy closed(&sway, &SwayConnection::closed);
        sway.open();
        QTRY_VERIFY(server.answer().isEmpty() && windows.frontWindow());
        server.sendBytes("no messages at all");
        QTRY_COMPARE(closed.size(), 1);
        QVERIFY(!windows.frontWindow());
        QTRY_VERIFY(server.answer().isEmpty() && windows.frontWindow());
    }

    void leavesTheCompositorOfAnotherSessionAlone()
    {
        Server server;
        SwayConnection sway(server.path(), [](qint64 /*process*/) { return false; });
        sway.open();
        QTRY_VERIFY(server.isConnected());
        QVERIFY(!sway.isOpen());
    }

    void bindsAltAndReportsItsTapsOnly()
    {
        Server server;
        SwayConnection sway(server.path(), [](qint64 /*process*/) { return true; });
        SwayWindows windows(sway);
        std::optional<SwayTaps> taps(sway);
        const QSignalSpy tapped(&*taps, &TapSource::tapped);
        sway.open();
        taps->setListening(true);
        QTRY_COMPARE(server.answer().size(), 1);
        QTRY_VERIFY(taps->hearsEveryWindow());
        for (const auto &[type, content] : unbindingEvents) {
            const auto bound = server.answer().size();
            server.send(type, content);
            QTRY_COMPARE(server.answer().size(), bound + 1);
            QVERIFY(server.answer().constLast().startsWith("bindsym"));
        }
        server.send(Type::BindingEvent, bindingEvent("exec foot"));
        server.send(Type::BindingEvent, bindingEvent("nop"));
        server.send(Type::BindingEvent, bindingEvent("nop vellumo-tap"));
        QTRY_COMPARE(tapped.size(), 1);
        QVERIFY(taps->hearsEveryWindow());
        server.send(Type::BindingEvent, R"({"change": "run", "binding": {"symbol": "Alt_L",
            "command": "exec foot", "event_state_mask": []}})"); // the user's, which is preferred
        QTRY_VERIFY(!taps->hearsEveryWindow());
        taps->setListening(false);
        QTRY_VERIFY(server.answer().constLast().startsWith("unbindsym"));
        const auto commands = server.answer().size();
        for (const auto &[type, content] : unbindingEvents) {
            server.send(type, content);
        }
        server.send(Type::BindingEvent, bindingEvent("nop vellumo-tap"));
        server.send(Type::WindowEvent, windowEvent("focus", xterm)); // after the other events
        QTRY_COMPARE(windows.windowTitle(42), QString(u"x"_s));
        QCOMPARE(server.answer().size(), commands);
        taps.reset();
        QTRY_VERIFY(server.answer().constLast().startsWith("unbindsym"));
        QCOMPARE(tapped.size(), 1);
    }
};

QTEST_GUILESS_MAIN(TestSway)
#include "test_sway.moc"
