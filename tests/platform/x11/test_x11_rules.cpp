// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// What needs no desktop: rules, and a server that lacks something.
#include "platform/EventMonitoring.h"
#include "platform/x11/DesktopEntries.h"
#include "platform/x11/ModifierFlags.h"
#include "platform/x11/MonitorList.h"
#include "platform/x11/SelectionValue.h"
#include "platform/x11/ServerTime.h"
#include "platform/x11/TerminalClasses.h"
#include "platform/x11/X11Backend.h"
#include "support/Application.h"
#include "support/Waiting.h"
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;
using namespace std::chrono_literals;

class TestX11Rules : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void mapsModifiers();
    void widensServerTime();
    void decodesText();
    void handlersChangeMonitorsWhileCalled();
    void findsDesktopEntry();
    void choosesLocalizedName();
    void rereadsChangedFolder();
    void knowsTerminals();
    void doesLessWithoutExtensions();
};

void TestX11Rules::mapsModifiers()
{
    using namespace ModifierFlag;
    const struct {
        const char *name;
        quint8 base;
        quint8 latched;
        quint8 locked;
        quint32 flags;
    } cases[] = {{"Num Lock key held", 0x10, 0, 0, 0},
                 {"Caps Lock key held", 0x02, 0, 0, CapsLock},
                 {"sticky Control", 0, 0x04, 0, Control},
                 {"locked Shift is no flag", 0, 0, 0x01, 0},
                 {"Super and AltGr", 0xC0, 0, 0, Command | AltGr}};
    for (const auto &each : cases) {
        QVERIFY2(modifierFlags(each.base, each.latched, each.locked) == each.flags, each.name);
    }
}

void TestX11Rules::widensServerTime()
{
    ServerTime time;
    const qint64 first = time.widen(0xFFFFFF00U);
    QCOMPARE(time.widen(0x00000010U) - first, 0x110); // over the end of 32 bits
    QCOMPARE(time.widen(0xFFFFFFF0U) - first, 0xF0); // and an older one after it
    QCOMPARE(time.widen(0x70000000U) - first, 0x70000100);
    QCOMPARE(time.widen(0xE0000000U) - first, 0xE0000100LL);
}

void TestX11Rules::decodesText()
{
    constexpr xcb_atom_t utf8 = 300;
    const struct {
        const char *name;
        xcb_atom_t type;
        QByteArray bytes;
        QString text;
    } cases[] = {{"Latin-1", XCB_ATOM_STRING, "caf\xE9"_ba + '\0', u"caf\u00E9"_s},
                 {"UTF-8", utf8, "\xED\x95\x9C \xF0\x9F\x8C\x8A"_ba, u"\uD55C \U0001F30A"_s},
                 {"surrogates by themselves", utf8,
                  "a \xED\xA0\xBC\xED\xBC\x8A\xED\xA0\xBC\xED\xBC\x95 b"_ba,
                  u"a \U0001F30A\U0001F315 b"_s},
                 {"half a pair", utf8, "a\xED\xA0\xBC"_ba, u"a\uFFFD\uFFFD\uFFFD"_s}};
    for (const auto &each : cases) {
        QVERIFY2(selectionText({each.type, 8, each.bytes}) == each.text, each.name);
    }
}

void TestX11Rules::handlersChangeMonitorsWhileCalled()
{
    auto list = std::make_shared<MonitorList>();
    const Event event{EventType::FlagsChanged, 0, KeyCode::Other, 0};
    const auto mask = maskOf(EventType::FlagsChanged);
    QStringList calls;
    std::unique_ptr<EventMonitorHandle> added;
    const auto oldest = list->add(mask, [&](const Event &) {
        calls.append(u"oldest"_s);
        return true;
    });
    std::unique_ptr<EventMonitorHandle> removed = list->add(mask, [&](const Event &) {
        calls.append(u"removed"_s);
        return true;
    });
    std::unique_ptr<EventMonitorHandle> newest;
    newest = list->add(mask, [&](const Event &) {
        calls.append(u"newest"_s);
        added = list->add(mask, [&](const Event &) {
            calls.append(u"added"_s);
            return false;
        });
        removed.reset();
        newest.reset(); // destroys the closure that runs
        return true;
    });
    QVERIFY(list->deliver(event));
    QCOMPARE(calls, (QStringList{u"newest"_s, u"oldest"_s}));
    QVERIFY(!list->deliver(event)); // what the newest swallows, none of the others sees
    QCOMPARE(calls, (QStringList{u"newest"_s, u"oldest"_s, u"added"_s}));
    list.reset(); // before its last handle
}

