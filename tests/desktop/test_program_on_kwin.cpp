// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The program in a Wayland session of KWin, beside a native window that reports no keys.

#include "desktop/KWinInput.h"
#include "desktop/ProgramTest.h"
#include "desktop/ReadApplications.h"
#include "platform/shortcuts/KWinTapSetting.h"
#include <QFile>
#include <QFileInfo>
#include <QJsonObject>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <linux/input-event-codes.h>

using namespace vellumo;
using namespace vellumo::test;

class TestProgramOnKwin : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        // with the folder of settings that KWin uses
        vellumo_ = std::make_unique<Program>(desktop_, QStringLiteral(VELLUMO_PROGRAM));
    }
    void cleanup() { ProgramTest::cleanup(); }

    /// The change to the settings makes KWin report taps, and is undone without a trace.
    void explainsADoubleTapOnceKWinReportsIt()
    {
        const KWinInput input;
        QVERIFY(input.isAvailable());
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"text.txt"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(sentence.toUtf8()) > 0);
        file.close();
        Application editor(gnomeTextEditor(file.fileName()));
        if (!editor.isInstalled())
            QSKIP("gnome-text-editor is not installed");

        const KWinVersion kwin(QDBusConnection::sessionBus());
        KWinTapSetting setting(QDBusConnection::sessionBus(), kwin);
        QTRY_COMPARE(setting.state(), DesktopChange::State::Possible);
        const QSignalSpy finished(&setting, &DesktopChange::finished);
        setting.make();
        QTRY_COMPARE(finished.size(), 1);
        QCOMPARE(setting.state(), DesktopChange::State::Made);

        QVERIFY(vellumo_->start() && editor.launch());
        // The X server does not see the panel.
        const auto isShown = [this](const QString &text) {
            return vellumo_->panelText().contains(text);
        };
        const auto answer = u"Ask a follow-up"_s;
        const auto nothing = u"Select text first."_s;
        // until the editor has the keyboard and its text is selected
        const auto explains = [&] {
            input.chord(KEY_LEFTCTRL, KEY_A);
            input.doubleTap();
            if (!waitUntil([&] { return isShown(answer) || isShown(nothing); }, 3s))
                return false;
            const bool isAnswered = isShown(answer);
            input.doubleTap();
            return waitUntil([&] { return !isShown(answer) && !isShown(nothing); }) && isAnswered;
        };
        QVERIFY(waitUntil(explains, 40s));
        QVERIFY(vellumo_->waitForNotes(1));
        const QJsonObject note = vellumo_->notes().constFirst();
        QCOMPARE(note["sourceText"_L1].toString(), sentence);
        QVERIFY2(note["context"_L1]["displayName"_L1].toString().contains(
                     QFileInfo(file.fileName()).completeBaseName()),
                 qPrintable(note["context"_L1]["displayName"_L1].toString()));

        setting.undo();
        QTRY_COMPARE(finished.size(), 2);
        QCOMPARE(setting.state(), DesktopChange::State::Possible);
        // KWin reads its settings a moment after it was told to
        QVERIFY(waitUntil([&] {
            input.doubleTap();
            const bool opens = waitUntil([&] { return isShown(answer) || isShown(nothing); }, 1s);
            if (opens)
                static_cast<void>(vellumo_->startAgain({u"--explain"_s})); // closes it
            return !opens;
        }));
    }
};

QTEST_GUILESS_MAIN(TestProgramOnKwin)
#include "test_program_on_kwin.moc"
