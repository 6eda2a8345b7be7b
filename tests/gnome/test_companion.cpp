// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The extension in GNOME Shell, beside a native window. Connections of this process take the places
// of vellumo and of another program.

#include "desktop/MutterInput.h"
#include "desktop/ReadApplications.h"
#include "driver/Waiting.h"
#include "platform/shortcuts/GnomeExtension.h"
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QFile>
#include <QSignalSpy>
#include <QTest>
#include <linux/input-event-codes.h>

using namespace Qt::StringLiterals;
using namespace vellumo::test;
using State = vellumo::DesktopChange::State;

namespace {

const QString shell = u"org.gnome.Shell"_s;
const QString companionPath = u"/app/vellumo/Companion"_s;
const QString companionInterface = u"app.vellumo.Companion"_s;
const QString vellumoName = u"app.vellumo.Vellumo"_s;

QDBusMessage callShell(const QDBusConnection &from, const QString &path, const QString &interface,
                       const QString &method, const QVariantList &arguments = {})
{
    auto message = QDBusMessage::createMethodCall(shell, path, interface, method);
    message.setArguments(arguments);
    return from.call(message, QDBus::Block, 5000);
}

} // namespace

/// A program on the bus that takes all signals of the extension which it gets.
class Listener : public QObject {
    Q_OBJECT

public:
    explicit Listener(const QString &name)
        : connection(QDBusConnection::connectToBus(QDBusConnection::SessionBus, name))
    {
        connection.connect({}, companionPath, companionInterface, {}, this,
                           SLOT(take(QDBusMessage)));
    }
    ~Listener() override { QDBusConnection::disconnectFromBus(connection.name()); }
    Q_DISABLE_COPY_MOVE(Listener)

    [[nodiscard]] bool call(const QString &method) const
    {
        return callShell(connection, companionPath, companionInterface, method).type()
            == QDBusMessage::ReplyMessage;
    }
    /// Returns how many of these signals have arrived.
    [[nodiscard]] qsizetype count(const QString &signal) const
    {
        return std::ranges::count_if(
            signals_, [&signal](const auto &message) { return message.member() == signal; });
    }
    [[nodiscard]] QVariantList lastWindow() const
    {
        for (auto it = signals_.rbegin(); it != signals_.rend(); ++it) {
            if (it->member() == "Window"_L1)
                return it->arguments();
        }
        return {};
    }

    QDBusConnection connection;

public Q_SLOTS:
    void take(const QDBusMessage &message) { signals_.append(message); }

private:
    QList<QDBusMessage> signals_;
};

