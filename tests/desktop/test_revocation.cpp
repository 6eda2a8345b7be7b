// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "desktop/ProgramTest.h"
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVariant>
#include <QFile>
#include <QSettings>
#include <QTemporaryDir>

using namespace vellumo::test;

/// The built program while the desktop's accessibility switch is turned off and on again.
class TestRevocation : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (qEnvironmentVariable("TEST_DESKTOP_WM") != "kwin_x11"_L1)
            return;
        // this window manager lets no window take the keyboard
        QSettings(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/kwinrc"_s, QSettings::IniFormat)
            .setValue(u"Windows/FocusStealingPreventionLevel"_s, 4);
        const QDBusMessage call = QDBusMessage::createMethodCall(
            u"org.kde.KWin"_s, u"/KWin"_s, u"org.kde.KWin"_s, u"reconfigure"_s);
        QCOMPARE(QDBusConnection::sessionBus().call(call).type(), QDBusMessage::ReplyMessage);
    }

    void warnsAsksAndGoesOn()
    {
        QVERIFY(vellumo_->start() && editor_->open());
        QVERIFY(waitUntil(
            [this] {
                desktop_.chord(Key::ControlLeft, Key::A);
                desktop_.doubleTap();
                const bool isTrusted = vellumo_->waitForAnswer();
                if (!isTrusted)
                    qWarning().noquote() << "no answer but" << vellumo_->panelText();
                return vellumo_->dismissPanel() && isTrusted;
            },
            60s));
        for (int change = 0; change < 3; ++change) {
            QVERIFY(desktop_.activate(editor_->window()));
            desktop_.type(u"hello"_s); // a window that is being typed into keeps the keyboard
            setSwitch(false);
            QVERIFY(waitForDialog());
            const WindowId alert = dialogs().constFirst();
            QVERIFY(waitUntil([&] { return desktop_.activeWindow() == alert; }));
            if (change > 0) {
                QVERIFY(waitUntil([&] {
                    desktop_.tap(Key::Escape);
                    return waitUntil([&] { return !desktop_.isVisible(alert); }, 500ms);
                }));
                QVERIFY(waitForDialog(alert)); // the question comes only now
            }
            setSwitch(true);
            QVERIFY(waitUntil([this] { return dialogs().isEmpty(); }));
        }
        desktop_.doubleTap();
        QVERIFY(vellumo_->waitForPanel());
    }

    void opensTheSettingsOfTheDesktop()
    {
        const QTemporaryDir folder;
        QFile page(folder.filePath(u"xfce4-accessibility-settings"_s));
        QVERIFY(page.open(QIODevice::WriteOnly));
        page.write("#!/bin/sh\ntouch \"$0.shown\"\n");
        page.setPermissions(page.permissions() | QFile::ExeOwner | QFile::ExeUser);
        page.close();
        vellumo_->setEnvironment(u"PATH"_s, folder.path() + u':' + qEnvironmentVariable("PATH"));
        vellumo_->setEnvironment(u"XDG_CURRENT_DESKTOP"_s, u"Distribution:XFCE"_s);
        QVERIFY(vellumo_->start());
        QVERIFY(waitForPermission());
        setSwitch(false);
        QVERIFY(waitForDialog());
        const WindowId alert = dialogs().constFirst();
        QVERIFY(waitUntil([&] { return desktop_.activeWindow() == alert; }));
        QVERIFY(waitUntil([&] { // keys may go astray until a new window has the keyboard
            desktop_.tap(Key::Return);
            return waitUntil([&] { return !desktop_.isVisible(alert); }, 500ms);
        }));
        QVERIFY(waitUntil([&] { return QFile::exists(page.fileName() + u".shown"_s); }));
        QVERIFY(waitForDialog(alert));
    }

private:
    static void setSwitch(bool isOn)
    {
        QDBusMessage call = QDBusMessage::createMethodCall(
            u"org.a11y.Bus"_s, u"/org/a11y/bus"_s, u"org.freedesktop.DBus.Properties"_s, u"Set"_s);
        call.setArguments(
            {u"org.a11y.Status"_s, u"IsEnabled"_s, QVariant::fromValue(QDBusVariant(isOn))});
        QCOMPARE(QDBusConnection::sessionBus().call(call).type(), QDBusMessage::ReplyMessage);
    }

    /// Returns the program's windows other than panel and pill.
    [[nodiscard]] QList<WindowId> dialogs() const
    {
        QList<WindowId> found = desktop_.windows(u"vellumo"_s);
        found.removeIf([this](WindowId window) {
            return desktop_.geometry(window).height() < 150 || window == vellumo_->panel();
        });
        return found;
    }

    [[nodiscard]] bool waitForDialog(WindowId other = 0) const
    {
        return waitUntil([&] { return dialogs().size() == 1 && dialogs().constFirst() != other; });
    }
    /// Waits until the program knows that it has permission, which may take a while in a busy
    /// start.
    [[nodiscard]] bool waitForPermission()
    {
        int times = 0; // in a row, as the program itself checks twice
        return waitUntil(
            [&] {
                desktop_.doubleTap();
                const bool isShown = vellumo_->waitForPanel(3s).has_value();
                const bool isTrusted =
                    isShown && vellumo_->panelText().contains("Select text first."_L1);
                times = isTrusted ? times + 1 : 0;
                return vellumo_->dismissPanel() && times == 2;
            },
            60s);
    }

    void prepare() override { setSwitch(true); }
};

QTEST_MAIN(TestRevocation)
#include "test_revocation.moc"
