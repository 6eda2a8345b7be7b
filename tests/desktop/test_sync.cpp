// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "backend/Backend.h"
#include "support/Application.h"
#include "support/Desktop.h"
#include "support/Program.h"
#include "support/Waiting.h"
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {
const QString sentence = u"The tide turns twice a day, and nobody asks it why."_s;
}

/// The built program, signed in, beside the stand-in backend.
class TestSync : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();

    void notesFollowTheirReader();

private:
    [[nodiscard]] std::unique_ptr<Program> home(const QString &folder) const;
    /// Reads the sentence in an editor, asks one question, and closes the panel.
    [[nodiscard]] bool read(const Program &vellumo);

    Desktop desktop_;
    QTemporaryDir files_;
    std::unique_ptr<Backend> backend_;
    QString uid_;
};

void TestSync::initTestCase()
{
    const QString email = u"reader@example.org"_s;
    backend_ = std::make_unique<Backend>(files_.filePath(u"backend.sqlite"_s));
    uid_ = backend_->tables().uidOf(email);
    keepSession(backend_->tables().newRefreshToken(uid_), uid_, email);
}

std::unique_ptr<Program> TestSync::home(const QString &folder) const
{
    auto program = std::make_unique<Program>(desktop_, QStringLiteral(VELLUMO_PROGRAM), folder);
    for (const auto &[name, value] : backend_->environment())
        program->setEnvironment(name, value);
    return program;
}

bool TestSync::read(const Program &vellumo)
{
    QFile file(files_.filePath(u"note.txt"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(sentence.toUtf8()) < 0)
        return false;
    file.close();
    Application editor(qtTextEdit(file.fileName()));
    const auto window = editor.start(desktop_);
    if (!window || !desktop_.activate(*window))
        return false;
    const bool isSelected = waitUntil([&] {
        desktop_.chord(Key::ControlLeft, Key::A);
        return waitUntil(
            [&] {
                return editor.standardOutput().endsWith(u"selected %1\n"_s.arg(sentence.size()));
            },
            500ms);
    });
    if (!isSelected)
        return false;
    desktop_.doubleTap();
    if (!vellumo.waitForAnswer() || !vellumo.ask(u"Why twice"_s)
        || !vellumo.waitForText(u"「Why twice」"_s))
        return false;
    desktop_.tap(Key::Escape);
    return vellumo.waitForNoPanel();
}

void TestSync::notesFollowTheirReader()
{
    const auto onServer = [this] { return backend_->tables().notes(uid_); };
    const auto here = home(u"here"_s);
    QVERIFY(here->start());
    QVERIFY(waitUntil([&] { return backend_->count(u"ListNotes"_s) == 1; })); // at launch
    QVERIFY(read(*here));
    QVERIFY(here->waitForNotes(1));
    QVERIFY(waitUntil([&] { return onServer().size() == 1; })); // as soon as it is saved
    QCOMPARE(onServer().first()["sourceText"_L1].toString(), sentence);

    // The follow-up, too: a pass would end at it while the backend is away.
    QVERIFY(waitUntil([&] { return backend_->count(u"AddFollowUp"_s) == 1; }));

    // what is read while the backend is away goes there at the next start
    backend_->fail(Backend::Fault::offline);
    QVERIFY(read(*here));
    QVERIFY(here->waitForNotes(2));
    QVERIFY(waitUntil([&] {
        return here->process().standardOutput().contains("vellumo: history create failed"_L1);
    }));
    QCOMPARE(here->process().end(), std::optional(0));
    backend_->fail(Backend::Fault::none);
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
    QCOMPARE(backend_->complaints(), QStringList());
}

QTEST_MAIN(TestSync)
#include "test_sync.moc"
