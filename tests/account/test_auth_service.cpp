// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "account/AuthService.h"
#include "account/GoogleOAuth.h"
#include "account/KeychainStore.h"
#include "backend/IdToken.h"
#include "driver/Waiting.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/fake/FakeSecretItems.h"
#include "ui/BilingualText.h"

#include <QTest>

using namespace vellumo;
using namespace vellumo::test;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Stored = QHash<QString, QByteArray>;
const Stored someone{{u"refreshToken"_s, "r0"}, {u"uid"_s, "u0"}, {u"email"_s, "a@b.org"}};
const QString callback = u"vellumo://auth?refreshToken=r1&uid=u1&email=new%2Bx@b.org"_s;

HttpResponse tokens(const QByteArray &lifetime = "3600")
{
    return {.status = 200,
            .body = R"({"id_token":"i1","refresh_token":"r2","expires_in":")" + lifetime + R"("})"};
}

/// Returns an answer that names the account. A null `uid` leaves it out.
HttpResponse tokensOf(const QString &uid, const QString &sub, const QString &email)
{
    const QByteArray user = uid.isNull() ? QByteArray() : R"("user_id":")" + uid.toUtf8() + R"(",)";
    const QString token = sub.isNull() ? u"i1"_s : idToken(sub, email, u"i1"_s);
    return {.status = 200,
            .body = "{" + user + R"("id_token":")" + token.toUtf8()
                + R"(","refresh_token":"r2","expires_in":"3600"})"};
}

/// The service with its collaborators. Records what callers get.
struct Desk {
    explicit Desk(const Stored &stored = {}, bool isHung = false)
    {
        secrets.values = stored;
        secrets.isHung = isHung;
        start(isHung);
    }

    /// Starts the program; a second call is its next run.
    void start(bool isHung = false)
    {
        auth.reset();
        secrets.forgetOwed();
        auth = std::make_unique<AuthService>(AuthService::Collaborators{
            keychain, browser, http, clock, texts, defaults,
            [this](const QString &key) -> std::optional<QString> {
                return values.contains(key) ? std::optional(values.value(key)) : std::nullopt;
            }});
        auth->onSignedIn = [this] { log.append(u"onSignedIn"_s); };
        QObject::connect(auth.get(), &AuthService::restored, auth.get(),
                         [this] { log.append(u"restored"_s); });
        if (!isHung)
            QCoreApplication::processEvents();
        log.clear();
    }

    /// Signs in and comes back from the browser.
    void signInWith(const QString &url)
    {
        signIn();
        browser.handleCallback(url);
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QString state() const
    {
        return (auth->user() ? auth->user()->uid + u' ' + auth->email() : u"nobody"_s)
            + (auth->isWorking() ? u" working"_s : QString());
    }
    void signIn(const QString &name = u"sign-in"_s)
    {
        auth->signInWithGoogle(&context, [this, name](const auto &error) {
            log.append(name + u": "_s + (error ? describe(*error, texts) : u"done"_s));
        });
    }
    void askForToken()
    {
        auth->idToken(&context, [this](const auto &answer) {
            log.append(answer.isOk() ? answer.value().value_or(u"no token"_s)
                                     : describe(answer.error(), texts)
                               + (answer.error().endsSession() ? u", at an end"_s : QString()));
        });
        QCoreApplication::processEvents();
    }
    void answer(const Result<HttpResponse, HttpError> &result)
    {
        QVERIFY(http.answer(result));
        QCoreApplication::processEvents();
    }
    [[nodiscard]] QStringList said()
    {
        QCoreApplication::processEvents();
        return std::exchange(log, {});
    }

    QHash<QString, QString> values{{u"FIREBASE_API_KEY"_s, u"k&1"_s},
                                   {u"VELLUMO_SECURETOKEN_URL"_s, u"http://tokens/"_s}};
    QString language = u"English"_s;
    QObject context;
    QStringList log;
    FakeClock clock;
    FakeWorkspace workspace;
    FakeHttpSession http;
    FakeSecretItems secrets;
    FakeDefaultsStore defaults;
    BilingualText texts{[this] { return language; }};
    KeychainStore keychain{secrets};
    GoogleOAuth browser{workspace, u"https://site.example"_s};
    std::unique_ptr<AuthService> auth;
};

} // namespace

