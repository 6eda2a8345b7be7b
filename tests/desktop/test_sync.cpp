// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "backend/Backend.h"
#include "desktop/ProgramTest.h"
#include <QJsonObject>
#include <QTemporaryDir>

using namespace vellumo::test;

/// The built program, signed in at the stand-in backend.
class TestSync : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void notesFollowTheirReader()
    {
        const QTemporaryDir files;
        Backend backend(files.filePath(u"backend.sqlite"_s));
        const QString email = u"reader@example.org"_s;
        const QString uid = backend.tables().uidOf(email);
        keepSession(backend.tables().newRefreshToken(uid), uid, email);
        const auto home = [&](const QString &folder) {
            auto program =
                std::make_unique<Program>(desktop_, QStringLiteral(VELLUMO_PROGRAM), folder);
            for (const auto &[name, value] : backend.environment())
                program->setEnvironment(name, value);
            return program;
        };
        const auto onServer = [&] { return backend.tables().notes(uid); };
        const auto here = home(u"here"_s);
        QVERIFY(here->start());
        QVERIFY(waitUntil([&] { return backend.count(u"ListNotes"_s) == 1; })); // at launch
        QVERIFY(read(*here));
        QVERIFY(here->waitForNotes(1));
        QVERIFY(waitUntil([&] { return onServer().size() == 1; })); // as soon as it is saved
        QCOMPARE(onServer().first()["sourceText"_L1].toString(), sentence);

        // The follow-up, too: a pass would end at it while the backend is away.
        QVERIFY(waitUntil([&] { return backend.count(u"AddFollowUp"_s) == 1; }));

        // notes made while the backend is away are uploaded at the next start
        backend.fail(Backend::Fault::Offline);
        QVERIFY(read(*here));
        QVERIFY(here->waitForNotes(2));
        QVERIFY(waitUntil([&] {
            return here->process().standardOutput().contains("vellumo: history create failed"_L1);
        }));
        QCOMPARE(here->process().end(), std::optional(0));
        backend.fail(Backend::Fault::None);
        QCOMPARE(onServer().size(), 1);
        QVERIFY(here->start());
        QVERIFY(waitUntil([&] { return onServer().size() == 2; }));
        QCOMPARE(here->process().end(), std::optional(0));

        const auto there = home(u"there"_s);
        QVERIFY(there->start());
        QVERIFY(there->waitForNotes(2));
        const QJsonObject note = there->notes().constFirst();
        QCOMPARE(note["sourceText"_L1].toString(), sentence);
        QCOMPARE(note["followUps"_L1][0]["question"_L1].toString(), u"Why twice"_s);
        QCOMPARE(note["context"_L1]["key"_L1].toString(), u"cloud"_s);
        QCOMPARE(there->process().end(), std::optional(0));
        QCOMPARE(backend.complaints(), QStringList());
    }

private:
    /// Reads the sentence in an editor, asks one question, and closes the panel.
    [[nodiscard]] bool read(const Program &vellumo)
    {
        Editor editor(desktop_, sentence);
        if (!editor.open())
            return false;
        desktop_.doubleTap();
        if (!vellumo.waitForAnswer() || !vellumo.ask(u"Why twice"_s)
            || !vellumo.waitForText(u"「Why twice」"_s))
            return false;
        desktop_.tap(Key::Escape);
        return vellumo.waitForNoPanel();
    }
};

QTEST_MAIN(TestSync)
#include "test_sync.moc"
