// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "CoordinatorFakes.h"
#include "capture/TriggerManager.h"
#include "capture/VellumoCoordinator.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

const ReadingContext page{u"web-url:https://a.test/"_s, u"a.test"_s, ReadingContextSource::webURL};
const ReadingContext window{u"app-window:x:y"_s, u"y"_s, ReadingContextSource::appWindow};
const ExplanationResult answer{u"译文"_s, u"explanation"_s};
const ExplanationError failure = DecodingError{};

// Runs the pending tasks and those that they start.
void settle()
{
    for (int hop = 0; hop < 3; ++hop) {
        QCoreApplication::processEvents();
    }
}

QStringList questions(const ReadingNote &note)
{
    QStringList questions;
    for (const FollowUpExchange &exchange : note.followUps) {
        questions.append(exchange.question + u"="_s + exchange.answer);
    }
    return questions;
}

} // namespace

class TestCoordinator : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        with_ = std::make_unique<Fixture>();
        with_->defaults.setValue(u"preferredOutputLanguage"_s, u"English"_s);
        with_->reader.selection = u" \n selected \n"_s;
        with_->tracker.context = page;
        with_->coordinator.onNoteSaved = [this](const ReadingNote &note) {
            with_->saved.append(note);
        };
        with_->coordinator.onExplanationShown = [this] { ++with_->shownCount; };
        with_->coordinator.start();
    }

    void explanationBecomesANote()
    {
        QCOMPARE(with_->entrance.count, 0);
        doubleTap();
        QCOMPARE(with_->panel.shown, IslandContent::loading(u"selected"_s));
        QCOMPARE(with_->panel.context, page);
        QCOMPARE(with_->explainer.explanations.size(), 1);
        QCOMPARE(with_->explainer.explanations[0].request.text, u"selected"_s);
        QCOMPARE(with_->explainer.explanations[0].request.language, u"English"_s);
        QCOMPARE(with_->shownCount, 0);

        with_->explainer.explanations[0].answer(answer);
        QCOMPARE(with_->panel.shown, IslandContent::result(answer, u"selected"_s, {}));
        QCOMPARE(with_->shownCount, 1);
        QVERIFY(with_->store.notes.isEmpty());

        with_->clock.now = 812345678.25;
        with_->panel.dismiss();
        QCOMPARE(with_->store.notes.size(), 1);
        const ReadingNote &note = with_->store.notes[0].note;
        QCOMPARE(with_->store.notes[0].context, page);
        QCOMPARE(note.sourceText, u"selected"_s);
        QCOMPARE(note.translation, answer.translation);
        QCOMPARE(note.explanation, answer.explanation);
        QCOMPARE(note.createdAt, 812345678.25);
        QCOMPARE(with_->saved, QList{note});
        QCOMPARE(with_->entrance.count, 1);
    }

    void unusableSelection_data()
    {
        QTest::addColumn<std::optional<QString>>("selection");
        QTest::addColumn<bool>("trusted");
        QTest::addColumn<QString>("message");
        const QString permission = u"vellumo needs Accessibility permission — enable it in System "
                                   "Settings → Privacy & Security → Accessibility."_s;
        QTest::newRow("blank") << std::optional(u" \n "_s) << true << u"Select text first."_s;
        QTest::newRow("absent") << std::optional<QString>() << true << u"Select text first."_s;
        QTest::newRow("too long") << std::optional(QString(maxSelectionLength + 1, u'a')) << true
                                  << u"That is too long — select less."_s;
        QTest::newRow("not trusted") << std::optional<QString>() << false << permission;
    }

    void unusableSelection()
    {
        QFETCH(std::optional<QString>, selection);
        QFETCH(bool, trusted);
        QFETCH(QString, message);
        with_->reader.selection = selection;
        with_->accessibility.trusted = trusted;
        doubleTap();
        QCOMPARE(with_->panel.error, message);
        QCOMPARE(with_->panel.help, trusted ? ErrorHelp::None : ErrorHelp::Permission);
        QVERIFY(with_->explainer.explanations.isEmpty());
        with_->panel.dismiss();
        QVERIFY(with_->store.notes.isEmpty());
    }

    void failedExplanationSavesNothing()
    {
        doubleTap();
        with_->explainer.explanations[0].answer(failure);
        QCOMPARE(with_->panel.error, u"vellumo could not explain this yet."_s);
        QCOMPARE(with_->panel.help, ErrorHelp::Service);
        QVERIFY(with_->coordinator.followUpTranscript().isEmpty());
        QCOMPARE(with_->shownCount, 0);
        with_->panel.dismiss();
        QVERIFY(with_->store.notes.isEmpty());

        doubleTap();
        with_->explainer.explanations[1].answer(withoutKey({KeyError::Kind::Late}));
        QCOMPARE(with_->panel.help, ErrorHelp::None); // only waiting helps
        QCOMPARE(with_->panel.reason->kind, ExplanationFailure{.kind = KeyError::Kind::Late}.kind);
    }

    void asksAgainForWhatHasFailed()
    {
        doubleTap();
        const auto tryAgain = [&] {
            with_->panel.onRetry();
            QCoreApplication::processEvents();
        };
        tryAgain(); // while the first answer is awaited
        QCOMPARE(with_->explainer.explanations.size(), 1);
        with_->explainer.explanations[0].answer(failure);
        tryAgain();
        QCOMPARE(with_->explainer.explanations.size(), 2);
        QCOMPARE(with_->explainer.explanations[1].request.text,
                 with_->explainer.explanations[0].request.text);
        with_->explainer.explanations[1].answer(ExplanationResult{u"t"_s, u"e"_s});

        ask(u"Q1"_s);
        with_->explainer.followUps[0].answer(failure);
        tryAgain();
        tryAgain(); // once for each failure
        QCOMPARE(with_->explainer.followUps.size(), 2);
        QCOMPARE(with_->explainer.followUps[1].transcript,
                 with_->explainer.followUps[0].transcript);
        with_->explainer.followUps[1].answer(u"A1"_s);
        QCOMPARE(with_->panel.thread.last(), u"A1"_s);
        const QUuid kept = with_->coordinator.closeOpenNote();
        QCOMPARE(with_->store.notes.at(0).note.id, kept);
        QCOMPARE(questions(with_->store.notes.at(0).note), QStringList{u"Q1=A1"_s});
        QVERIFY(with_->coordinator.closeOpenNote().isNull());
    }

    void explanationWithoutContextIsNotStored()
    {
        with_->tracker.context.reset();
        explainSelection(u"x"_s);
        ask(u"why?"_s);
        with_->explainer.followUps[0].answer(u"so"_s);
        with_->panel.dismiss();
        QVERIFY(with_->store.notes.isEmpty());
        QVERIFY(with_->saved.isEmpty());
        QCOMPARE(with_->entrance.count, 0);
    }

    void noteKeepsTheContextOfItsTrigger()
    {
        explainSelection(u"x"_s);
        with_->tracker.context = window;
        Q_EMIT with_->workspace.didActivateApplication(QCoreApplication::applicationPid());
        settle();
        QVERIFY(with_->panel.isOnScreen()); // our own windows are no other application
        Q_EMIT with_->workspace.didActivateApplication(99);
        settle();
        QCOMPARE(with_->store.notes.at(0).context, page);
        QCOMPARE(with_->coordinator.currentContext(), window);
    }

    void noteTakesTheContextThatSettledLate()
    {
        with_->tracker.context = window;
        doubleTap();
        const auto first = with_->tracker.refined;
        first(page);
        QCOMPARE(with_->panel.context, page);
        with_->explainer.explanations[0].answer(answer);
        QCOMPARE(with_->panel.context, page);
        first({page.key + u"2"_s, page.displayName, page.source});
        with_->panel.dismiss();
        QCOMPARE(with_->store.notes.at(0).context.key, page.key + u"2"_s);

        // a document that is shown meanwhile does not count
        explainSelection(u"y"_s);
        const ReadingNote note{QUuid::createUuid(), u"z"_s, {}, u"e"_s, 5, {}};
        with_->store.notes.append({note, window});
        with_->coordinator.reopenNote(note.id);
        with_->tracker.refined(page);
        QCOMPARE(with_->panel.context, window);
    }

    void activationBeforeThePanelDoesNotCloseIt()
    {
        Q_EMIT with_->workspace.didActivateApplication(99); // and its task waits
        with_->coordinator.handleTrigger();
        QCOMPARE(with_->workspace.skips, 1);
        settle();
        QVERIFY(with_->panel.isOnScreen());
        with_->explainer.explanations[0].answer(answer);
        QCOMPARE(with_->workspace.skips, 1); // not again: the panel was on screen
        Q_EMIT with_->workspace.didActivateApplication(99);
        settle();
        QVERIFY(!with_->panel.isOnScreen());
    }

    void lockedScreenServesNothing()
    {
        with_->screenLock.locked = true;
        with_->coordinator.demoMode = true;
        bool demo = false;
        with_->coordinator.onDemoTrigger = [&demo] { demo = true; };
        doubleTap();
        with_->coordinator.demoMode = false;
        doubleTap();
        QCOMPARE(with_->reader.readings, 0);
        QVERIFY(!demo && !with_->panel.isOnScreen());
        with_->screenLock.locked = false;
        with_->workspace.screenCovered = true;
        doubleTap();
        QCOMPARE(with_->reader.readings, 0);
        with_->workspace.screenCovered = false;
        doubleTap();
        QVERIFY(with_->panel.isOnScreen());
    }

    void onlyPairedFollowUpsAreKept()
    {
        explainSelection(u"x"_s);
        ask(u"Q1"_s);
        with_->explainer.followUps[0].answer(u"A1"_s);
        ask(u"Q2"_s);
        with_->explainer.followUps[1].answer(failure);
        ask(u"Q3"_s);
        QCOMPARE(with_->explainer.followUps[2].language, u"English"_s);
        QCOMPARE(with_->explainer.followUps[2].transcript.size(), 6); // two seeds, Q1, A1, Q2, Q3
        with_->explainer.followUps[2].answer(u"A3"_s);
        QCOMPARE(with_->panel.thread,
                 (QStringList{u"Q1"_s, u"A1"_s, u"Q2"_s,
                              u"failed: vellumo could not answer that just now."_s, u"Q3"_s,
                              u"unkept: A3"_s}));
        // a second question without an answer keeps the pairs, and the panel shows as much
        ask(u"Q4"_s);
        with_->explainer.followUps[3].answer(failure);
        ask(u"Q5"_s);
        with_->explainer.followUps[4].answer(u"A5"_s);
        QCOMPARE(with_->panel.thread.last(), u"A5"_s);
        with_->panel.dismiss();
        QCOMPARE(questions(with_->store.notes.at(0).note), (QStringList{u"Q1=A1"_s, u"Q5=A5"_s}));
    }

    void resultAfterClosedLoadingIsStillShown()
    {
        doubleTap();
        doubleTap(); // closes the loading panel
        QVERIFY(!with_->panel.isOnScreen());
        with_->explainer.explanations[0].answer(answer);
        QVERIFY(with_->panel.isOnScreen());
        with_->panel.dismiss();
        QCOMPARE(with_->store.notes.size(), 1);
    }

    void lateAnswerBelongsToItsOwnConversation()
    {
        explainSelection(u"first"_s);
        ask(u"late?"_s);
        with_->panel.dismiss();
        explainSelection(u"second"_s);
        with_->explainer.followUps[0].answer(u"too late"_s);
        QCOMPARE(with_->panel.thread, QStringList{u"late?"_s});
        QCOMPARE(with_->coordinator.followUpTranscript().size(), 2);
        with_->panel.dismiss();
        for (const NoteWithContext &pair : with_->store.notes) {
            QVERIFY(pair.note.followUps.isEmpty());
        }
    }

    void newExplanationDoesNotTakeTheOldFollowUps()
    {
        doubleTap();
        with_->panel.dismiss(); // the loading panel; its request goes on
        doubleTap();
        with_->explainer.explanations[1].answer(ExplanationResult{QString(), u"second"_s});
        ask(u"about the second?"_s);
        with_->explainer.followUps[0].answer(u"yes"_s);
        with_->explainer.explanations[0].answer(answer); // pushes the second off the screen
        QCOMPARE(with_->store.notes.size(), 1);
        QCOMPARE(questions(with_->store.notes[0].note), QStringList{u"about the second?=yes"_s});
        with_->panel.dismiss();
        QVERIFY(with_->store.notes[0].note.followUps.isEmpty());
    }

    void reopenedNote()
    {
        const ReadingNote note{
            QUuid::createUuid(),
            u"source"_s,
            u""_s,
            u"e"_s,
            5,
            {{QUuid::createUuid(), u"Q1"_s, u"A1"_s}, {QUuid::createUuid(), u"Q2"_s, u"A2"_s}}};
        with_->store.notes = {{note, window}};
        with_->entrance.onOpen();
        QCOMPARE(with_->entrance.listed, QList{note});
        with_->entrance.onSelectNote(ReadingNote{QUuid::createUuid(), {}, {}, {}, 0, {}});
        QVERIFY(!with_->panel.isOnScreen()); // a note that is gone

        with_->entrance.onSelectNote(note);
        QCOMPARE(shownResult().sourceText, u"source"_s);
        QCOMPARE(shownResult().thread.size(), 2);
        QCOMPARE(with_->panel.context, window);
        with_->panel.dismiss();
        QCOMPARE(with_->store.updates, 0);
        QVERIFY(with_->saved.isEmpty());

        with_->entrance.onSelectNote(note);
        ask(u"Q3"_s);
        with_->explainer.followUps[0].answer(u"A3"_s);
        with_->entrance.onSelectNote(note); // the list still holds the note as it was
        QCOMPARE(shownResult().thread.size(), 3);
        with_->panel.dismiss();
        QCOMPARE(with_->store.updates, 1);
        QCOMPARE(with_->store.notes.size(), 1);
        QCOMPARE(with_->store.notes[0].note.id, note.id);
        QCOMPARE(questions(with_->store.notes[0].note),
                 (QStringList{u"Q1=A1"_s, u"Q2=A2"_s, u"Q3=A3"_s}));
        QCOMPARE(with_->saved.size(), 1);

        // another device asks something and files the note elsewhere while it is open
        with_->entrance.onSelectNote(note);
        ask(u"Q5"_s);
        with_->explainer.followUps[1].answer(u"A5"_s);
        with_->store.notes[0].context = page;
        with_->store.notes[0].note.followUps.append({QUuid::createUuid(), u"Q4"_s, u"A4"_s});
        with_->panel.dismiss();
        QCOMPARE(with_->store.notes.size(), 1);
        QCOMPARE(with_->store.notes[0].context, page);
        QCOMPARE(questions(with_->store.notes[0].note).sliced(2),
                 (QStringList{u"Q3=A3"_s, u"Q4=A4"_s, u"Q5=A5"_s}));
    }

    void announcesTheNoteOfTheOpenPanel()
    {
        QStringList heard;
        connect(&with_->coordinator, &VellumoCoordinator::noteOpened, &with_->coordinator,
                [&heard](const NoteWithContext &open) {
                    heard.append(open.note.sourceText + u' ' + open.context.displayName + u' '
                                 + questions(open.note).join(u','));
                });
        connect(&with_->coordinator, &VellumoCoordinator::noteClosed, &with_->coordinator,
                [&](const QUuid &id) {
                    heard.append(with_->store.find(id) ? u"closed"_s : u"closed, not stored"_s);
                });
        const auto take = [&heard] { return std::exchange(heard, {}); };

        with_->tracker.context.reset();
        explainSelection(u"x"_s);
        QCOMPARE(take(), QStringList()); // nowhere to keep it
        with_->tracker.refined(page);
        ask(u"Q1"_s);
        with_->explainer.followUps[0].answer(u"A1"_s);
        QCOMPARE(take(), (QStringList{u"x a.test "_s, u"x a.test Q1=A1"_s}));
        with_->panel.dismiss();
        QCOMPARE(take(), QStringList{u"closed"_s});

        with_->coordinator.reopenNote(with_->store.notes.at(0).note.id);
        QCOMPARE(take(), QStringList()); // stored as it is
        ask(u"Q2"_s);
        with_->explainer.followUps[1].answer(u"A2"_s);
        QCOMPARE(take(), QStringList{u"x a.test Q1=A1,Q2=A2"_s});
        with_->coordinator.showNotice(IslandContent::loading(u"y"_s)); // replaces it
        QCOMPARE(take(), QStringList{u"closed"_s});
    }

    void demoModeReadsNothing()
    {
        int demos = 0;
        with_->coordinator.demoMode = true;
        with_->coordinator.onDemoTrigger = [&demos] { ++demos; };
        const int collapses = with_->entrance.collapses;
        doubleTap();
        QCOMPARE(demos, 1);
        QCOMPARE(with_->reader.readings, 0);
        QVERIFY(!with_->panel.isOnScreen());
        QCOMPARE(with_->entrance.collapses, collapses + 1);

        with_->coordinator.triggerDemo();
        QVERIFY(std::holds_alternative<IslandContent::Demo>(with_->panel.shown->value));
        QCOMPARE(with_->shownCount, 1);
        ask(u"nobody is listening"_s);
        QVERIFY(with_->explainer.followUps.isEmpty());
    }

    void textsFollowTheLanguage()
    {
        for (const bool isEnglish : {true, false}) {
            with_->defaults.setValue(u"preferredOutputLanguage"_s,
                                     isEnglish ? u"en-GB"_s : u"Deutsch"_s);
            explainSelection(u"x"_s);
            QCOMPARE(with_->coordinator.followUpTranscript(),
                     (QList<ChatTurn>{{ChatTurn::Role::user,
                                       isEnglish ? u"Selected text: x"_s : u"选中的内容:x"_s},
                                      {ChatTurn::Role::assistant, u"译文\nexplanation"_s}}));
            ask(u"?"_s);
            with_->explainer.followUps.last().answer(failure);
            QCOMPARE(with_->panel.thread.last(),
                     isEnglish ? u"failed: vellumo could not answer that just now."_s
                               : u"failed: vellumo 暂时无法回答这个问题。"_s);
            with_->coordinator.triggerDemo();
            const auto demo = std::get<IslandContent::Demo>(with_->panel.shown->value).result;
            QCOMPARE(demo.translation.isEmpty(), isEnglish);
            QCOMPARE(demo.explanation.startsWith(u"Just like this"), isEnglish);
            with_->coordinator.playNotesPillDemo({});
            QCOMPARE(with_->entrance.sample->translation.isEmpty(), isEnglish);
            QCOMPARE(with_->entrance.sample->explanation.startsWith(u"Select"), isEnglish);
            with_->panel.dismiss();
        }
    }

    void pillDemoStoresNothing()
    {
        bool done = false;
        with_->coordinator.playNotesPillDemo([&done] { done = true; });
        QCOMPARE(with_->entrance.sample->sourceText,
                 u"vellumo is a reading assistant for your Mac."_s);
        with_->entrance.count = -1;
        with_->entrance.demoCompletion();
        QVERIFY(done);
        QCOMPARE(with_->entrance.count, 0);
        QVERIFY(with_->store.notes.isEmpty());
    }

