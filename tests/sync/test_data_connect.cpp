// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "driver/Waiting.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeHttpSession.h"
#include "sync/DataConnectHistory.h"
#include "sync/InternetDateTime.h"
#include "sync/LogExcerpt.h"
#include "sync/SyncFakes.h"

#include <QElapsedTimer>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTest>
#include <ctime>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Values = QList<std::pair<QString, QString>>;

const Values configured{{u"VELLUMO_DATACONNECT_URL"_s, u"https://d.example/v1/c"_s},
                        {u"FIREBASE_API_KEY"_s, u"key"_s}};

HttpResponse ok(const QByteArray &body)
{
    return {.status = 200, .body = body};
}

QString bodyOf(const HttpRequest &request)
{
    return QString::fromUtf8(request.body);
}

} // namespace

class TestDataConnect : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        auth_ = {};
        session_.requests.clear();
        result_.reset();
    }

    void sendsWhatIsAgreed_data()
    {
        using Call = std::function<void(const DataConnectHistory &, QObject *)>;
        QTest::addColumn<Call>("call");
        QTest::addColumn<QString>("address");
        QTest::addColumn<QString>("body");
        const QString mutation = u"https://d.example/v1/c:executeMutation?key=key"_s;
        const QUuid id(u"AAAAAAAA-BBBB-CCCC-DDDD-EEEEEEEEEEEE"_s);
        QTest::newRow("profile, absent variables left out")
            << Call([](const DataConnectHistory &history, QObject *context) {
                   history.saveProfile(std::nullopt, u"role"_s, u""_s, context, [](auto) {});
               })
            << mutation
            << uR"({"operationName":"UpsertProfile","variables":{"industry":"","role":"role"}})"_s;
        QTest::newRow("note, half a surrogate pair made sound")
            << Call([id](const DataConnectHistory &history, QObject *context) {
                   history.createNote({id, u"s\xD83D"_s, {}, u"e"_s, 5, {{id, u"q"_s, u"a"_s}}},
                                      context, [](auto) {});
               })
            << mutation
            << u"{\"operationName\":\"CreateNote\",\"variables\":{\"explanation\":\"e\","
               "\"id\":\"aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee\",\"sourceText\":\"s?\","
               "\"translation\":\"\"}}"_s;
        QTest::newRow("follow-up")
            << Call([id](const DataConnectHistory &history, QObject *context) {
                   history.addFollowUps(id, {{id, u"q"_s, u"a"_s}}, context, [](auto) {});
               })
            << mutation
            << u"{\"operationName\":\"AddFollowUp\",\"variables\":{\"answer\":\"a\","
               "\"noteId\":\"aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee\",\"question\":\"q\"}}"_s;
        QTest::newRow("list") << Call([](const DataConnectHistory &history, QObject *context) {
            history.list(context, [](const auto &) {});
        }) << u"https://d.example/v1/c:executeQuery?key=key"_s
                              << uR"({"operationName":"ListNotes","variables":{}})"_s;
    }

    void sendsWhatIsAgreed()
    {
        using Call = std::function<void(const DataConnectHistory &, QObject *)>;
        QFETCH(Call, call);
        QFETCH(QString, address);
        QFETCH(QString, body);
        const DataConnectHistory history = this->history();
        call(history, this);
        QVERIFY(waitUntil([this] { return !session_.requests.isEmpty(); }));
        const HttpRequest request = session_.requests.constFirst();
        QCOMPARE(request.method, QByteArray("POST"));
        QCOMPARE(request.url.toString(), address);
        QCOMPARE(request.headers,
                 (HttpHeaders{{"Content-Type", "application/json"},
                              {"X-Firebase-Auth-Token", "token-1"}}));
        QCOMPARE(request.timeout, std::chrono::seconds(60));
        QCOMPARE(bodyOf(request), body);
        session_.answer(HttpError{});
    }

    void failsWithoutARequest_data()
    {
        QTest::addColumn<Values>("values");
        QTest::addColumn<decltype(FakeAuth::token)>("token");
        const auto token = FakeAuth().token;
        const std::pair<QString, QString> noAddress{u"VELLUMO_DATACONNECT_URL"_s, u"https://[d"_s};
        QTest::newRow("no address") << Values{configured.last()} << token;
        QTest::newRow("no key") << Values{configured.first()} << token;
        QTest::newRow("no valid address") << Values{noAddress, configured.last()} << token;
        QTest::newRow("signed out") << configured << decltype(token)(std::optional<QString>());
        QTest::newRow("no token") << configured
                                  << decltype(token)(AuthError{AuthError::Kind::Network});
    }

    void failsWithoutARequest()
    {
        QFETCH(Values, values);
        QFETCH(decltype(FakeAuth::token), token);
        auth_.token = token;
        const DataConnectHistory history = this->history(values);
        QList<bool> results;
        const auto note = [&results](SyncError::Kind error) {
            results.append(error == SyncError::Kind::None);
        };
        history.createNote(makeNote(u"x"_s), this, note);
        history.saveProfile({}, {}, {}, this, note);
        history.addFollowUps(QUuid::createUuid(), {{}}, this, note);
        std::optional<qsizetype> listed;
        history.list(this, [&listed](const auto &notes) {
            listed = notes.isOk() ? notes.value().size() : 0;
        });
        QVERIFY(results.isEmpty() && !listed); // never before the call returns
        QVERIFY(waitUntil([&] { return results.size() == 3 && listed; }));
        QCOMPARE(results, (QList<bool>{false, false, false}));
        QCOMPARE(*listed, 0);
        // nothing to send succeeds without a request
        history.addFollowUps(QUuid::createUuid(), {}, this, done_);
        QVERIFY(waitUntil([&] { return result_.has_value(); }));
        QVERIFY(*result_);
        QVERIFY(session_.requests.isEmpty());
    }

    void sendsNothingWithAnothersToken()
    {
        const DataConnectHistory history = this->history();
        history.saveProfile({}, {}, {}, this, done_);
        auth_.signedIn = User{u"another"_s, u"another@example.org"_s}; // while the token is fetched
        QVERIFY(waitUntil([&] { return result_.has_value(); }));
        QVERIFY(!*result_);
        QVERIFY(session_.requests.isEmpty());
    }

    void answers_data()
    {
        using Answer = Result<HttpResponse, HttpError>;
        QTest::addColumn<Answer>("answer");
        QTest::addColumn<bool>("isCreated");
        QTest::addColumn<QString>("error"); // of an operation without a result
        const auto body = [](const QByteArray &text) { return Answer(ok(text)); };
        const QString unreadable = u"the answer cannot be read"_s;
        QTest::newRow("done") << body(R"({"data":{"note_insert":{"id":"x"}}})") << true << u""_s;
        QTest::newRow("done, another result")
            << body(R"({"data":{},"errors":[]})") << false << u""_s;
        QTest::newRow("errors") << body(R"({"errors":[{"message":"a"},{"message":"b"}]})") << false
                                << u"a; b"_s;
        QTest::newRow("errors beside data")
            << body(R"({"data":{"note_insert":{"id":"x"}},"errors":[{"message":"a"}]})") << false
            << u"a"_s;
        QTest::newRow("errors of no form")
            << body(R"({"data":{},"errors":[{}]})") << false << unreadable;
        QTest::newRow("null") << body(R"({"data":null})") << false << u"empty response"_s;
        QTest::newRow("nothing") << body("{}") << false << u"empty response"_s;
        QTest::newRow("data is a list") << body(R"({"data":[]})") << false << unreadable;
        QTest::newRow("id is a number")
            << body(R"({"data":{"note_insert":{"id":1}}})") << false << u""_s;
        QTest::newRow("no UTF-8") << body("{\"data\":{\"x\":\"\xff\"}}") << false << unreadable;
        const auto nested = [&body](int depth) {
            return body(R"({"data":{"x":)" + QByteArray(depth - 2, '[') + QByteArray(depth - 2, ']')
                        + "}}");
        };
        QTest::newRow("nested as deep as may be") << nested(8) << false << u""_s;
        QTest::newRow("nested too deep") << nested(9) << false << unreadable;
        QTest::newRow("twice, the first counts")
            << body(R"({"data":{"note_insert":{"id":"x","id":1},"note_insert":1},"data":null})")
            << true << u""_s;
        QTest::newRow("errors as a text")
            << body(R"({"data":{},"errors":"a"})") << false << unreadable;
        QTest::newRow("more, passed over") << body(
            R"({"errors":null,"data":{"note_insert":{"more":[{"id":2}],"id":"x"}},"z":[1,"x"]})")
                                           << true << u""_s;
        QTest::newRow("status") << Answer(HttpResponse{.status = 500, .body = "no\nway"}) << false
                                << u"no\nway"_s;
        QTest::newRow("status, no UTF-8")
            << Answer(HttpResponse{.status = 500, .body = "\xe6\xb6"}) << false << u"HTTP 500"_s;
        QTest::newRow("redirect") << Answer(HttpResponse{.status = 302}) << false << u""_s;
        QTest::newRow("network") << Answer(HttpError{HttpError::Kind::Refused}) << false
                                 << u"connection refused"_s;
        for (const char *sign :
             {"DUPLICATE key", "it Already Exists", "not unique", "a constraint"})
            QTest::newRow(sign) << body(QByteArray(R"({"errors":[{"message":")") + sign + "\"}]}")
                                << true << QString::fromLatin1(sign);
        for (const char *sign :
             {"insert violates foreign key constraint", "violates CHECK constraint",
              "null value violates not-null constraint", "not null constraint failed"})
            QTest::newRow(sign) << body(QByteArray(R"({"errors":[{"message":")") + sign + "\"}]}")
                                << false << QString::fromLatin1(sign);
        const auto refused = [](const char *row, int status, const QByteArray &text,
                                bool isCreated) {
            QTest::newRow(row) << Answer(HttpResponse{.status = status, .body = text}) << isCreated
                               << QString::fromUtf8(text);
        };
        refused("duplicate, as a status", 409, R"({"error":{"message":"it already exists"}})",
                true);
        refused("duplicate, among errors", 400, R"({"errors":[{"message":"duplicate key"}]})",
                true);
        refused("duplicate, without a form", 409, "duplicate", false);
        refused("a page", 403, "<p>your unique support ID</p>", false);
        refused("a page's words in another field", 400, R"({"help":"your unique ID"})", false);
        refused("the service's fault", 503, R"({"message":"your unique support ID"})", false);
    }

    void answers()
    {
        using Answer = Result<HttpResponse, HttpError>;
        QFETCH(Answer, answer);
        QFETCH(bool, isCreated);
        QFETCH(QString, error);
        const DataConnectHistory history = this->history();
        history.createNote(makeNote(u"x"_s), this, done_);
        answerNext(answer);
        QCOMPARE(result_, std::optional(isCreated));
        const auto failure = DataConnectWire::done(answer);
        QCOMPARE(failure ? failure->description : QString(), error);
        // a duplicate is tolerated for notes alone
        history.addFollowUps(QUuid::createUuid(), {{}}, this, done_);
        answerNext(answer);
        QCOMPARE(result_, std::optional(!failure.has_value()));
    }

    void followUpsAreSentInOrderUntilOneFails()
    {
        const DataConnectHistory history = this->history();
        const ReadingNote note = makeNote(u"x"_s, 4);
        history.addFollowUps(note.id, note.followUps, this, done_);
        answerNext(ok(R"({"data":{}})"));
        answerNext(ok(R"({"data":{}})"));
        answerNext(HttpError{});
        QCOMPARE(result_, std::optional(false));
        QCOMPARE(session_.requests.size(), 3);
        for (int i = 0; i < 3; ++i)
            QVERIFY(bodyOf(session_.requests.at(i)).contains(uR"("question":"%1")"_s.arg(i)));

        // a cancelled request is not sent
        auto context = std::make_unique<QObject>();
        history.addFollowUps(note.id, note.followUps, context.get(),
                             [](auto) { QFAIL("completed"); });
        QVERIFY(waitUntil([&] { return session_.requests.size() == 4; }));
        context.reset();
        session_.answer(ok(R"({"data":{}})"));
        history.addFollowUps(note.id, note.followUps.mid(3), this, done_); // the next to be sent
        answerNext(ok(R"({"data":{}})"));
        QVERIFY(bodyOf(session_.requests.at(4)).contains(uR"("question":"3")"_s));
        QCOMPARE(session_.requests.size(), 5);
    }

    void readsAList()
    {
        const DataConnectHistory history = this->history();
        const HttpResponse answer = ok(R"({"data":{"notes":[
        {"id":"AAAAAAAABBBBCCCCDDDDEEEEEEEEEEEE","sourceText":"s","explanation":"e",
         "createdAt":"2026-01-01T00:00:00.250Z","more":1,"followUps_on_note":[
            {"id":"x","question":"q1","answer":"a1"},{"id":"x","question":"q2","answer":"a2"}]},
        {"id":"none","sourceText":"s","translation":null,"explanation":"e",
         "createdAt":"2026-01-01T00:00:00Z","followUps_on_note":[]},
        {"id":"none","sourceText":"","translation":"t","explanation":"",
         "createdAt":"","followUps_on_note":[]}]}})");
        QList<QList<ReadingNote>> lists;
        for (int i = 0; i < 2; ++i) {
            history.list(this, [&lists](const auto &notes) { lists.append(notes.value()); });
            answerNext(answer);
        }
        const QList<ReadingNote> &notes = lists.first();
        QCOMPARE(notes.size(), 3);
        QCOMPARE(notes.at(0).id, QUuid(u"aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee"_s));
        QCOMPARE(notes.at(0).createdAt, 788918400.25);
        QCOMPARE(notes.at(0).followUps.size(), 2);
        QCOMPARE(notes.at(0).followUps.at(1).question, u"q2"_s);
        QVERIFY(notes.at(0).followUps.at(0).id != lists.last().at(0).followUps.at(0).id);
        QVERIFY(!notes.at(1).id.isNull() && notes.at(1).id != notes.at(2).id);
        QCOMPARE(notes.at(1).createdAt, clock_.now);
        QVERIFY(notes.at(1).translation.isEmpty());
        QCOMPARE(notes.at(2).translation, u"t"_s);
    }

    void spoiltLists_data()
    {
        QTest::addColumn<QByteArray>("notes");
        const QByteArray note = R"({"id":"x","sourceText":"s","translation":"t","explanation":"e",)"
                                R"("createdAt":"c","followUps_on_note":[)"
                                R"({"id":"x","question":"q","answer":"a"}]})";
        QTest::newRow("no list") << note;
        for (const char *field : {"id", "sourceText", "explanation", "createdAt",
                                  "followUps_on_note", "question", "answer"}) {
            const QByteArray quoted = '"' + QByteArray(field) + '"';
            QTest::addRow("without %s", field)
                << '[' + QByteArray(note).replace(quoted, "\"_\"") + ']';
            QTest::addRow("null as %s", field)
                << '[' + QByteArray(note).replace(quoted, quoted + ":null,\"_\"") + ']';
        }
        QTest::newRow("translation is a number")
            << '[' + QByteArray(note).replace("\"t\"", "1") + ']';
        QTest::newRow("one of many") << '[' + note + ',' + note + ",null]";
        QTest::newRow("no note after one that ends in null")
            << QByteArray(R"([{"id":"x","sourceText":"s","explanation":"e","createdAt":"c",)"
                          R"("followUps_on_note":[],"translation":null},"x"])");
        QTest::newRow("ten megabytes, cut") << '[' + (note + ',').repeated(70'000);
    }

    void spoiltLists()
    {
        QFETCH(QByteArray, notes);
        const auto listed =
            DataConnectWire::listedNotes(ok(R"({"data":{"notes":)" + notes + "}}"), 0);
        QVERIFY(!listed.isOk());
    }

    void dates()
    {
        const std::pair<QString, double> good[] = {
            {u"2001-01-01T00:00:00.0Z"_s, 0},
            {u"2026-01-01T00:00:00.500001Z"_s, 788918400.500001},
            {u"2026-01-01T08:00:00.0+08:00"_s, 788918400},
            {u"2025-12-31T18:30:00.0-05:30"_s, 788918400},
            {u"2024-02-29T00:00:00.0Z"_s, 730857600},
        };
        for (const auto &[text, seconds] : good)
            QVERIFY2(std::abs(internetDateTime(text).value_or(-1) - seconds) < 1e-6,
                     qPrintable(text));
        for (const auto &text :
             {u"2026-01-01T00:00:00Z"_s, u"2026-01-01T00:00:00.Z"_s, u"2026-01-01T00:00:00.1"_s,
              u"2026-01-01T00:00:00.1Zx"_s, u" 2026-01-01T00:00:00.1Z"_s,
              u"2026-01-01 00:00:00.1Z"_s, u"2025-02-29T00:00:00.1Z"_s, u"2026-13-01T00:00:00.1Z"_s,
              u"2026-00-01T00:00:00.1Z"_s, u"2026-01-01T24:00:00.1Z"_s, u"2026-01-01T00:60:00.1Z"_s,
              u"2026-01-01T00:00:00.1z"_s, u"2026-01-01T00:00:00.1+0800"_s,
              u"26-01-01T00:00:00.1Z"_s, u"2026-01-01T00:00:00.1234567890Z"_s,
              u"2026-01-01T00:00:00.-1Z"_s, u""_s, u"٢٠٢٦-01-01T00:00:00.1Z"_s})
            QVERIFY2(!internetDateTime(text), qPrintable(text));
    }

    void ids()
    {
        const QUuid id(u"aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee"_s);
        for (const auto &text :
             {u"aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee"_s, u"aaaaaaaabbbbccccddddeeeeeeeeeeee"_s,
              u"AAAAAAAABBBBCCCCDDDDEEEEEEEEEEEE"_s, u"aaaa-aaaabbbbccccddddeeeeeeeeeeee-"_s})
            QCOMPARE(DataConnectHistory::uuid(text), std::optional(id));
        for (const auto &text :
             {u"aaaaaaaabbbbccccddddeeeeeeeeeee"_s, u"gaaaaaaabbbbccccddddeeeeeeeeeeee"_s,
              u"{aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeee}"_s,
              u"aaaaaaaa-bbbb-cccc-dddd-eeeeeeeeeeeeX"_s,
              u"ａaaaaaaabbbbccccddddeeeeeeeeeeee"_s}) // a wide letter
            QVERIFY2(!DataConnectHistory::uuid(text), qPrintable(text));
    }

    void excerptsRepeatNothingThatWasSent()
    {
        const QString text = u"The tide turns twice a day,\nand nobody asks it why."_s;
        const QString excerpt =
            logExcerpt(u"invalid value \"the  tide turns TWICE a da\" for role 'x' of key abc-7: "_s
                           + QString(1000, u'y'),
                       {text, u"潮水每天涨落两次。"_s, u"abc-7"_s, {}});
        QCOMPARE(excerpt.left(48),
                 u"invalid value \"…\" for role 'x' of key …: yyyyyyyy"_s.left(48));
        QVERIFY(excerpt.size() <= 201 && excerpt.endsWith(u'…'));
        QCOMPARE(logExcerpt(u"潮水每天涨落两次 is too long"_s, {u"潮水每天涨落两次。"_s}),
                 u"… is too long"_s);
        QCOMPARE(logExcerpt(u"no abc-7"_s, {u"  abc-7"_s}), u"no …"_s);

        // the sent text is scanned once, not for each shown character
        const QString message = u"Nothing of this was sent: "_s + QString(160, u'z');
        const QString note = text.repeated(20'000);
        const std::clock_t start = std::clock();
        QCOMPARE(logExcerpt(message, {note}), message);
        const std::clock_t excerpted = std::clock();
        qsizetype found = 0;
        for (qsizetype i = 0; i < 300; ++i)
            found += note.contains(QStringView(message).sliced(i % 150, 8)) ? 1 : 0;
        QCOMPARE(found, 0);
        QCOMPARE_LT(excerpted - start, std::clock() - excerpted);
    }

    void readsOffTheMainThread()
    {
        QByteArray notes = R"({"id":"x","sourceText":"s","explanation":"e","createdAt":"c",)"
                           R"("followUps_on_note":[]},)";
        notes = '[' + notes.repeated(50'000).chopped(1) + ']';
        const DataConnectHistory history = this->history();
        const HttpResponse answer = ok(R"({"data":{"notes":)" + notes + "}}");
        std::optional<qsizetype> count;
        QElapsedTimer timer;
        history.list(this, [&count](const auto &listed) { count = listed.value().size(); });
        QVERIFY(waitUntil([this] { return !session_.requests.isEmpty(); }));
        QCOMPARE(session_.requests.constLast().bodyLimit, qint64{32} << 20);
        timer.start();
        session_.answer(answer);
        const qint64 away = timer.elapsed();
        QVERIFY(!count);
        QVERIFY(waitUntil([&] { return count.has_value(); }, 30s));
        QVERIFY(*count == 50'000);
        QVERIFY2(away < timer.elapsed() / 4, qPrintable(QString::number(away)));

        // ends together with its callers
        auto context = std::make_unique<QObject>();
        history.list(context.get(), [](const auto &) { QFAIL("completed"); });
        QVERIFY(waitUntil([this] { return session_.requests.size() == 2; }));
        session_.answer(answer);
        context.reset();
        QCoreApplication::processEvents();
    }

private:
    [[nodiscard]] DataConnectHistory history(const Values &values = configured)
    {
        return DataConnectHistory({auth_, session_, clock_, lookupIn(values)});
    }
    /// Waits for the next request and answers it.
    void answerNext(const Result<HttpResponse, HttpError> &answer)
    {
        QVERIFY(waitUntil([&] { return session_.answer(answer); }));
    }

    FakeAuth auth_;
    FakeHttpSession session_;
    FakeClock clock_;
    std::optional<bool> result_;
    DataConnectHistory::Done done_ = [this](SyncError::Kind error) {
        result_ = error == SyncError::Kind::None;
    };
};

QTEST_GUILESS_MAIN(TestDataConnect)
#include "test_data_connect.moc"
