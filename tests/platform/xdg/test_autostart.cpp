// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/xdg/AutostartEntry.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace vellumo;
using namespace Qt::StringLiterals;

using State = LoginStart::State;
Q_DECLARE_METATYPE(vellumo::LoginStart::State)

namespace {

const QString entryName = u"/app.vellumo.Vellumo.desktop"_s;

void write(const QString &folder, const QByteArray &entry)
{
    QDir().mkpath(folder);
    QFile file(folder + entryName);
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(entry) == entry.size());
}

QByteArray read(const QString &folder)
{
    QFile file(folder + entryName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class TestAutostart : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsAndWrites_data()
    {
        QTest::addColumn<QByteArray>("own");
        QTest::addColumn<QByteArray>("forAll");
        QTest::addColumn<State>("state");
        QTest::addColumn<State>("off"); ///< after it was switched off
        const QByteArray good =
            "[Desktop Entry]\nType=Application\nName=mine\nExec=true --background\n";
        const QByteArray none;
        QTest::newRow("nothing") << none << none << State::Off << State::Off;
        QTest::newRow("own") << good << none << State::On << State::SwitchedOff;
        QTest::newRow("with a variable")
            << QByteArray("[Desktop Entry]\nName=mine\nExec=env \"A=$B\" x --background\n\n")
            << none << State::On << State::SwitchedOff;
        QTest::newRow("own and for all") << good << good << State::On << State::SwitchedOff;
        QTest::newRow("hidden") << good + "Hidden=true\n"
                                << none << State::SwitchedOff << State::SwitchedOff;
        QTest::newRow("switched off by the desktop")
            << good + "X-GNOME-Autostart-enabled=false\n[Desktop Action x]\nHidden=true\n"
            << none << State::SwitchedOff << State::SwitchedOff;
        QTest::newRow("of another group") << good + "\n[Desktop Action x]\nHidden=true\n"
                                          << none << State::On << State::SwitchedOff;
        QTest::newRow("gone") << QByteArray(
            "[Desktop Entry]\nType=Application\nExec=/no/such thing\n")
                              << none << State::Broken << State::SwitchedOff;
        QTest::newRow("for all") << none << good << State::OnForAll << State::SwitchedOff;
        QTest::newRow("for all, hidden here") << QByteArray("[Desktop Entry]\nHidden=true\n")
                                              << good << State::SwitchedOff << State::SwitchedOff;
    }

    void readsAndWrites()
    {
        QFETCH(QByteArray, own);
        QFETCH(QByteArray, forAll);
        QFETCH(State, state);
        QFETCH(State, off);
        const QTemporaryDir folder;
        const QStringList folders{folder.filePath(u"own/autostart"_s), folder.filePath(u"all"_s)};
        if (!own.isEmpty()) {
            write(folders[0], own);
            QVERIFY(QFile::setPermissions(folders[0] + entryName,
                                          QFile::ReadOwner | QFile::WriteOwner));
        }
        if (!forAll.isEmpty()) {
            write(folders[1], forAll);
        }
        AutostartEntry entry(folders, u"/bin/true"_s);
        QCOMPARE(entry.state(), state);
        QVERIFY(entry.setOn(true));
        QCOMPARE(entry.state(), State::On);
        const QByteArray written = read(folders[0]);
        QVERIFY(written.startsWith("[Desktop Entry]\n") && written.contains("\nExec="));
        QVERIFY(written.contains(" --background\n"));
        QCOMPARE(written.contains("Name=mine"),
                 own.contains("Name=mine")); // entries of others stay
        QVERIFY(entry.setOn(false));
        QCOMPARE(entry.state(), off);
        QVERIFY(entry.setOn(true));
        QCOMPARE(read(folders[0]), written);
        if (!own.isEmpty()) { // a file that was there keeps its mode
            QVERIFY(!QFile::permissions(folders[0] + entryName).testFlag(QFile::ReadOther));
        }
        QCOMPARE(QDir(folders[0]).entryList(QDir::Files | QDir::Hidden).size(), 1);
    }

    void startsAnyProgram()
    {
        const QTemporaryDir folder;
        const QString program = folder.filePath(u"a $b%f\\c\"d`e"_s);
        AutostartEntry entry({folder.path()}, program);
        QVERIFY(QFile::link(u"/bin/true"_s, program) && entry.setOn(true));
        QVERIFY(read(folder.path()).contains(R"(/a \\$b%%f\\\\c\\"d\\`e" --background)"));
        QCOMPARE(entry.state(), State::On);
        QVERIFY(QFile::remove(program));
        QCOMPARE(entry.state(), State::Broken);
    }

    void seesChangesFromOutside()
    {
        const QTemporaryDir folder;
        const QString own = folder.filePath(u"autostart"_s);
        AutostartEntry entry({own}, u"/bin/true"_s);
        int changes = 0;
        connect(&entry, &LoginStart::changed, this, [&changes] { ++changes; });
        write(own, "[Desktop Entry]\nExec=true\n");
        QTRY_VERIFY(changes > 0 && entry.state() == State::On);
        QFile::remove(own + entryName);
        QTRY_COMPARE(entry.state(), State::Off);
        const int before = changes;
        write(own, "[Desktop Entry]\nExec=true\n");
        QTRY_VERIFY(changes > before);
    }
};

QTEST_GUILESS_MAIN(TestAutostart)
#include "test_autostart.moc"
