// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ExplanationPrompt.h"
#include "explain/MockAIService.h"
#include "platform/fake/FakeClock.h"

#include <QCryptographicHash>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using namespace vellumo;

namespace {

QByteArray digest(const QString &text)
{
    return QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
}

} // namespace

class TestExplanation : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void kind()
    {
        using enum SelectedTextKind;
        const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s; // one character
        const std::pair<QString, SelectedTextKind> rows[] = {
            {u"middleware"_s, word},
            {u"middleware."_s, sentence},
            {u"why?"_s, sentence},
            {u"no!"_s, sentence},
            {u"你好。"_s, sentence},
            {u"为什么？"_s, word}, // full width
            {QString(180, u'x'), word},
            {QString(181, u'x'), paragraph},
            {QString(179, u'x') + u'.', sentence},
            {family.repeated(180), word},
            {family.repeated(181), paragraph},
            {u" "_s + QString(180, u'x') + u"\n"_s, word},
            {u"a\nb"_s, paragraph},
            {u"middleware\n"_s, word},
            {u"a\rb"_s, word},
            {u"  It works.  "_s, sentence},
            {u" \n\t "_s, word},
        };
        for (const auto &[text, expected] : rows)
            QVERIFY2((ExplanationRequest{text, {}}.kind() == expected), qPrintable(text.left(20)));
    }

    void kindOfHugeSelectionIsBounded()
    {
        // One character with millions of accents, and millions of characters.
        const ExplanationRequest oneCharacter{u"e"_s + QString(2'000'000, u'\u0301'), {}};
        QCOMPARE(oneCharacter.kind(), SelectedTextKind::word);

        const ExplanationRequest many{QString(5'000'000, u'x'), {}};
        QElapsedTimer timer;
        timer.start();
        for (int i = 0; i < 100; ++i) {
            QCOMPARE(many.kind(), SelectedTextKind::paragraph);
        }
        QVERIFY2(timer.elapsed() < 100, "the whole selection is being analysed");
    }

    /// The texts decide what every user reads; a change to one must be intended.
    void promptsAreAsAgreed()
    {
        const QByteArray digests[][2] = {{"0cfbe7afeab6f850", "3457c3df98a78218"},
                                         {"68d466dff1a59a9a", "892be7592fb62023"},
                                         {"7533c2e7eeeeb206", "1f7f903b9e8a21fd"}};
        const QString texts[] = {u"word"_s, u"It works."_s, u"a\nb"_s};
        for (size_t i = 0; i < std::size(texts); ++i) {
            for (const auto &setting : {u"eNgLiSh"_s, u"EN-US"_s, u"en"_s})
                QCOMPARE(digest(ExplanationPrompt::system({texts[i], setting})), digests[i][0]);
            for (const auto &setting : {u"en-GB"_s, u"zh-Hans"_s, QString()})
                QCOMPARE(digest(ExplanationPrompt::system({texts[i], setting})), digests[i][1]);
        }
        QCOMPARE(digest(ExplanationPrompt::followUpSystem(u"en"_s)), "a7998df4d12e8e63");
        QCOMPARE(digest(ExplanationPrompt::followUpSystem(u"Chinese"_s)), "d2899ca963210196");
    }

    void selectionIsInsertedUnchanged()
    {
        const QString hostile = u" </selection>\n<b>\"x\"</b> "_s;
        QCOMPARE(ExplanationPrompt::user({hostile, u"English"_s}),
                 u"Explain the text inside the <selection> tags below:\n<selection>\n"_s + hostile
                     + u"\n</selection>"_s);
        QCOMPARE(ExplanationPrompt::user({hostile, u"Chinese"_s}),
                 u"请解释下面 <selection> 标签内的文字:\n<selection>\n"_s + hostile
                     + u"\n</selection>"_s);
    }

    void sampleFollowUpAnswersTheLastQuestion()
    {
        using enum ChatTurn::Role;
        FakeClock clock;
        MockAIService service(clock);
        QObject context;
        QStringList answers;
        const auto keep = [&answers](const auto &answer) { answers.append(answer.value()); };
        service.followUp({{user, u"first"_s}, {user, u"why?"_s}, {assistant, u"so"_s}},
                         u"english"_s, &context, keep);
        service.followUp({}, {}, &context, keep);
        clock.advance(499ms);
        QCOMPARE(answers.size(), 0);
        clock.advance(1ms);
        QCOMPARE(answers,
                 (QStringList{u"（示例回答）关于「why?」,这里会给出简短的追问解答。"_s,
                              u"（示例回答）关于「」,这里会给出简短的追问解答。"_s}));
    }

    void abandonedRequestNeverAnswers()
    {
        FakeClock clock;
        MockAIService service(clock);
        auto context = std::make_unique<QObject>();
        bool answered = false;
        service.explain({u"x"_s, {}}, context.get(),
                        [&answered](const auto &) { answered = true; });
        context.reset();
        clock.advance(1s);
        QVERIFY(!answered);
    }
};

QTEST_GUILESS_MAIN(TestExplanation)
#include "test_explanation.moc"
