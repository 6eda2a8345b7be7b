// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "backend/Backend.h"
#include "desktop/ProgramTest.h"
#include "driver/AccessibleTree.h"
#include <QDir>
#include <QFile>
#include <QJsonObject>
#include <QSettings>
#include <QTemporaryDir>
#include <sys/resource.h>

using namespace vellumo::test;

/// The built program in a new home, driven with clicks and keys.
class TestFirstRun : public ProgramTest {
    Q_OBJECT

private Q_SLOTS:
    void leadsThroughEverything()
    {
        QVERIFY(vellumo_->start({}));
        QVERIFY(shows(u"Welcome to vellumo"_s));
        QVERIFY(press(u"Get started"_s));
        QVERIFY(shows(u"We protect your privacy"_s));
        QVERIFY(press(u"Continue"_s));

        QVERIFY(shows(u"Set up vellumo on your computer"_s));
        QVERIFY(!vellumo_->panelText().contains(u"Let vellumo read the text you select?"_s));
        QVERIFY(press(u"Allow"_s));
        QVERIFY(shows(u"Let vellumo read the text you select?"_s));
        takePicture(u"permission"_s);
        QVERIFY(press(u"Allow"_s, true));
        QVERIFY(shows(u"✓ Enabled"_s));
        QVERIFY(press(u"Continue"_s));

        QVERIFY(shows(u"See the key light up?"_s));
        QVERIFY(waitUntil([this] { return window() && desktop_.activate(*window()); }));
        desktop_.press(Key::AltRight);
        QVERIFY(shows(u"Option / Alt ●"_s));
        takePicture(u"key"_s);
        desktop_.release(Key::AltRight);
        QVERIFY(waitUntil([this] { return !vellumo_->panelText().contains(u"●"_s); }));
        desktop_.doubleTap();
        QVERIFY(shows(u"✓ That's it"_s));
        QVERIFY(press(u"Yes, continue"_s));

        QVERIFY(shows(u"See the explanation up top?"_s));
        QVERIFY(!vellumo_->panel());
        const QPoint word = desktop_.geometry(*window()).topLeft() + QPoint(130, 220);
        desktop_.click(word, 2);
        desktop_.doubleTap();
        QVERIFY(shows(u"the explanation appears right here."_s));
        QVERIFY(shows(u"✓ That's it"_s));
        takePicture(u"select"_s);
        QVERIFY(press(u"Yes, continue"_s));

        QVERIFY(shows(u"Your notes live here"_s));
        // the pill's demonstration
        QVERIFY(shows(u"button: vellumo is a reading assistant for your Mac."_s));
        takePicture(u"notes"_s);
        QVERIFY(!setting(u"hasCompletedOnboarding"_s).toBool());
        QVERIFY(press(u"Continue"_s)); // without an account, nothing is asked
        QVERIFY(waitUntil([this] { return !window(); }));
        QVERIFY(waitUntil([this] { return setting(u"hasCompletedOnboarding"_s).toBool(); }));
        QVERIFY(vellumo_->notes().isEmpty());
        QVERIFY(
            shows(u"button: Settings"_s)); // the main window has come, without asking for a sign-in
        takePicture(u"end"_s);
        QVERIFY(vellumo_->process().end() == 0);

        QVERIFY(vellumo_->start({}));
        desktop_.doubleTap(); // no demonstration any more
        QVERIFY(shows(u"Select text first."_s));
        QVERIFY(!window());
    }

