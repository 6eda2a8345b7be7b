// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/AuthService.h"
#include "account/GoogleOAuth.h"
#include "account/KeychainStore.h"
#include "onboarding/OnboardingWindowController.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeEventMonitors.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/fake/FakeSecretItems.h"
#include "support/QuickItems.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"
#include <QPointer>
#include <QQmlEngine>
#include <QTest>

namespace vellumo::test {

/// Returns the names of the cards in their order.
inline const QStringList phaseNames{
    QStringLiteral("signin"),    QStringLiteral("privacy"), QStringLiteral("permission"),
    QStringLiteral("keytest"),   QStringLiteral("select"),  QStringLiteral("notes"),
    QStringLiteral("hearabout"), QStringLiteral("role"),    QStringLiteral("industry")};

/// The first run and its collaborators.
struct OnboardingDesk {
    FakeCalls calls;
    FakeAccessibility accessibility{calls};
    FakeDefaultsStore defaults;
    FakeEventMonitors events;
    FakeClock clock;
    FakeWorkspace workspace;
    FakeHttpSession http;
    FakeSecretItems secrets;
    BilingualText texts{[this] { return defaults.value(languageKey).toString(); }};
    KeychainStore keychain{secrets};
    GoogleOAuth browser{workspace, QStringLiteral("https://site.example")};
    std::optional<QString> key = QStringLiteral("k");
    AuthService auth{
        {keychain, browser, http, clock, texts, defaults, [this](const QString &) { return key; }}};
    QQmlEngine &engine = sharedEngine();
    OnboardingWindowController flow{{defaults, auth, accessibility, events, clock, engine, texts}};

    explicit OnboardingDesk(bool isTrusted = false,
                            const QString &language = QStringLiteral("English"))
    {
        defaults.setValue(languageKey, language);
        texts.refresh();
        texts.follow(defaults);
        accessibility.trusted = isTrusted;
        QCoreApplication::processEvents(); // the keyring has nothing
    }

    /// One engine for all, as in the program: Qt 6.8 treats a card of a second engine as another
    /// type.
    static QQmlEngine &sharedEngine()
    {
        static QPointer<QQmlEngine> engine;
        if (!engine) {
            engine = new QQmlEngine(QCoreApplication::instance());
            prepareEngine(*engine);
        }
        return *engine;
    }

    /// Returns the visible item of this name, or null.
    [[nodiscard]] QQuickItem *item(const QString &name) const
    {
        return findItem(flow.window()->contentItem(), name);
    }
    [[nodiscard]] QString text(const QString &name) const
    {
        const QQuickItem *shown = item(name);
        return shown != nullptr ? shown->property("text").toString() : QStringLiteral("(none)");
    }
    [[nodiscard]] bool isEnabled(const QString &name) const
    {
        return item(name) != nullptr && item(name)->isEnabled();
    }
    void click(const QString &name) const
    {
        QVERIFY(QTest::qWaitForWindowExposed(flow.window()));
        static_cast<void>(flow.window()->grabWindow()); // completes the layout
        const QQuickItem *button = item(name);
        QVERIFY2(button != nullptr, qPrintable(name));
        QTest::mouseClick(
            flow.window(), Qt::LeftButton, {},
            button->mapToScene({button->width() / 2, button->height() / 2}).toPoint());
    }

    // signing in ----------------------------------------------------------------------------------

    void comeBackFromBrowser()
    {
        browser.handleCallback(QStringLiteral("vellumo://auth?refreshToken=r&uid=u&email=e"));
        QCoreApplication::processEvents();
    }
    void answerToken(int status = 200)
    {
        QVERIFY(http.answer(HttpResponse{
            .status = status,
            .body = status == 200 ? R"({"id_token":"i","refresh_token":"r","expires_in":"9"})"
                                  : R"({"error":{"message":"no"}})"}));
        QCoreApplication::processEvents();
    }
    void signIn()
    {
        flow.signIn();
        comeBackFromBrowser();
        answerToken();
    }

private:
    inline static const QString languageKey = QStringLiteral("preferredOutputLanguage");
};

} // namespace vellumo::test