class TestAuthService : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void readsCallbacks()
    {
        const struct {
            QString url;
            GoogleOAuth::Parameters expected;
        } cases[] = {
            {u"vellumo://auth/callback#uid=1"_s, {}},
            {u"vellumo:?"_s, {}},
            {u"vellumo://a?uid=1&uid=2&uid"_s, {{u"uid"_s, u"2"_s}}},
            {u"vellumo://a?uid=&=3&&email==?&%75=%26#x=1"_s,
             {{u"uid"_s, {}}, {{}, u"3"_s}, {u"email"_s, u"=?"_s}, {u"u"_s, u"&"_s}}},
            {u"vellumo://a?email=a+b%2Bc"_s, {{u"email"_s, u"a+b+c"_s}}},
            {u"vellumo://a?uid="_s + QString(1 << 20, u'x'), {{u"uid"_s, QString(1 << 20, u'x')}}},
        };
        for (const auto &each : cases)
            QCOMPARE(GoogleOAuth::parameters(each.url), each.expected);

        for (const QString &url :
             {u"vellumo:?uid=1"_s, u"vellumo:"_s, u"VELLUMO://Auth?"_s, u"vellumo://auth/?a"_s,
              u"vellumo:#?"_s, u"vellumo://auth/callback?a b%"_s,
              u"vellumo://signed-in?x=//evil"_s})
            QVERIFY2(GoogleOAuth::isCallback(url), qPrintable(url));
        for (const QString &url :
             {u"vellumo://evil?"_s, u"vellumo://auth/x?"_s, u"vellumo://a@auth?"_s,
              u"vellumo://auth:1?"_s, u"vellumo:x?"_s, u"http://auth?"_s, u"vellumo://[auth?"_s,
              u"vellumo"_s, QString()})
            QVERIFY2(!GoogleOAuth::isCallback(url), qPrintable(url));
    }

    void restoresWhatTheKeyringHas()
    {
        QCOMPARE(Desk(someone).state(), u"u0 a@b.org"_s);
        QVERIFY(Desk(someone).http.requests.isEmpty());
        Stored garbage = someone;
        garbage[u"uid"_s] = "\xff\xfe";
        QCOMPARE(Desk(garbage).state(), u"nobody"_s);
        for (const QString &left : someone.keys()) {
            Stored stored = someone;
            stored.remove(left);
            QCOMPARE(Desk(stored).state(), u"nobody"_s);
        }
    }

    void waitsForTheKeyringButNotLong()
    {
        Desk desk(someone, true);
        desk.auth->whenRestored(&desk.context, [&] { desk.log.append(u"decided"_s); });
        desk.clock.advance(499ms);
        QCOMPARE(desk.said(), QStringList());
        desk.clock.advance(1ms);
        QCOMPARE(desk.said(), QStringList{u"decided"_s});
        QCOMPARE(desk.state(), u"nobody"_s);
        desk.secrets.isLocked = true;
        desk.secrets.answerAll();
        QCOMPARE(desk.state(), u"nobody"_s);
        desk.secrets.isLocked = false;
        Q_EMIT desk.secrets.becameReadable();
        QCOMPARE(desk.said(), QStringList{u"restored"_s});
        QCOMPARE(desk.state(), u"u0 a@b.org"_s);
    }

    void whatTheUserDidCountsMoreThanALateKeyring()
    {
        Desk signedIn(someone, true);
        signedIn.signIn();
        signedIn.browser.handleCallback(callback);
        (void)signedIn.said();
        signedIn.secrets.values = someone;
        signedIn.secrets.answerAll();
        QCOMPARE(signedIn.state(), u"nobody working"_s);
        signedIn.answer(tokens());
        QCOMPARE(signedIn.state(), u"u1 new+x@b.org"_s);

        Desk restored(someone, true);
        restored.signIn();
        restored.secrets.answerAll();
        QCOMPARE(restored.said(),
                 (QStringList{u"sign-in: Sign-in was cancelled."_s, u"restored"_s}));
        restored.browser.handleCallback(callback); // too late
        QCOMPARE(restored.said(), QStringList());
        QCOMPARE(restored.state(), u"u0 a@b.org"_s);

        Desk signedOut(someone, true);
        signedOut.auth->signOut();
        signedOut.secrets.answerAll();
        Q_EMIT signedOut.secrets.becameReadable();
        QCOMPARE(signedOut.said(), QStringList());
        QCOMPARE(signedOut.state(), u"nobody"_s);
    }

    void keepsATokenWhileItIsGood()
    {
        const struct {
            const char *lifetime;
            double after;
            bool isKept;
        } cases[] = {{"3600", 3539, true},     {"3600", 3541, false}, {"soon", 3539, true},
                     {"nan", 3541, false},     {"90.5", 30.4, true},  {"-5", 0, false},
                     {"1e300", 86'400, false}, {"3600", -1, false}}; // the last: a clock set back
        for (const auto &each : cases) {
            Desk desk(someone);
            desk.askForToken();
            const HttpRequest request = desk.http.requests.constFirst();
            QCOMPARE(request.method, QByteArray("POST"));
            QCOMPARE(request.url.toEncoded(), QByteArray("http://tokens/v1/token?key=k%261"));
            QCOMPARE(request.headers,
                     (HttpHeaders{{"Content-Type", "application/x-www-form-urlencoded"}}));
            QCOMPARE(request.body, QByteArray("grant_type=refresh_token&refresh_token=r0"));
            QCOMPARE(request.timeout, 60s);
            desk.answer(tokens(each.lifetime));
            QCOMPARE(desk.said(), QStringList{u"i1"_s});
            QCOMPARE(desk.secrets.values.value(u"refreshToken"_s), QByteArray("r2"));

            desk.clock.now += each.after;
            desk.askForToken();
            QVERIFY2((desk.http.requests.size() == 1) == each.isKept, each.lifetime);
            if (each.isKept) {
                desk.clock.advance(1h); // which the wall clock does not notice
                desk.askForToken();
            }
            QCOMPARE(desk.http.requests.size(), 2);
            QVERIFY(desk.http.requests.constLast().body.endsWith("=r2"));
        }
    }

    void explainsWhyThereIsNoToken()
    {
        const QString unreadable = u"The sign-in service sent an unexpected answer."_s;
        const struct {
            Result<HttpResponse, HttpError> answer;
            QString said;
        } cases[] = {
            {HttpResponse{400, {}, R"({"error":{"message":"TOKEN_EXPIRED : <b>"}})"},
             u"TOKEN_EXPIRED : <b>, at an end"_s},
            {HttpResponse{429, {}, {}}, u"HTTP 429"_s},
            {HttpResponse{502, {}, "<html>"}, u"HTTP 502"_s},
            {HttpResponse{403, {}, R"({"error":{"message":7}})"}, u"HTTP 403, at an end"_s},
            {HttpResponse{302, {}, tokens().body}, u"HTTP 302"_s},
            {HttpResponse{200, {}, "ok"}, unreadable},
            {HttpResponse{200, {}, R"({"id_token":"i","refresh_token":"r","expires_in":3600})"},
             unreadable},
            {HttpResponse{200, {}, R"({"refresh_token":"r","expires_in":"3600"})"}, unreadable},
            {HttpResponse{200, {}, R"({"id_token":"i","expires_in":"3600"})"}, unreadable},
            {HttpError{HttpError::Kind::TimedOut}, u"The sign-in service cannot be reached."_s},
        };
        for (const auto &each : cases) {
            Desk desk(someone);
            desk.askForToken();
            desk.answer(each.answer);
            QCOMPARE(desk.said(), QStringList{each.said});
            QCOMPARE(desk.state(), u"u0 a@b.org"_s);
            QCOMPARE(desk.secrets.values, someone);
            desk.values.clear();
            desk.askForToken();
            QCOMPARE(desk.said(), QStringList{u"Firebase is not configured."_s});
        }
    }

    void manyAskOnce()
    {
        Desk desk(someone);
        desk.askForToken();
        desk.askForToken();
        QCOMPARE(desk.http.requests.size(), 1);
        desk.answer(tokens());
        QCOMPARE(desk.said(), (QStringList{u"i1"_s, u"i1"_s}));
        desk.clock.now += 3600;
        desk.askForToken();
        desk.askForToken();
        QCOMPARE(desk.http.requests.size(), 2);
        desk.answer(HttpResponse{503, {}, {}});
        QCOMPARE(desk.said(), (QStringList{u"HTTP 503"_s, u"HTTP 503"_s}));
    }

    void signsIn()
    {
        Desk desk;
        desk.askForToken();
        QCOMPARE(desk.said(), QStringList{u"no token"_s});
        desk.signIn();
        QCOMPARE(desk.workspace.openedUrls, QList<QUrl>{QUrl(u"https://site.example/login"_s)});
        QCOMPARE(desk.state(), u"nobody working"_s);
        desk.browser.handleCallback(callback);
        QCOMPARE(desk.said(), QStringList());
        desk.answer(tokens());
        QCOMPARE(desk.said(), (QStringList{u"onSignedIn"_s, u"sign-in: done"_s}));
        QCOMPARE(desk.state(), u"u1 new+x@b.org"_s);
        QCOMPARE(
            desk.secrets.values,
            (Stored{{u"refreshToken"_s, "r2"}, {u"uid"_s, "u1"}, {u"email"_s, "new+x@b.org"}}));
        desk.askForToken();
        QCOMPARE(desk.said(), QStringList{u"i1"_s});
        QCOMPARE(desk.http.requests.size(), 1);
    }

    void knowsWhoseAccountItIs()
    {
        const QString own = u"me@b.org"_s;
        const QString victim = u"victim@b.org"_s;
        const QString none;
        const struct {
            const char *name;
            QString email; // named by the page
            QString userId; // named by the service, as are the next ones
            QString subject;
            QString claimed;
            bool isRefused = false;
        } rows[] = {
            {"all agree", own, u"u1"_s, u"u1"_s, own},
            {"other letters", u"ME@b.org"_s, none, u"u1"_s, own},
            {"no address named", none, u"u1"_s, u"u1"_s, own},
            {"nothing said", own, none, none, none},
            {"another address", victim, u"u1"_s, u"u1"_s, own, true},
            {"no such address", victim, u"u1"_s, u"u1"_s, none, true},
            {"another user id", own, u"u2"_s, none, none, true},
            {"another subject", own, none, u"u2"_s, own, true},
        };
        const QString refused = u"Sign-in was refused: the browser named another account than the "
                                "sign-in service. Please try again."_s;
        for (const auto &row : rows) {
            const QString url = u"vellumo:?refreshToken=r1&uid=u1&email="_s + row.email;
            const HttpResponse answer = tokensOf(row.userId, row.subject, row.claimed);
            const QString state = row.isRefused ? u"nobody"_s : u"u1 me@b.org"_s;
            Desk desk;
            desk.signInWith(url);
            QCOMPARE(desk.state(), u"nobody working"_s);
            desk.answer(answer);
            QVERIFY2(desk.state() == state, row.name);
            QCOMPARE(desk.said().constLast(),
                     u"sign-in: "_s + (row.isRefused ? refused : u"done"_s));
            QCOMPARE(desk.secrets.values.isEmpty(), row.isRefused);

            // the same when the first answer does not come
            Desk later;
            later.signInWith(url);
            later.answer(HttpResponse{503, {}, {}});
            QCOMPARE(later.secrets.values.value(u"email"_s), QByteArray());
            QCOMPARE(later.auth->problem(), u"HTTP 503"_s);
            later.askForToken();
            later.answer(answer);
            QVERIFY2(later.state() == state, row.name);
            QCOMPARE(later.auth->problem(), row.isRefused ? refused : QString());
            QCOMPARE(later.secrets.values.isEmpty(), row.isRefused);
        }
    }

    void stopsWaiting()
    {
        for (const bool isBack : {false, true}) {
            Desk desk;
            desk.signIn();
            if (isBack) {
                desk.browser.handleCallback(callback);
                QCoreApplication::processEvents();
            }
            desk.auth->cancelSignIn();
            QCOMPARE(desk.said(), QStringList{u"sign-in: Sign-in was cancelled."_s});
            if (isBack)
                desk.answer(tokens());
            else
                desk.browser.handleCallback(callback);
            QCOMPARE(desk.said(), QStringList());
            QCOMPARE(desk.state(), u"nobody"_s);
            QCOMPARE(desk.secrets.values, Stored());
        }
    }

    void refusesAnIncompleteSignIn()
    {
        for (const QString &rest :
             {u"auth"_s, u"auth?uid=u1"_s, u"auth?refreshToken=&uid=u1"_s,
              u"[auth?refreshToken=r1&uid=u1"_s, u"elsewhere?refreshToken=r1&uid=u1"_s}) {
            Desk desk(someone);
            desk.language = u"Chinese"_s;
            desk.texts.refresh();
            desk.signIn();
            desk.browser.handleCallback(u"vellumo://"_s + rest);
            QCOMPARE(desk.said(), QStringList{u"sign-in: 登录未完成"_s});
            QCOMPARE(desk.state(), u"u0 a@b.org"_s);
            QCOMPARE(desk.secrets.values, someone);
        }
        Desk desk;
        desk.workspace.opensUrls = false;
        desk.signIn();
        QCOMPARE(desk.said(), QStringList{u"sign-in: The browser could not be opened."_s});
        desk.values.clear();
        desk.signIn();
        QCOMPARE(desk.said(), QStringList{u"sign-in: Firebase is not configured."_s});
        QCOMPARE(desk.state(), u"nobody"_s);
    }

    void keepsTheSessionWhenItsFirstTokenFails()
    {
        Desk desk(someone);
        desk.askForToken();
        desk.answer(tokens());
        (void)desk.said();
        desk.signIn();
        desk.browser.handleCallback(callback);
        (void)desk.said();
        desk.answer(HttpResponse{503, {}, {}});
        QCOMPARE(desk.said(), QStringList{u"sign-in: HTTP 503"_s});
        QCOMPARE(desk.state(), u"u1 new+x@b.org"_s);
        desk.askForToken(); // the previous user's token does not count
        QCOMPARE(desk.http.requests.constLast().body.right(2), QByteArray("r1"));
    }

    void oneSignInEndsTheOther()
    {
        Desk desk;
        desk.browser.handleCallback(callback); // unasked
        desk.signIn(u"first"_s);
        desk.signIn(u"second"_s);
        QCOMPARE(desk.said(), QStringList{u"first: Another sign-in was started."_s});
        QCOMPARE(desk.state(), u"nobody working"_s);
        desk.browser.handleCallback(callback);
        (void)desk.said();
        desk.browser.handleCallback(u"vellumo:?refreshToken=r9&uid=u9"_s); // once more
        desk.answer(tokens());
        QCOMPARE(desk.said(), (QStringList{u"onSignedIn"_s, u"second: done"_s}));
        QCOMPARE(desk.state(), u"u1 new+x@b.org"_s);
    }

    void signingOutEndsWhatRuns()
    {
        Desk desk(someone);
        desk.askForToken();
        desk.auth->signOut();
        desk.answer(tokens());
        QCOMPARE(desk.said(), QStringList{u"no token"_s});
        QCOMPARE(desk.state(), u"nobody"_s);
        QCOMPARE(desk.secrets.values, Stored());

        desk.signIn();
        desk.browser.handleCallback(callback);
        (void)desk.said();
        desk.auth->signOut();
        desk.answer(tokens());
        QCOMPARE(desk.said(), QStringList{u"sign-in: Sign-in did not finish."_s});
        QCOMPARE(desk.state(), u"nobody"_s);
        QCOMPARE(desk.secrets.values, Stored());
    }

    /// The keyring is closed then, and the user does not open it.
    void signingOutHolds()
    {
        for (const bool signsInAgain : {false, true}) {
            const auto signOut = [&](Desk &desk) {
                desk.secrets.isLocked = true;
                desk.auth->signOut();
                if (signsInAgain) {
                    desk.signInWith(callback);
                    desk.answer(tokens());
                    (void)desk.said();
                }
            };
            Desk desk(someone);
            signOut(desk);
            desk.secrets.isLocked = false; // by the time of the next run
            desk.start();
            QCOMPARE(desk.state(), u"nobody"_s);
            QCOMPARE(desk.secrets.values, Stored());
            QVERIFY(!desk.defaults.value(u"signedOut"_s).isValid());

            // a session that is stored while the sign-out is pending counts once it is stored
            Desk open(someone);
            signOut(open);
            QVERIFY(open.defaults.value(u"signedOut"_s).toBool());
            open.secrets.open();
            QCOMPARE(open.said(), QStringList());
            QVERIFY(!open.defaults.value(u"signedOut"_s).isValid());
            open.start();
            QCOMPARE(open.state(), signsInAgain ? u"u1 new+x@b.org"_s : u"nobody"_s);
        }

        // one secret that is still there keeps the sign-out pending
        for (const QString &left : someone.keys()) {
            Desk desk(someone);
            desk.secrets.isLocked = true;
            desk.auth->signOut();
            desk.secrets.isLocked = false;
            desk.secrets.isRefusing = true;
            desk.secrets.values = {{left, "x"}};
            desk.start();
            QVERIFY2(desk.defaults.value(u"signedOut"_s).toBool(), qPrintable(left));
        }
    }
};

QTEST_GUILESS_MAIN(TestAuthService)
#include "test_auth_service.moc"
