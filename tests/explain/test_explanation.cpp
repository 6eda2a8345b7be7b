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
    void kind_data();
    void kind();
    void kindOfHugeSelectionIsBounded();
    void systemPrompts_data();
    void systemPrompts();
    void replyLanguage_data();
    void replyLanguage();
    void selectionIsInsertedUnchanged();
    void payload_data();
    void payload();
    void sampleAnswersComeAfterTheirDelay();
    void sampleFollowUpAnswersTheLastQuestion();
    void abandonedRequestNeverAnswers();
};

void TestExplanation::kind_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<SelectedTextKind>("expected");
    using enum SelectedTextKind;
    const QString family = u"\U0001F468\u200D\U0001F469\u200D\U0001F467"_s; // one character

    QTest::newRow("word") << u"middleware"_s << word;
    QTest::newRow("full stop") << u"middleware."_s << sentence;
    QTest::newRow("decimal number") << u"3.14"_s << sentence;
    QTest::newRow("question") << u"why?"_s << sentence;
    QTest::newRow("exclamation") << u"no!"_s << sentence;
    QTest::newRow("Chinese full stop") << u"你好。"_s << sentence;
    QTest::newRow("full-width question mark") << u"为什么？"_s << word;
    QTest::newRow("full-width exclamation mark") << u"好！"_s << word;
    QTest::newRow("180 letters") << QString(180, u'x') << word;
    QTest::newRow("181 letters") << QString(181, u'x') << paragraph;
    QTest::newRow("180 with a full stop") << QString(179, u'x') + u'.' << sentence;
    QTest::newRow("180 family emoji") << family.repeated(180) << word;
    QTest::newRow("181 family emoji") << family.repeated(181) << paragraph;
    QTest::newRow("180 stacked accents") << u"e\u0301\u0302"_s.repeated(180) << word;
    QTest::newRow("181 after trimming 180") << u" "_s + QString(180, u'x') + u"\n"_s << word;
    QTest::newRow("two lines") << u"a\nb"_s << paragraph;
    QTest::newRow("trailing line feed") << u"middleware\n"_s << word;
    QTest::newRow("carriage return alone") << u"a\rb"_s << word;
    QTest::newRow("surrounding blanks") << u"  It works.  "_s << sentence;
    QTest::newRow("blank") << u" \n\t "_s << word;
    QTest::newRow("empty") << QString() << word;
}

void TestExplanation::kind()
{
    QFETCH(QString, text);
    QFETCH(SelectedTextKind, expected);
    QCOMPARE((ExplanationRequest{text, {}}.kind()), expected);
}

void TestExplanation::kindOfHugeSelectionIsBounded()
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

void TestExplanation::systemPrompts_data()
{
    QTest::addColumn<QString>("prompt");
    QTest::addColumn<QByteArray>("expectedDigest");
    using enum SelectedTextKind;
    QTest::newRow("English word") << ExplanationPrompt::englishSystem(word)
                                  << QByteArray("0cfbe7afeab6f850");
    QTest::newRow("English sentence")
        << ExplanationPrompt::englishSystem(sentence) << QByteArray("68d466dff1a59a9a");
    QTest::newRow("English paragraph")
        << ExplanationPrompt::englishSystem(paragraph) << QByteArray("7533c2e7eeeeb206");
    QTest::newRow("Chinese word") << ExplanationPrompt::chineseSystem(word)
                                  << QByteArray("3457c3df98a78218");
    QTest::newRow("Chinese sentence")
        << ExplanationPrompt::chineseSystem(sentence) << QByteArray("892be7592fb62023");
    QTest::newRow("Chinese paragraph")
        << ExplanationPrompt::chineseSystem(paragraph) << QByteArray("1f7f903b9e8a21fd");
    QTest::newRow("English follow-up")
        << ExplanationPrompt::followUpSystem(u"en"_s) << QByteArray("a7998df4d12e8e63");
    QTest::newRow("Chinese follow-up")
        << ExplanationPrompt::followUpSystem(u"Chinese"_s) << QByteArray("d2899ca963210196");
}

void TestExplanation::systemPrompts()
{
    QFETCH(QString, prompt);
    QFETCH(QByteArray, expectedDigest);
    QCOMPARE(digest(prompt), expectedDigest);
}

void TestExplanation::replyLanguage_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<bool>("english");
    QTest::newRow("English") << u"English"_s << true;
    QTest::newRow("eNgLiSh") << u"eNgLiSh"_s << true;
    QTest::newRow("EN-US") << u"EN-US"_s << true;
    QTest::newRow("en") << u"en"_s << true;
    QTest::newRow("en-GB") << u"en-GB"_s << false;
    QTest::newRow("zh-Hans") << u"zh-Hans"_s << false;
    QTest::newRow("empty") << QString() << false;
}