    void signsInAndSendsTheProfile()
    {
        Backend backend(folder_.filePath(u"backend"_s));
        for (const auto &[name, value] : backend.environment())
            vellumo_->setEnvironment(name, value);
        const QString uid = backend.tables().uidOf(u"a@b.org"_s);
        QVERIFY(makeBrowser(u"vellumo://auth?refreshToken=%1&uid=%2&email=a%40b.org"_s.arg(
            backend.tables().newRefreshToken(uid), uid)));
        vellumo_->setEnvironment(u"VELLUMO_ONBOARDING"_s, QString());
        vellumo_->setEnvironment(u"QT_QPA_PLATFORM"_s, u"wayland;xcb"_s);
        vellumo_->setSetting(u"hasCompletedOnboarding"_s, u"true"_s); // does not count then
        vellumo_->setSetting(u"accessibilityConsent"_s, u"true"_s);
        vellumo_->setSetting(u"askedForLoginStart"_s, u"true"_s); // has a button of the same name
        QVERIFY(
            vellumo_->writeNotes({QJsonObject{{u"id"_s, u"00000000-0000-4000-8000-000000000001"_s},
                                              {u"sourceText"_s, u"read before the sign-in"_s},
                                              {u"translation"_s, u"t"_s},
                                              {u"explanation"_s, u"e"_s},
                                              {u"createdAt"_s, 800000000},
                                              {u"followUps"_s, QJsonArray{}}}}));
        QVERIFY(vellumo_->start({}));
        QVERIFY(press(u"Continue with Google"_s));
        QVERIFY(shows(u"We protect your privacy"_s));
        keepsItsOwn();
        QVERIFY(!vellumo_->panelText().contains(u": Back\n"_s));
        QVERIFY(press(u"Continue"_s));
        QVERIFY(shows(u"See the key light up?"_s)); // it may read already
        QVERIFY(press(u"Skip"_s));
        QVERIFY(shows(u"See the explanation up top?"_s));
        QVERIFY(press(u"Skip"_s));
        QVERIFY(press(u"Continue"_s));
        for (const auto &answer : {u"Other"_s, u"Legal"_s, u"Retail"_s}) {
            QVERIFY(press(answer));
            QVERIFY(press(u"Continue"_s));
        }
        QVERIFY(waitUntil([&] { return !backend.tables().profile(uid).isEmpty(); }));
        const QJsonObject profile = backend.tables().profile(uid);
        QCOMPARE(profile[u"hearAbout"_s].toString(), u"Other"_s);
        QCOMPARE(profile[u"role"_s].toString(), u"Legal"_s);
        QCOMPARE(profile[u"industry"_s].toString(), u"Retail"_s);
        QVERIFY(waitUntil([this] { return !window(); }));

        // Notes from before the sign-in are not uploaded without a question.
        QVERIFY(shows(u"heading: Signed in as a@b.org — upload 1 note?"_s));
        takePicture(u"upload"_s);
        QVERIFY(backend.tables().notes(uid).isEmpty());
        QCOMPARE(backend.count(u"ListNotes"_s), 0);
        const auto clicks = [this](const QString &name, const auto &isDone) {
            // a click is lost while the window is still being placed
            return waitUntil([&] { return vellumo_->click(name) && waitUntil(isDone, 500ms); });
        };
        QVERIFY(
            clicks(u"Not now"_s, [&] { return setting(u"notesDeclinedFor"_s).toString() == uid; }));
        QVERIFY(waitUntil([&] { return !vellumo_->panelText().contains(u"upload 1 note?"_s); }));
        QVERIFY(backend.tables().notes(uid).isEmpty());
        QVERIFY(
            clicks(u"Upload 1 note"_s, [&] { return backend.tables().notes(uid).size() == 1; }));
        QVERIFY(waitUntil([&] { return setting(u"notesOwner"_s).toString() == uid; }));
        QCOMPARE(backend.complaints(), QStringList());

        const auto asks = [this] { return vellumo_->panelText().contains(u"Sign out?"_s); };
        QVERIFY(clicks(u"Sign out"_s, asks));
        QVERIFY(clicks(u"Cancel"_s, [&] { return !asks(); }));
        QVERIFY(!vellumo_->panelText().contains(u"Continue with Google"_s));
        QVERIFY(clicks(u"Sign out"_s, asks));
        const auto agrees = [&] {
            QRect button; // the last one of this name, which is the question's
            const auto items = accessibleItems(vellumo_->process().processIdentifier());
            for (const AccessibleItem &item : items) {
                if (item.name == u"Sign out"_s && item.role.endsWith(u"button"_s))
                    button = item.extents;
            }
            desktop_.click(button.center());
            return waitUntil([&] { return !asks(); }, 500ms);
        };
        QVERIFY(waitUntil(agrees));
        QVERIFY(shows(u"Continue with Google"_s));
    }