namespace {

void writeFile(const QString &path, const QByteArray &contents)
{
    QDir().mkpath(path.section(u'/', 0, -2));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
        qFatal("cannot write");
    }
}

QByteArray entry(const QByteArray &rest)
{
    return "[Desktop Entry]\nType=Application\n" + rest + '\n';
}

} // namespace

void TestX11Rules::findsDesktopEntry()
{
    const QTemporaryDir folder;
    const auto system = folder.filePath(u"system/"_s);
    const auto user = folder.filePath(u"user/"_s);
    writeFile(system + u"org.example.Editor.desktop"_s, entry("Name=Editor\nExec=/opt/ed %U"));
    writeFile(system + u"viewer.desktop"_s, entry("Name=Viewer\nExec=see"));
    writeFile(system + u"browser.desktop"_s, entry("StartupWMClass=the-browser\nExec=b"));
    writeFile(system + u"painter.desktop"_s, entry("Exec=env A=b \"/usr/bin/paintprog\" %f"));
    writeFile(system + u"sandboxed.desktop"_s, entry("Exec=/usr/bin/flatpak run org.x"));
    writeFile(system + u"suite-a.desktop"_s, entry("StartupWMClass=suite\nNoDisplay=true"));
    writeFile(system + u"suite-z.desktop"_s, entry("StartupWMClass=suite"));
    writeFile(system + u"vendor/tool.desktop"_s, entry("Name=Tool"));
    writeFile(system + u"removed.desktop"_s, entry("Name=Removed"));
    writeFile(user + u"a-profile.desktop"_s, entry("Name=Mine\nStartupWMClass=painter"));
    writeFile(user + u"removed.desktop"_s, "[Desktop Entry]\nHidden=true\n");
    writeFile(system + u"link.desktop"_s, "[Desktop Entry]\nType=Link\nName=Link\n");
    DesktopEntries entries({folder.filePath(u"user"_s), folder.filePath(u"system"_s)}, {});
    QVERIFY(entries.refresh());
    const struct {
        const char *name;
        QString applicationId;
        QString instance;
        QString className;
        QString id;
    } cases[] = {{"application id", u"org.example.Editor"_s, u"viewer"_s, u"viewer"_s,
                  u"org.example.Editor"_s},
                 {"unknown application id", u"org.example.Gone"_s, u"viewer"_s, {}, u"viewer"_s},
                 {"class", {}, u"Navigator"_s, u"the-browser"_s, u"browser"_s},
                 {"instance", {}, u"the-browser"_s, u"Other"_s, u"browser"_s},
                 {"class in another case", {}, {}, u"The-Browser"_s, u"browser"_s},
                 {"file name", {}, u"x"_s, u"Viewer"_s, u"viewer"_s},
                 {"id before class", {}, u"painter"_s, u"painter"_s, u"painter"_s},
                 {"last part of the id", {}, u"editor"_s, u"Editor"_s, u"org.example.Editor"_s},
                 {"program", {}, u"paintprog"_s, {}, u"painter"_s},
                 {"launchers are nobody", {}, u"flatpak"_s, u"env"_s, {}},
                 {"shown before hidden", {}, {}, u"suite"_s, u"suite-z"_s},
                 {"file in a folder", {}, u"vendor-tool"_s, {}, u"vendor-tool"_s},
                 {"deleted by the user", {}, u"removed"_s, {}, {}},
                 {"no application", {}, u"link"_s, {}, {}},
                 {"nothing known", {}, {}, {}, {}}};
    for (const auto &each : cases) {
        const auto *found = entries.find(each.applicationId, each.instance, each.className);
        QVERIFY2((found == nullptr ? QString() : found->id) == each.id, each.name);
    }
}