class TestCompanion : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        input_ = std::make_unique<MutterInput>();
        QVERIFY(MutterInput::closeOverview());
        QFile file(folder_.filePath(u"text.txt"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write("one two three") > 0);
        file.close();
        editor_ = std::make_unique<Application>(gnomeTextEditor(file.fileName()));
        if (!editor_->isInstalled())
            QSKIP("not installed");
        QVERIFY(editor_->launch());
    }

    void isTurnedOnAndOff()
    {
        vellumo::GnomeExtension extension(QDBusConnection::sessionBus());
        const QSignalSpy finished(&extension, &vellumo::DesktopChange::finished);
        QTRY_COMPARE(extension.state(), State::Possible);
        extension.make();
        QTRY_COMPARE(extension.state(), State::Made);
        QTRY_COMPARE(finished.size(), 1);
        QVERIFY(MutterInput::switchExtension(false)); // elsewhere
        QTRY_COMPARE(extension.state(), State::Possible);
        QVERIFY(MutterInput::switchExtension(true));
        QTRY_COMPARE(extension.state(), State::Made);
        extension.undo();
        QTRY_COMPARE(extension.state(), State::Possible);
        QTRY_COMPARE(finished.size(), 2);
        extension.make();
        QTRY_COMPARE(finished.size(), 3);
        for (const auto &arguments : finished)
            QVERIFY(arguments.at(0).toBool());
    }

    void reportsToVellumoAlone()
    {
        const Listener stranger(u"stranger"_s);
        QTRY_COMPARE(callShell(stranger.connection, companionPath, companionInterface, u"Follow"_s)
                         .errorName(),
                     u"org.freedesktop.DBus.Error.AccessDenied"_s);

        Listener vellumo(u"vellumo"_s);
        QVERIFY(vellumo.connection.registerService(vellumoName));
        QTRY_COMPARE(vellumo.count(u"Available"_s), 1);
        input_->doubleTap();
        QCOMPARE(vellumo.count(u"Window"_s) + vellumo.count(u"Tapped"_s), 0);

        QVERIFY(!stranger.call(u"Follow"_s));
        QVERIFY(vellumo.call(u"Follow"_s));
        QTRY_VERIFY_WITH_TIMEOUT(vellumo.lastWindow().value(4).toString().contains("text.txt"_L1),
                                 20000);
        const QVariantList window = vellumo.lastWindow();
        QVERIFY(window.at(0).toULongLong() > 0);
        QVERIFY(editor_->owns(window.at(1).toLongLong()));
        QCOMPARE(window.at(2).toString(), u"org.gnome.TextEditor.desktop"_s);
        QCOMPARE(window.at(3).toString(), u"org.gnome.TextEditor"_s);

        input_->doubleTap();
        QTRY_COMPARE(vellumo.count(u"Tapped"_s), 2);
        QVERIFY(!stranger.call(u"Unfollow"_s));
        QVERIFY(vellumo.call(u"Unfollow"_s));
        input_->doubleTap();
        const auto before = vellumo.count(u"Window"_s);
        QVERIFY(vellumo.call(u"Follow"_s));
        QTRY_VERIFY(vellumo.count(u"Window"_s) > before);
        QVERIFY(vellumo.connection.unregisterService(vellumoName));
        QTRY_VERIFY(!vellumo.call(u"Follow"_s));
        const auto windows = vellumo.count(u"Window"_s);
        input_->doubleTap();
        QVERIFY(vellumo.connection.registerService(vellumoName));
        QTRY_COMPARE(vellumo.count(u"Available"_s), 2);
        QCOMPARE(vellumo.count(u"Tapped"_s), 2);
        QCOMPARE(vellumo.count(u"Window"_s), windows);
        QCOMPARE(stranger.count(u"Available"_s) + stranger.count(u"Window"_s)
                     + stranger.count(u"Tapped"_s),
                 0);
    }

    void reportsTapsOfAltAlone_data()
    {
        constexpr int alt = KEY_LEFTALT;
        QTest::addColumn<QList<int>>("keys"); // presses; negative: releases
        QTest::addColumn<int>("taps");
        QTest::newRow("two taps") << QList{alt, -alt, alt, -alt} << 2;
        QTest::newRow("right Alt") << QList{KEY_RIGHTALT, -KEY_RIGHTALT} << 1;
        QTest::newRow("with a letter") << QList{alt, KEY_F, -KEY_F, KEY_G, -KEY_G, -alt} << 0;
        QTest::newRow("letter released later") << QList{alt, KEY_F, -alt, -KEY_F} << 0;
        QTest::newRow("with a button") << QList{alt, BTN_LEFT, -BTN_LEFT, -alt} << 0;
        QTest::newRow("in a chord") << QList{KEY_LEFTCTRL, alt, -alt, -KEY_LEFTCTRL} << 0;
        QTest::newRow("before a chord") << QList{alt, KEY_LEFTSHIFT, -KEY_LEFTSHIFT, -alt} << 0;
        QTest::newRow("among letters") << QList{KEY_F, -KEY_F, alt, -alt, KEY_F, -KEY_F} << 1;
        QTest::newRow("with Caps Lock")
            << QList{KEY_CAPSLOCK, -KEY_CAPSLOCK, alt, -alt, KEY_CAPSLOCK, -KEY_CAPSLOCK} << 1;
    }
    void reportsTapsOfAltAlone()
    {
        QFETCH(const QList<int>, keys);
        QFETCH(const int, taps);
        Listener vellumo(u"vellumo"_s);
        QVERIFY(vellumo.connection.registerService(vellumoName));
        QTRY_VERIFY(vellumo.call(u"Follow"_s));
        for (const int key : keys) {
            if (key > 0)
                input_->press(static_cast<quint32>(key));
            else
                input_->release(static_cast<quint32>(-key));
            QTest::qWait(15);
        }
        QVERIFY(MutterInput::closeOverview()); // the button may have opened it
        QTest::qWait(100);
        input_->press(KEY_LEFTALT); // after it, all that came before has been reported
        QTest::qWait(30);
        input_->release(KEY_LEFTALT);
        QTRY_VERIFY(vellumo.count(u"Tapped"_s) > taps);
        QCOMPARE(vellumo.count(u"Tapped"_s), taps + 1);
        QVERIFY(vellumo.connection.unregisterService(vellumoName));
    }

    void leavesNothingBehind()
    {
        Listener vellumo(u"vellumo"_s);
        QVERIFY(vellumo.connection.registerService(vellumoName));
        for (int i = 1; i <= 3; ++i) {
            QTRY_VERIFY(vellumo.call(u"Follow"_s));
            input_->press(KEY_LEFTALT); // ends while the key is held
            QVERIFY(MutterInput::switchExtension(false));
            QTRY_COMPARE(vellumo.count(u"Ended"_s), i);
            input_->release(KEY_LEFTALT);
            QVERIFY(!vellumo.call(u"Follow"_s));
            QVERIFY(MutterInput::switchExtension(true));
        }
        QTRY_COMPARE(vellumo.count(u"Available"_s), 4);
        QCOMPARE(vellumo.count(u"Tapped"_s), 0);
        QVERIFY(MutterInput::switchExtension(false));
        QTRY_COMPARE(vellumo.count(u"Ended"_s), 4);

        QFile log(qEnvironmentVariable("TEST_DESKTOP_DIR") + u"/log/wm"_s);
        QVERIFY(log.open(QIODevice::ReadOnly));
        const QByteArray text = log.readAll();
        QVERIFY2(!text.contains("vellumo") && !text.contains("JS ERROR"), text.constData());
    }

private:
    QTemporaryDir folder_;
    std::unique_ptr<MutterInput> input_;
    std::unique_ptr<Application> editor_;
};

QTEST_GUILESS_MAIN(TestCompanion)
#include "test_companion.moc"
