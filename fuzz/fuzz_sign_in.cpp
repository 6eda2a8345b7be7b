// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// A sign-in with any address from the browser and any answers of the token service:
// the callback's address and the body of each answer, separated by line ends.

#include "Fuzzing.h"
#include "account/AuthService.h"
#include "account/GoogleOAuth.h"
#include "account/KeychainStore.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/fake/FakeSecretItems.h"
#include "ui/BilingualText.h"
#include <QCoreApplication>

using namespace vellumo;
using namespace vellumo::fuzzing;
using namespace Qt::StringLiterals;

namespace {

QCoreApplication &application()
{
    static int count = 1;
    static char name[] = "fuzz_sign_in";
    static char *arguments[] = {name, nullptr};
    static QCoreApplication made(count, arguments);
    return made;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static_cast<void>(application());
    const QList<QByteArray> lines = bytes(data, size).split('\n');
    for (const QByteArray &line : lines) {
        static_cast<void>(GoogleOAuth::parameters(QString::fromUtf8(line)));
    }

    FakeClock clock;
    FakeWorkspace workspace;
    FakeHttpSession http;
    FakeSecretItems secrets;
    const BilingualText texts{[] { return u"English"_s; }};
    FakeDefaultsStore defaults;
    KeychainStore keychain{secrets};
    GoogleOAuth browser{workspace, u"https://site.example"_s};
    AuthService auth({keychain, browser, http, clock, texts, defaults, [](const QString &key) {
                          return key == "FIREBASE_API_KEY"_L1 ? std::optional(u"key"_s)
                                                              : std::nullopt;
                      }});
    QCoreApplication::processEvents();
    QObject context;
    int ended = 0;
    auth.signInWithGoogle(&context, [&ended](const auto & /*error*/) { ++ended; });
    browser.handleCallback(QString::fromUtf8(lines.constFirst()));
    QCoreApplication::processEvents();
    for (const QByteArray &body : lines.sliced(1)) {
        http.answer(HttpResponse{.status = 200, .body = body});
        QCoreApplication::processEvents();
        auth.idToken(&context, [](const auto &answer) {
            require(!answer.isOk() || !answer.value() || !answer.value()->isEmpty(),
                    "a token is not empty");
        });
        QCoreApplication::processEvents();
        clock.advance(std::chrono::hours(1));
    }
    require(ended <= 1, "a sign-in ends once");
    return 0;
}