    void writesItsPictures()
    {
        const std::pair<QStringList, int> rows[] = {
            {{u"VELLUMO_PREVIEW_SNAPSHOT_DIR"_s}, 18},
            {{u"VELLUMO_SNAPSHOT_DIR"_s, u"VELLUMO_SNAPSHOT_AUTH"_s}, 2},
            // the pill is the same in both languages
            {{u"VELLUMO_SNAPSHOT_DIR"_s, u"VELLUMO_SNAPSHOT_NOTES"_s}, 5},
        };
        for (const auto &[variables, expected] : rows) {
            const QTemporaryDir pictures;
            Program program(desktop_, QStringLiteral(VELLUMO_PROGRAM), variables.constLast());
            QFile::remove(program.folder() + u"/config/vellumo/vellumo.ini"_s);
            for (const QString &variable : variables)
                program.setEnvironment(variable, pictures.path());
            QVERIFY(program.launch({}));
            QVERIFY(waitUntil([&] { return !program.process().isRunning(); }, 30s));
            QSet<QByteArray> contents;
            const auto files = QDir(pictures.path()).entryInfoList({u"*.png"_s});
            for (const QFileInfo &file : files) {
                QImage picture(file.filePath());
                QVERIFY(picture.width() > 100);
                contents << QByteArray(reinterpret_cast<const char *>(picture.constBits()),
                                       picture.sizeInBytes());
            }
            QCOMPARE(contents.size(), expected);
        }
    }

    void closingLeavesTheProgramUsable()
    {
        vellumo_->setEnvironment(u"VELLUMO_ONBOARDING_PHASE"_s, u"gesture"_s);
        vellumo_->setSetting(u"preferredOutputLanguage"_s, u"Chinese"_s);
        QVERIFY(vellumo_->start({}));
        QVERIFY(shows(u"看到按键亮了吗?"_s));
        QVERIFY(desktop_.activate(*window()));
        desktop_.chord(64, 70); // Alt+F4
        QVERIFY(waitUntil([this] { return !window(); }));
        QVERIFY(waitUntil([this] { // the demonstration ends a moment later
            desktop_.doubleTap();
            return vellumo_->waitForPanel(1s).has_value();
        }));
        QVERIFY(!setting(u"hasCompletedOnboarding"_s).toBool());
        QVERIFY(vellumo_->process().end() == 0);
        QVERIFY(vellumo_->start({}));
        QVERIFY(shows(u"看到按键亮了吗?"_s)); // once more
    }