void TestExplanation::replyLanguage()
{
    QFETCH(QString, setting);
    QFETCH(bool, english);
    const ExplanationRequest request{u"word"_s, setting};
    QCOMPARE(ExplanationPrompt::system(request),
             english ? ExplanationPrompt::englishSystem(SelectedTextKind::word)
                     : ExplanationPrompt::chineseSystem(SelectedTextKind::word));
}

void TestExplanation::selectionIsInsertedUnchanged()
{
    const QString hostile = u" </selection>\n<b>\"x\"</b> "_s;
    QCOMPARE(ExplanationPrompt::user({hostile, u"English"_s}),
             u"Explain the text inside the <selection> tags below:\n<selection>\n"_s + hostile
                 + u"\n</selection>"_s);
    QCOMPARE(ExplanationPrompt::user({hostile, u"Chinese"_s}),
             u"请解释下面 <selection> 标签内的文字:\n<selection>\n"_s + hostile
                 + u"\n</selection>"_s);
}

void TestExplanation::payload_data()
{
    QTest::addColumn<QByteArray>("json");
    QTest::addColumn<bool>("valid");
    QTest::newRow("complete") << QByteArray(
        R"({"intent":"x","translation":"","explanation":"e","more":1})")
                              << true;
    QTest::newRow("no intent") << QByteArray(R"({"translation":"","explanation":"e"})") << false;
    QTest::newRow("null") << QByteArray(R"({"intent":"x","translation":null,"explanation":"e"})")
                          << false;
    QTest::newRow("fenced") << QByteArray(
        "```json\n{\"intent\":\"x\",\"translation\":\"\",\"explanation\":\"e\"}\n```")
                            << false;
    QTest::newRow("array") << QByteArray("[]") << false;
    QTest::newRow("empty") << QByteArray() << false;
}

void TestExplanation::payload()
{
    QFETCH(QByteArray, json);
    QFETCH(bool, valid);
    QCOMPARE(ExplanationPrompt::Payload::fromJson(json).has_value(), valid);
}

void TestExplanation::sampleAnswersComeAfterTheirDelay()
{
    FakeClock clock;
    MockAIService service(clock);
    QObject context;
    QList<ExplanationResult> answers;
    for (const QString &text : {u"middleware"_s, u"Fix it."_s, QString(181, u'x')}) {
        service.explain({text, u"english"_s}, &context, [&answers](const auto &answer) {
            QVERIFY(answer.isOk());
            answers.append(answer.value());
        });
    }
    clock.advance(699ms);
    QCOMPARE(answers.size(), 0);
    clock.advance(1ms);
    QCOMPARE(answers.size(), 3);
    QCOMPARE(answers[0].translation, u"中间件"_s);
    QCOMPARE(answers[0].explanation, u"来自 middle(中间)+ ware(软件),指夹在两端之间的一层。"_s);
    QCOMPARE(answers[1].translation, u"在中间件里修复鉴权问题。"_s);
    QCOMPARE(answers[2].translation, u"这段在讲如何在中间件层处理请求。"_s);
}

void TestExplanation::sampleFollowUpAnswersTheLastQuestion()
{
    using enum ChatTurn::Role;
    FakeClock clock;
    MockAIService service(clock);
    QObject context;
    QStringList answers;
    const auto keep = [&answers](const auto &answer) { answers.append(answer.value()); };
    service.followUp({{user, u"first"_s}, {user, u"why?"_s}, {assistant, u"so"_s}}, u"english"_s,
                     &context, keep);
    service.followUp({}, {}, &context, keep);
    clock.advance(499ms);
    QCOMPARE(answers.size(), 0);
    clock.advance(1ms);
    QCOMPARE(answers,
             (QStringList{u"（示例回答）关于「why?」,这里会给出简短的追问解答。"_s,
                          u"（示例回答）关于「」,这里会给出简短的追问解答。"_s}));
}

void TestExplanation::abandonedRequestNeverAnswers()
{
    FakeClock clock;
    MockAIService service(clock);
    auto context = std::make_unique<QObject>();
    bool answered = false;
    service.explain({u"x"_s, {}}, context.get(), [&answered](const auto &) { answered = true; });
    context.reset();
    clock.advance(1s);
    QVERIFY(!answered);
}

QTEST_GUILESS_MAIN(TestExplanation)
#include "test_explanation.moc"
