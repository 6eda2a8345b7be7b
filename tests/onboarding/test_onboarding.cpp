// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// The order of the cards, and what each requests of the program.

#include "OnboardingDesk.h"
#include <QRegularExpression>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// Records the callbacks of the first run.
struct Desk : OnboardingDesk {
    QStringList log;
    std::function<void()> endDemo;

    explicit Desk(bool isTrusted = false) : OnboardingDesk(isTrusted)
    {
        flow.onFinish = [this] {
            log << (flow.isCompleted() && !flow.window() && isOnboarded() ? u"finish"_s : u"?"_s);
        };
        using Flow = OnboardingWindowController;
        QObject::connect(&flow, &Flow::closed, &flow, [this] { log << u"closed"_s; });
        QObject::connect(&flow, &Flow::selectTestLeft, &flow, [this] { log << u"panel closed"_s; });
        flow.onNotesPillHighlight = [this](bool on) { log << (on ? u"lit"_s : u"unlit"_s); };
        flow.onPlayNotesDemo = [this](auto done) {
            log << u"demo"_s;
            endDemo = done;
        };
        QObject::connect(&flow, &Flow::trustPromptRequested, &flow,
                         [this] { calls << u"show it"_s; });
        flow.onSubmitProfile = [this](const auto &...answers) {
            log << QStringList{answers.value_or(u"-"_s)...}.join(u',');
        };
    }
    [[nodiscard]] bool isOnboarded() const
    {
        return defaults.value(u"hasCompletedOnboarding"_s).toBool();
    }
};

} // namespace