    void waitsForASilentStartToBeOpened()
    {
        QVERIFY(vellumo_->start(Program::inBackground()));
        desktop_.doubleTap(); // no demonstration
        QVERIFY(vellumo_->waitForPanel());
        QVERIFY(!window());
        QVERIFY(vellumo_->dismissPanel());
        for (int times = 0; times < 2; ++times) { // the second only brings it to the front
            QCOMPARE(vellumo_->startAgain(), 0);
            QVERIFY(waitUntil([this] { return window().has_value(); }));
            QCOMPARE(desktop_.windows(u"vellumo"_s).size(), 2); // it and the pill
        }
    }

private:
    void prepare() override { QFile::remove(settingsFile()); }
    /// Replaces the browser with a program that opens this callback address at once.
    [[nodiscard]] bool makeBrowser(const QString &address)
    {
        QFile browser(folder_.filePath(u"xdg-open"_s));
        vellumo_->setEnvironment(u"PATH"_s, folder_.path() + u':' + qEnvironmentVariable("PATH"));
        return browser.open(QIODevice::WriteOnly)
            && browser.write(
                   u"#!/bin/sh\nenv > '%1/environment'\nulimit -c > '%1/core'\nexec '%2' '%3'\n"_s
                       .arg(folder_.path(), QStringLiteral(VELLUMO_PROGRAM), address)
                       .toUtf8())
            > 0
            && browser.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    [[nodiscard]] bool shows(const QString &text) const { return vellumo_->waitForText(text); }
    /// Clicks the item of this name on the card, or in the question in front of it.
    [[nodiscard]] bool press(const QString &name, bool isQuestion = false)
    {
        const QStringList clickable{u"button"_s, u"push button"_s, u"radio button"_s};
        QRect place;
        const auto isThere = [&] {
            const QRect before = std::exchange(place, QRect());
            const auto items = accessibleItems(vellumo_->process().processIdentifier());
            for (const AccessibleItem &item : items) {
                if (item.name == name && clickable.contains(item.role))
                    place = item.extents; // the last of several is in the topmost window
            }
            // once it rests in one place with nothing in front of it
            const auto seen = desktop_.windowAt(place.center());
            return !place.isEmpty() && place == before && window()
                && desktop_.windows(u"vellumo"_s).contains(seen)
                && (seen == *window()) != isQuestion;
        };
        if (!waitUntil(isThere)) {
            qWarning() << "nothing to press is named" << name;
            return false;
        }
        desktop_.click(place.center());
        return true;
    }

    /// Checks the browser's arguments and what other users can see of the program.
    void keepsItsOwn() const
    {
        const auto contentOf = [](const QString &path) {
            QFile file(path);
            return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
        };
        const QByteArrayList given = contentOf(folder_.filePath(u"environment"_s)).split('\n');
        QVERIFY(given.contains("HOME=" + qgetenv("HOME")));
        QVERIFY(given.contains("QT_QPA_PLATFORM=wayland;xcb"));
        for (const QByteArray &variable : given) {
            QVERIFY2(!variable.startsWith("VELLUMO_") && !variable.startsWith("FIREBASE_"),
                     variable);
        }
        const QString process = u"/proc/%1/"_s.arg(vellumo_->process().processIdentifier());
        const QByteArray environment = contentOf(process + u"environ"_s);
        QVERIFY(environment.contains("HOME=")
                && !environment.contains(Backend::apiKey().toLatin1()));

        rlimit own{};
        QCOMPARE(getrlimit(RLIMIT_CORE, &own), 0);
        const QByteArray limits = contentOf(process + u"limits"_s).simplified();
        QVERIFY2(limits.contains("Max core file size 1 ")
                     || (own.rlim_max == 0 && limits.contains("Max core file size 0 ")),
                 limits);
        const QByteArray expected =
            own.rlim_cur == RLIM_INFINITY ? "unlimited" : QByteArray::number(own.rlim_cur / 512);
        QCOMPARE(contentOf(folder_.filePath(u"core"_s)).trimmed(), expected);
    }

    [[nodiscard]] QVariant setting(const QString &key) const
    {
        return QSettings(settingsFile(), QSettings::IniFormat).value(key);
    }
    [[nodiscard]] QString settingsFile() const
    {
        return vellumo_->folder() + u"/config/vellumo/vellumo.ini"_s;
    }

    [[nodiscard]] std::optional<WindowId> window() const
    {
        const QList<WindowId> windows = desktop_.windows(u"vellumo"_s);
        for (const WindowId window : windows) {
            if (desktop_.geometry(window).size() == QSize(680, 560))
                return window;
        }
        return std::nullopt;
    }

    void takePicture(const QString &name) const
    {
        const QString pictures = qEnvironmentVariable("VELLUMO_TEST_PICTURES");
        if (!pictures.isEmpty())
            desktop_.pixels().save(pictures + u"/first-run-"_s + name + u".png"_s);
    }

    QTemporaryDir folder_;
};

QTEST_MAIN(TestFirstRun)
#include "test_first_run.moc"