void TestX11Rules::choosesLocalizedName()
{
    const struct {
        const char *locale;
        const char *languages;
        QString name;
    } cases[] = {{"zh_CN.UTF-8", "", u"\u7F16\u8F91\u5668"_s}, {"de_AT.UTF-8", "", u"Bearbeiter"_s},
                 {"sr_RS@latin", "", u"Uredjivac"_s},          {"fr_FR.UTF-8", "", u"Editor"_s},
                 {"fr_FR.UTF-8", "fi:de", u"Bearbeiter"_s},    {"C", "de", u"Editor"_s}};
    for (const auto &each : cases) {
        qputenv("LC_ALL", each.locale);
        qputenv("LANGUAGE", each.languages);
        const auto parsed = parseDesktopEntry(
            "# comment\n[Desktop Entry]\nName[zh_TW]=\xE8\xAA\xA4\nName[de]=Bearbeiter\n"
            "Name=Editor\nName[zh_CN]=\xE7\xBC\x96\xE8\xBE\x91\xE5\x99\xA8\n"
            "Name[sr@latin]=Uredjivac\nType=Application\n"
            "[Desktop Action new]\nName=New Window\nName[de]=Neues Fenster\n",
            desktopEntryLanguages());
        QVERIFY(parsed);
        QVERIFY2(parsed->name == each.name, each.locale);
    }
}

void TestX11Rules::rereadsChangedFolder()
{
    const QTemporaryDir folder;
    const auto applications = folder.filePath(u"applications"_s);
    DesktopEntries entries({applications}, {});
    QVERIFY(entries.refresh());
    QVERIFY(!entries.refresh());
    writeFile(applications + u"/new.desktop"_s, entry("Name=New"));
    QVERIFY(entries.refresh());
    QVERIFY(entries.find({}, u"new"_s, {}) != nullptr);
}

void TestX11Rules::knowsTerminals()
{
    for (const auto *name : {"XTerm", "Gnome-terminal", "konsole", "URxvt", "org.gnome.Console",
                             "st-256color", "Tilix"}) {
        QVERIFY2(isTerminalClass(name), name);
    }
    for (const auto *name : {"firefox-esr", "gedit", "Steam", "libreoffice-writer", ""}) {
        QVERIFY2(!isTerminalClass(name), name);
        QVERIFY2(!mistakesCopyKeys(name), name);
    }
    QVERIFY(mistakesCopyKeys("Emacs") && mistakesCopyKeys("XTerm"));
}

void TestX11Rules::doesLessWithoutExtensions()
{
    Application server({u"X server"_s,
                        u"Xvfb"_s,
                        {u"-displayfd"_s, u"1"_s, u"-nolisten"_s, u"tcp"_s, u"-noreset"_s, u"-ac"_s,
                         u"-extension"_s, u"XTEST"_s, u"-extension"_s, u"XFIXES"_s, u"-extension"_s,
                         u"X-Resource"_s},
                        {},
                        {}});
    QVERIFY(server.launch());
    QVERIFY(waitUntil([&] { return server.standardOutput().endsWith(u'\n'); }, 10s));
    X11Backend backend(':' + server.standardOutput().trimmed().toLatin1());
    QVERIFY(!backend.keyPosting().postCopy(1));
    QVERIFY(!backend.primarySelection().publication());
    QVERIFY(!backend.pasteboard().items(QDeadlineTimer(5000))); // a change would not be noticed
    QVERIFY(backend.eventMonitoring().addGlobalMonitor(maskOf(EventType::FlagsChanged),
                                                       [](const Event &) {}));
}

QTEST_MAIN(TestX11Rules)
#include "test_x11_rules.moc"
