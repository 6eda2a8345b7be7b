// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The desktop's real settings, in a file of the test's own.

#include "driver/Waiting.h"
#include "platform/shortcuts/Accelerator.h"
#include "platform/shortcuts/DesktopTaps.h"
#include "platform/shortcuts/GnomeShortcut.h"

#include <QDBusReply>
#include <QProcess>
#include <QSignalSpy>
#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using State = DesktopChange::State;

namespace {

const QString schema = u"org.gnome.settings-daemon.plugins.media-keys"_s;
const QString folder = u"/org/gnome/settings-daemon/plugins/media-keys/custom-keybindings/"_s;

QString entry(const QString &name)
{
    return schema + u".custom-keybinding:"_s + folder + name + u'/';
}

QString settings(const QStringList &arguments)
{
    QProcess process;
    process.start(u"gsettings"_s, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

} // namespace

class TestGnomeShortcut : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        qputenv("GSETTINGS_BACKEND", "keyfile");
        QVERIFY(desktop_.isConnected());
        settings({u"set"_s, entry(u"mine"_s), u"binding"_s, u"'<Control><Super>E'"_s});
        settings({u"set"_s, schema, u"custom-keybindings"_s, u"['"_s + folder + u"mine/']"_s});
    }

    void comparesKeys()
    {
        using accelerator::readable;
        QCOMPARE(readable(u"<Primary><Super>e"_s), u"Super+Ctrl+E"_s);
        QCOMPARE(readable(u"<Super><Control>E"_s), readable(u"<Primary><Mod4>e"_s));
        QCOMPARE(readable(u"<Alt>F4"_s), u"Alt+F4"_s);
        for (const QString &none : {u""_s, u"<Super>"_s, u"disabled key"_s})
            QCOMPARE(readable(none), QString());
        const QStringList strings{u"it's"_s, u"a \\ b"_s, u"plain"_s};
        QCOMPARE(accelerator::strings(accelerator::textOf(strings)), strings);
        QVERIFY(accelerator::strings(accelerator::textOf(QStringList())).isEmpty());
        QCOMPARE(accelerator::strings(u"[\"it's\", 'x']"_s), (QStringList{u"it's"_s, u"x"_s}));
    }

    void isOneEntryAmongOthers()
    {
        GnomeShortcut shortcut(QDBusConnection::sessionBus(), u"'/opt/a b/vellumo' --explain"_s);
        const QSignalSpy finished(&shortcut, &DesktopChange::finished);
        shortcut.refresh();
        QCOMPARE(shortcut.state(), State::Unavailable); // no daemon would run the command
        QVERIFY(desktop_.registerService(u"org.gnome.SettingsDaemon.MediaKeys"_s));
        QVERIFY(waitUntil([&] { return shortcut.state() == State::Possible; }));

        shortcut.make();
        QVERIFY(waitUntil([&] { return finished.size() == 1; }));
        QVERIFY(finished.at(0).at(0).toBool());
        QCOMPARE(shortcut.state(), State::Made);
        QCOMPARE(shortcut.keys(), u"Super+Alt+E"_s); // the first choice is the user's own
        QCOMPARE(accelerator::strings(settings({u"get"_s, schema, u"custom-keybindings"_s})),
                 (QStringList{folder + u"mine/"_s, folder + u"vellumo/"_s}));
        QCOMPARE(settings({u"get"_s, entry(u"vellumo"_s), u"command"_s}),
                 u"\"'/opt/a b/vellumo' --explain\""_s);

        GnomeShortcut next(QDBusConnection::sessionBus(), {}); // of the next run
        QVERIFY(waitUntil([&] { return next.state() == State::Made; }));
        settings({u"set"_s, entry(u"vellumo"_s), u"binding"_s, u"'<Super>j'"_s}); // by the user
        next.refresh();
        QVERIFY(waitUntil([&] { return next.keys() == u"Super+J"_s; }));

        shortcut.undo();
        QVERIFY(waitUntil([&] { return finished.size() == 2; }));
        QVERIFY(finished.at(1).at(0).toBool());
        QCOMPARE(settings({u"get"_s, schema, u"custom-keybindings"_s}),
                 u"['"_s + folder + u"mine/']"_s);
        QVERIFY(waitUntil([] {
            return settings({u"get"_s, entry(u"vellumo"_s), u"binding"_s}) == u"''"_s;
        }));
        QCOMPARE(settings({u"get"_s, entry(u"mine"_s), u"binding"_s}), u"'<Control><Super>E'"_s);
    }

    void onlyTheCompositorReportsTaps()
    {
        DesktopTaps taps(QDBusConnection::sessionBus());
        const QSignalSpy tapped(&taps, &TapSource::tapped);
        taps.setOn(true);
        auto stranger = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"stranger"_s);
        const auto tap = [](const QDBusConnection &from) {
            return from
                .call(QDBusMessage::createMethodCall(DesktopTaps::service(), DesktopTaps::path(),
                                                     DesktopTaps::interface(),
                                                     DesktopTaps::method()),
                      QDBus::BlockWithGui)
                .type();
        };
        QVERIFY(desktop_.registerService(u"org.kde.KWin"_s));
        QVERIFY(waitUntil([&] { return tap(desktop_) == QDBusMessage::ReplyMessage; }));
        QVERIFY(tapped.size() == 1);
        QCOMPARE(tap(stranger), QDBusMessage::ErrorMessage);
        taps.setOn(false);
        QCOMPARE(tap(desktop_), QDBusMessage::ErrorMessage);
        QCOMPARE(tapped.size(), 1);
        taps.setOn(true);
        QVERIFY(waitUntil([&] { return tap(desktop_) == QDBusMessage::ReplyMessage; }));
    }

private:
    QDBusConnection desktop_ =
        QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"desktop"_s);
};

QTEST_GUILESS_MAIN(TestGnomeShortcut)
#include "test_gnome_shortcut.moc"
