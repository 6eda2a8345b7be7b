// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The program in a Wayland session of GNOME Shell, beside native windows.

#include "desktop/MutterInput.h"
#include "desktop/ProgramTest.h"
#include "desktop/ReadApplications.h"
#include <QFile>
#include <QJsonObject>
#include <QTemporaryDir>
#include <linux/input-event-codes.h>

using namespace vellumo::test;

class TestProgramOnGnome : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        input_ = std::make_unique<MutterInput>();
        QVERIFY(MutterInput::closeOverview());
    }
    void init() { ProgramTest::init(); }
    void cleanup() { ProgramTest::cleanup(); }

    void explainsWhatIsSelectedInANativeWindow_data()
    {
        QTest::addColumn<bool>("reportsKeys");
        QTest::addColumn<bool>("hasExtension");
        QTest::newRow("GTK 3") << true << false;
        QTest::newRow("GTK 3 with the extension") << true << true;
        QTest::newRow("GTK 4") << false << false;
        QTest::newRow("GTK 4 with the extension") << false << true;
    }
    void explainsWhatIsSelectedInANativeWindow()
    {
        QFETCH(const bool, reportsKeys);
        QFETCH(const bool, hasExtension);
        const QTemporaryDir folder;
        QFile file(folder.filePath(u"text.txt"_s));
        QVERIFY(file.open(QIODevice::WriteOnly) && file.write(sentence.toUtf8()) > 0);
        file.close();
        // the window's title names the file
        const QString name = QFileInfo(file.fileName()).completeBaseName();
        Application editor(reportsKeys ? mousepad(file.fileName())
                                       : gnomeTextEditor(file.fileName()));
        if (!editor.isInstalled())
            QSKIP("not installed");
        QVERIFY(vellumo_->start() && editor.launch());
        QVERIFY(MutterInput::switchExtension(hasExtension));
        const auto explain = [&] {
            if (reportsKeys || hasExtension)
                input_->doubleTap();
            else
                QCOMPARE(vellumo_->startAgain({u"--explain"_s}), 0);
        };
        // until the editor has the keyboard and its text is selected
        QVERIFY(waitUntil(
            [&] {
                input_->chord(KEY_LEFTCTRL, KEY_A);
                explain();
                if (!vellumo_->waitForPanel(2s))
                    return false;
                QString shown;
                const bool isSettled = waitUntil([&] {
                    shown = vellumo_->panelText();
                    return shown.contains(u"Select text first."_s)
                        || shown.contains(u"Ask a follow-up"_s);
                });
                const bool isAnswered = isSettled && shown.contains(u"Ask a follow-up"_s);
                // a busy window reports its title late
                const bool isPlaced = isAnswered && vellumo_->waitForPlace(name);
                const bool isClosed = waitUntil([&] {
                    if (vellumo_->panel())
                        explain();
                    return vellumo_->waitForNoPanel(3s);
                });
                return isClosed && isPlaced;
            },
            40s));
        QVERIFY(vellumo_->waitForNotes(1));
        const QJsonObject note = vellumo_->notes().constFirst();
        QCOMPARE(note["sourceText"_L1].toString(), sentence);
        QVERIFY2(note["context"_L1]["displayName"_L1].toString().contains(name),
                 qPrintable(note["context"_L1]["displayName"_L1].toString()));
    }

private:
    std::unique_ptr<MutterInput> input_;
};

QTEST_GUILESS_MAIN(TestProgramOnGnome)
#include "test_program_on_gnome.moc"