private:
    struct Fixture {
        FakeCalls calls;
        FakeSelectionReader reader;
        FakeContextTracker tracker;
        FakeExplainer explainer;
        test::SampleNotes store;
        FakeResultPanel panel;
        FakeNotesEntrance entrance;
        FakeDefaultsStore defaults;
        FakeEventMonitors events;
        TriggerManager trigger{events};
        FakeWorkspace workspace;
        FakeAccessibility accessibility{calls};
        FakeClock clock;
        FakeScreenLock screenLock;
        VellumoCoordinator coordinator{{reader, tracker, explainer, store, panel, entrance,
                                        UserPreferences(defaults), trigger, workspace,
                                        accessibility, clock, screenLock}};
        QList<ReadingNote> saved;
        int shownCount = 0;
    };

    void doubleTap()
    {
        with_->events.sendGlobal(
            {EventType::FlagsChanged, ModifierFlag::Option, KeyCode::Other, 0});
        with_->events.sendGlobal(
            {EventType::FlagsChanged, ModifierFlag::Option, KeyCode::Other, 100});
        settle();
    }

    void ask(const QString &question)
    {
        with_->panel.onFollowUp(question);
        settle();
    }

    void explainSelection(const QString &text)
    {
        with_->reader.selection = text;
        doubleTap();
        with_->explainer.explanations.last().answer(answer);
    }

    [[nodiscard]] IslandContent::Result shownResult() const
    {
        return std::get<IslandContent::Result>(with_->panel.shown.value().value);
    }

    std::unique_ptr<Fixture> with_;
};

QTEST_GUILESS_MAIN(TestCoordinator)
#include "test_coordinator.moc"
