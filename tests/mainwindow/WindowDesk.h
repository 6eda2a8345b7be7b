// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "account/AuthService.h"
#include "account/GoogleOAuth.h"
#include "account/KeychainStore.h"
#include "library/NotesLibrary.h"
#include "library/PageHosting.h"
#include "mainwindow/MainWindowController.h"
#include "mainwindow/SampleComputer.h"
#include "platform/fake/FakeClock.h"
#include "platform/fake/FakeDesktop.h"
#include "platform/fake/FakeHttpSession.h"
#include "platform/fake/FakeSecretItems.h"
#include "settings/SettingsKeys.h"
#include "settings/UserPreferences.h"
#include "support/QuickItems.h"
#include "support/SampleNotes.h"
#include "sync/SyncReporting.h"
#include "ui/BilingualText.h"
#include "ui/QmlEngine.h"
#include <QGuiApplication>
#include <QQmlEngine>
#include <QTest>
#include <QUrl>
#include <QUuid>

namespace vellumo::test {

constexpr double eveningOfTheDay = 817066800; ///< 2026-11-22 19:00 UTC
constexpr double day = 86400;

class SampleSync : public SyncReporting {
public:
    QStringList asked; ///< requests of the window
    SyncError::Kind trouble = SyncError::Kind::None;
    int left = 0;
    bool withheld = false;
    int onTheirWay = 0;
    QDateTime fetched;

    [[nodiscard]] bool isSyncing() const override { return onTheirWay > 0; }
    [[nodiscard]] int pending() const override { return left; }
    [[nodiscard]] bool isWithheld() const override { return withheld; }
    [[nodiscard]] int arriving() const override { return onTheirWay; }
    [[nodiscard]] SyncError::Kind problem() const override { return trouble; }
    [[nodiscard]] QDateTime problemTime() const override { return {}; }
    [[nodiscard]] QDateTime lastFetched() const override { return fetched; }
    void syncNow() override { asked.append(QStringLiteral("sync")); }
    void uploadWithheld() override { asked.append(QStringLiteral("upload")); }
    void pull() override { asked.append(QStringLiteral("pull")); }
    void announceArrivals() override { asked.append(QStringLiteral("arrivals")); }
};

/// Records the requests of the pages.
class SampleHost : public PageHosting {
public:
    QString copied;
    QUrl opened;
    QUuid asked;
    std::function<void(const FileQuestion &question)> answer = [](const auto &) {};
    int closedDialogs = 0;
    Question confirmation; ///< asked for last

    void copyText(const QString &text) override { copied = text; }
    [[nodiscard]] bool openPage(const QUrl &page) override
    {
        opened = page;
        return false;
    }
    void askFurther(const QUuid &note) override { asked = note; }
    void chooseFile(const FileQuestion &question) override { answer(question); }
    void closeFileDialog() override { ++closedDialogs; }
    void ask(const Question &question) override { confirmation = question; }
    [[nodiscard]] bool openFolder(const QString & /*folder*/) override { return false; }
};

/// The main window and its collaborators.
struct WindowDesk {
    QQmlEngine engine;
    FakeDefaultsStore defaults;
    UserPreferences preferences{defaults};
    BilingualText texts{[this] { return preferences.preferredOutputLanguage(); }};
    FakeSecretItems secrets;
    KeychainStore keychain{secrets};
    FakeWorkspace workspace;
    GoogleOAuth browser{workspace, QStringLiteral("https://a.test")};
    FakeHttpSession http;
    FakeClock clock;
    AuthService auth{{keychain, browser, http, clock, texts, defaults,
                      [](const QString &key) { return std::optional<QString>(key); }}};
    SampleNotes notes;
    SampleSync sync;
    SampleComputer computer{defaults, secrets, http, clock, texts};
    QStringList chosen; ///< of the program's menu
    SampleHost host;
    MainWindowController window{engine,
                                {notes, auth, &sync, defaults, clock, texts,
                                 [this] { return computer.make(); },
                                 [this] { return computer.makeTaps(); },
                                 [this] { chosen.append(QStringLiteral("updates")); },
                                 [this] { chosen.append(QStringLiteral("quit")); }, true,
                                 [this]() -> LoginStart & { return computer.login; }},
                                host};

    explicit WindowDesk(const QString &language = QStringLiteral("English"))
    {
        prepareEngine(engine);
        texts.follow(defaults);
        clock.now = eveningOfTheDay;
        setLanguage(language);
        defaults.setValue(QStringLiteral("looksForUpdates"), false); // was asked
        defaults.setValue(QStringLiteral("askedForLoginStart"), true);
    }

    void setLanguage(const QString &language)
    {
        settings::preferredOutputLanguage.set(defaults, language);
    }
    void useWithoutAccount() { defaults.setValue(QStringLiteral("usesWithoutAccount"), true); }
    void storeSession()
    {
        secrets.values = {{QStringLiteral("refreshToken"), "r"},
                          {QStringLiteral("uid"), "u"},
                          {QStringLiteral("email"), "reader@example.org"}};
    }

    void show()
    {
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(window.window()));
    }
    /// Returns the visible item of this name, or null.
    [[nodiscard]] QQuickItem *item(const char *name) const
    {
        return findItem(window.window()->contentItem(), QLatin1StringView(name));
    }
    [[nodiscard]] QString text(const char *name) const
    {
        return item(name) != nullptr ? item(name)->property("text").toString() : QString();
    }
    /// Returns the message of the service's form.
    [[nodiscard]] QString outcome() const
    {
        return item("outcome") != nullptr ? item("outcome")->property("title").toString()
                                          : QString();
    }
    void click(const char *name) const
    {
        const QQuickItem *target = item(name);
        QVERIFY2(target != nullptr, name);
        static_cast<void>(window.window()->grabWindow()); // lays out what has just appeared
        QTest::mouseClick(
            window.window(), Qt::LeftButton, {},
            target->mapToScene({target->width() / 2, target->height() / 2}).toPoint());
    }
    void key(Qt::Key pressed, int times = 1) const
    {
        for (int i = 0; i < times; ++i) {
            QTest::keyClick(window.window(), pressed);
        }
    }
};

} // namespace vellumo::test
