// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Texts and keys of the cards, in both languages.

#include "OnboardingDesk.h"
#include "onboarding/Survey.h"
#include <QFile>
#include <QRegularExpression>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;

class TestOnboardingCards : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(QRegularExpression(u"qrc:"_s)); }

    void everyCardSpeaksBothLanguages()
    {
        const QStringList international{u"English"_s, u"Notes"_s, u"Ctrl"_s,
                                        u"Super"_s,   u"Alt"_s,   u"Option"_s};
        const QRegularExpression chinese(u"\\p{Han}"_s);
        OnboardingDesk desk;
        for (const QString &name : phaseNames) {
            desk.flow.present(name);
            QVERIFY(QTest::qWaitForWindowExposed(desk.flow.window()));
            const QStringList english = textsOf(desk.flow.window()->contentItem());
            QVERIFY2(!english.join(u'|').remove(u"中文"_s).contains(chinese),
                     qPrintable(english.join(u'|')));
            desk.click(u"language"_s); // while the card is open
            QStringList left = textsOf(desk.flow.window()->contentItem());
            left.removeIf([&](const QString &text) {
                return text.contains(chinese) || international.contains(text) || text.size() == 1
                    || desk.flow.survey()->chineseLabel(
                           int(desk.flow.survey()->options().indexOf(text)))
                    == text
                    || text.startsWith(u"vellumo is a reading assistant for your Mac."_s);
            });
            QVERIFY2(left.isEmpty(), qPrintable(left.join(u'|')));
            desk.click(u"language"_s);
            QCOMPARE(textsOf(desk.flow.window()->contentItem()), english);
        }
    }

    void keysReachEverything()
    {
        OnboardingDesk desk;
        desk.flow.present(u"role"_s);
        QQuickWindow *window = desk.flow.window();
        QVERIFY(QTest::qWaitForWindowActive(window));
        QTest::keyClick(window, Qt::Key_Tab);
        QVERIFY(desk.item(u"Finance"_s)->hasActiveFocus());
        QTest::keyClick(window, Qt::Key_Down);
        QTest::keyClick(window, Qt::Key_Right);
        QTest::keyClick(window, Qt::Key_Space);
        QCOMPARE(desk.flow.survey()->answer(), u"Customer support"_s);
        QTest::keyClick(window, Qt::Key_Up);
        QTest::keyClick(window, Qt::Key_Up); // no further
        QVERIFY(desk.item(u"Sales"_s)->hasActiveFocus());
        for (const auto &name : {u"surveyContinueButton"_s, u"skip"_s, u"back"_s, u"language"_s}) {
            QTest::keyClick(window, Qt::Key_Tab);
            QVERIFY2(desk.item(name)->hasActiveFocus(), qPrintable(name));
        }
        desk.flow.present(u"select"_s);
        QTest::keyClick(window, Qt::Key_Tab);
        QTest::keyClick(window, Qt::Key_Right, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(desk.item(u"sample"_s)->property("selectedText").toString().trimmed(),
                 u"vellumo"_s);
        QTest::keyClick(window, Qt::Key_Tab);
        QVERIFY(desk.item(u"skip"_s)->hasActiveFocus());
        desk.flow.present(u"privacy"_s); // Return continues unless a button has the focus
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(desk.flow.phase(), Phase::permission);
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(desk.flow.phase(), Phase::permission); // not yet
    }

    void fitsLargeText_data()
    {
        QTest::addColumn<QString>("language");
        QTest::addColumn<QSize>("size");
        for (const auto &language : {u"English"_s, u"Chinese"_s}) {
            QTest::addRow("%s, a small screen", qPrintable(language))
                << language << QSize(1008, 552);
            QTest::addRow("%s, the least window", qPrintable(language)) << language << QSize();
        }
    }

    void fitsLargeText()
    {
        QFETCH(QString, language);
        QFETCH(QSize, size);
        const LargeText large;
        OnboardingDesk desk(false, language);
        for (const QString &name : phaseNames) {
            desk.flow.present(name);
            if (name == phaseNames.first()) {
                desk.flow.signIn(); // the state with the most text
            }
            QQuickWindow *window = desk.flow.window();
            window->resize(size.isValid() ? size : window->minimumSize());
            QVERIFY(QTest::qWaitForWindowExposed(window));
            static_cast<void>(window->grabWindow()); // completes the layout
            QVERIFY2(cutButtons(window->contentItem()).isEmpty(), qPrintable(name));
            // the card's main content is visible without scrolling
            const QString test = name == "keytest"_L1 ? u"gesture"_s : name;
            if (size.isValid() && (name == "keytest"_L1 || name == "select"_L1)) {
                const QQuickItem *hint = desk.item(test + u"HintLabel"_s);
                QVERIFY(hint);
                QVERIFY(hint->mapToScene({0, hint->height()}).y()
                        <= desk.item(test + u"ContinueButton"_s)->mapToScene({}).y());
            }
        }
    }

    void surveyIconsExist()
    {
        const QList<std::pair<Phase, int>> sizes{
            {Phase::hearAbout, 12}, {Phase::role, 17}, {Phase::industry, 18}};
        for (const auto &[phase, size] : sizes) {
            QCOMPARE(surveyOf(phase)->options.size(), size);
            for (const SurveyOption &option : surveyOf(phase)->options) {
                const QString file = surveyIconFile(option.icon);
                QVERIFY2(QFile::exists(file) && !file.endsWith(u"globe.svg"_s), qPrintable(file));
            }
        }
        QVERIFY(surveyIconFile(u"brand:nobody"_s).endsWith(u"globe.svg"_s));
    }
};

QTEST_MAIN(TestOnboardingCards)
#include "test_onboarding_cards.moc"