class TestOnboarding : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"qrc:"_s)); }

    void cardsHaveAnOrder()
    {
        for (const bool isTrusted : {false, true}) {
            for (const bool isSignedIn : {false, true}) {
                QList<int> next{1, 2, 3, 4, 5, 6, 7, 8, -1}; // -1: none
                QList<int> back{-1, 0, 1, 2, 3, 4, 5, 6, 7};
                if (isTrusted) { // the card of the permission is skipped
                    next[1] = 3;
                    back[3] = 1;
                }
                if (isSignedIn)
                    back[1] = -1;
                else
                    next[5] = -1; // no questions without an account
                Desk desk(isTrusted);
                if (isSignedIn) {
                    desk.flow.present({});
                    desk.signIn();
                    desk.flow.present({});
                    QCOMPARE(desk.flow.phase(), Phase::privacy);
                }
                for (int card = 0; card < phaseNames.size(); ++card) {
                    desk.flow.present(phaseNames[card]);
                    QCOMPARE(desk.item(u"back"_s) != nullptr, back[card] >= 0);
                    desk.flow.goBack();
                    QCOMPARE(desk.flow.position(), back[card] >= 0 ? back[card] : card);
                    desk.flow.present(phaseNames[card]);
                    desk.flow.advance();
                    QCOMPARE(desk.flow.isCompleted(), next[card] < 0);
                    QCOMPARE(desk.flow.position(), next[card] >= 0 ? next[card] : card);
                }
            }
        }
    }

    void onlyTheSelectTestLetsADoubleTapThrough()
    {
        Desk desk;
        for (const QString &name : phaseNames) {
            desk.flow.present(name);
            const bool isSelect = name == u"select"_s;
            QCOMPARE(desk.flow.handleDemoTrigger(), isSelect);
            QCOMPARE(desk.flow.isTestPassed(), name == u"keytest"_s);
            desk.flow.noteExplanationShown();
            QCOMPARE(desk.flow.isTestPassed(), isSelect || name == u"keytest"_s);
            if (desk.flow.isTestPassed()) {
                const QString test = isSelect ? u"select"_s : u"gesture"_s;
                QCOMPARE(desk.text(test + u"HintLabel"_s), u"✓ That's it"_s);
                desk.click(test + u"ContinueButton"_s);
                QCOMPARE(desk.flow.position(), phaseNames.indexOf(name) + 1);
            }
        }
    }

    void optionLightsUp()
    {
        Desk desk;
        desk.flow.present(u"keytest"_s);
        QCOMPARE(desk.events.localMasks(), QList<EventMask>{0x1000});
        QVERIFY(!desk.isEnabled(u"gestureContinueButton"_s));
        const auto isLit = [&] {
            return desk.item(u"keyboardDiagram"_s)->property("isOptionDown").toBool();
        };
        for (const auto &[flags, lit] : {std::pair(ModifierFlag::Option, true),
                                         {ModifierFlag::Shift, false},
                                         {ModifierFlag::Option | ModifierFlag::CapsLock, true},
                                         {0U, false}}) {
            QVERIFY(desk.events.sendLocal({.modifierFlags = flags}));
            QCOMPARE(isLit(), lit);
        }
        desk.click(u"skip"_s);
        QCOMPARE(desk.flow.phase(), Phase::selectTest);
        QVERIFY(desk.events.localMasks().isEmpty());
    }

    void permissionIsWatched()
    {
        Desk desk;
        desk.flow.present(u"permission"_s);
        desk.click(u"permissionAllowButton"_s);
        QCOMPARE(desk.calls.mid(0, 1), QStringList{u"show it"_s});
        QCOMPARE(desk.calls.size(), 2); // and the platform was asked
        QVERIFY(!desk.isEnabled(u"permissionContinueButton"_s));
        for (const bool isTrusted : {true, false, true}) {
            desk.accessibility.trusted = isTrusted;
            desk.clock.advance(799ms);
            QCOMPARE(desk.flow.isTrusted(), !isTrusted);
            desk.clock.advance(1ms);
            QCOMPARE(desk.text(u"permissionAllowButton"_s),
                     isTrusted ? u"✓ Enabled"_s : u"Allow"_s);
            QCOMPARE(desk.isEnabled(u"permissionAllowButton"_s), !isTrusted);
        }
        desk.click(u"permissionContinueButton"_s);
        QCOMPARE(desk.flow.phase(), Phase::keyTest);
        desk.accessibility.trusted = false; // withdrawn while another card is shown
        desk.clock.advance(1s);
        desk.flow.goBack();
        QCOMPARE(desk.flow.phase(), Phase::permission);
        QCOMPARE(desk.text(u"permissionAllowButton"_s), u"Allow"_s);
        desk.click(u"notNow"_s);
        QCOMPARE(desk.flow.phase(), Phase::keyTest);
    }

    void notesCardLightsThePill()
    {
        Desk desk;
        desk.flow.present(u"notes"_s);
        QCOMPARE(std::exchange(desk.log, {}), (QStringList{u"lit"_s, u"demo"_s}));
        const auto endOfFirst = desk.endDemo;
        desk.flow.goBack();
        QCOMPARE(std::exchange(desk.log, {}), QStringList{u"unlit"_s});
        desk.flow.advance();
        endOfFirst();
        QVERIFY(!desk.flow.isDemoOver());
        desk.endDemo();
        QVERIFY(desk.flow.isDemoOver());
        desk.click(u"notesContinueButton"_s);
        QCOMPARE(desk.log,
                 (QStringList{u"panel closed"_s, u"lit"_s, u"demo"_s, u"-,-,-"_s, u"unlit"_s,
                              u"finish"_s}));
    }

    void surveyIsAnsweredAndSubmitted()
    {
        Desk desk;
        desk.flow.present(u"hearabout"_s);
        QVERIFY(!desk.isEnabled(u"surveyContinueButton"_s));
        desk.click(u"YouTube"_s);
        desk.click(u"AI tools"_s); // instead
        desk.click(u"surveyContinueButton"_s);
        desk.flow.switchLanguage();
        QCOMPARE(desk.text(u"Customer support"_s), u"客户支持"_s);
        desk.click(u"Customer support"_s);
        desk.flow.goBack();
        QCOMPARE(desk.flow.survey()->answer(), u"AI tools"_s);
        desk.click(u"surveyContinueButton"_s);
        desk.click(u"surveyContinueButton"_s);
        QVERIFY(!desk.isOnboarded());
        desk.click(u"Technology"_s);
        desk.click(u"skip"_s); // the last question
        QCOMPARE(desk.log, (QStringList{u"AI tools,Customer support,-"_s, u"finish"_s}));
        desk.flow.advance();
        QCOMPARE(desk.log.size(), 2);

        Desk silent;
        silent.flow.present(u"industry"_s);
        silent.flow.advance();
        QCOMPARE(silent.log, (QStringList{u"-,-,-"_s, u"finish"_s}));
    }

    void closingStoresNothing()
    {
        for (const QString &card : phaseNames.mid(0, 6)) {
            Desk desk;
            desk.flow.present(card);
            desk.log.clear();
            desk.flow.window()->close();
            const QStringList left = card == "notes"_L1 ? QStringList{u"unlit"_s}
                : card == "select"_L1                   ? QStringList{u"panel closed"_s}
                                                        : QStringList();
            QCOMPARE(desk.log, left + QStringList{u"closed"_s});
            QVERIFY(!desk.flow.window());
            QVERIFY(!desk.isOnboarded());
            QVERIFY(desk.events.localMasks().isEmpty());
            if (desk.endDemo)
                desk.endDemo();
            QVERIFY(!desk.flow.handleDemoTrigger());
            QVERIFY(!desk.flow.raise());
        }
    }

    void closingAQuestionEnds()
    {
        Desk desk;
        desk.flow.present(u"hearabout"_s);
        desk.click(u"YouTube"_s);
        desk.flow.window()->close();
        QCOMPARE(desk.log, (QStringList{u"YouTube,-,-"_s, u"finish"_s}));
    }
};

QTEST_MAIN(TestOnboarding)
#include "test_onboarding.moc"
