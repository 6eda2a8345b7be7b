// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/xdg/DesktopEntries.h"
#include "platform/xdg/ExecLine.h"
#include "platform/xdg/StartedApplication.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace vellumo;

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

class TestDesktopEntries : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void findsDesktopEntry()
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
        } cases[] = {
            {"application id", u"org.example.Editor"_s, u"viewer"_s, u"viewer"_s,
             u"org.example.Editor"_s},
            {"unknown application id", u"org.example.Gone"_s, u"viewer"_s, {}, u"viewer"_s},
            {"class", {}, u"Navigator"_s, u"the-browser"_s, u"browser"_s},
            {"instance", {}, u"the-browser"_s, u"Other"_s, u"browser"_s},
            {"class in another case", {}, {}, u"The-Browser"_s, u"browser"_s},
            {"file name", {}, u"x"_s, u"Viewer"_s, u"viewer"_s},
            {"id before class", {}, u"painter"_s, u"painter"_s, u"painter"_s},
            {"last part of the id", {}, u"editor"_s, u"Editor"_s, u"org.example.Editor"_s},
            {"program", {}, u"paintprog"_s, {}, u"painter"_s},
            {"launchers match nothing", {}, u"flatpak"_s, u"env"_s, {}},
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

    void choosesLocalizedName()
    {
        const struct {
            const char *locale;
            const char *languages;
            QString name;
        } cases[] = {
            {"zh_CN.UTF-8", "", u"\u7F16\u8F91\u5668"_s}, {"de_AT.UTF-8", "", u"Bearbeiter"_s},
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

    void rereadsChangedFolder()
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

    void splitsCommands()
    {
        const struct {
            const char *name;
            QString value;
            QStringList words;
        } cases[] = {
            {"field codes stay", u"ed  -n %U"_s, {u"ed"_s, u"-n"_s, u"%U"_s}},
            {"quotes", uR"("/opt/a b/ed" "" x)"_s, {u"/opt/a b/ed"_s, QString(), u"x"_s}},
            {"escapes in quotes", u"\"a\\\"b\\$c\\\\d\" 50%%"_s, {u"a\"b$c\\d"_s, u"50%"_s}},
            {"nothing", u"  "_s, {}},
        };
        for (const auto &each : cases) {
            QVERIFY2(execLine::words(each.value) == each.words, each.name);
        }
    }

    void findsApplicationInUnits()
    {
        const QString user = u"/user.slice/user-1000.slice/user@1000.service/app.slice/"_s;
        const struct {
            QString group;
            QString id;
        } rows[] = {
            {user + u"app-gnome-org.gnome.Evince-2311.scope"_s, u"org.gnome.Evince"_s},
            {user + u"app-org.kde.okular-0d6cc5d0.scope"_s, u"org.kde.okular"_s},
            {user + u"app-gnome-firefox\\x2desr-77.scope"_s, u"firefox-esr"_s},
            {user + u"app-org.kde.kate@12ab.service"_s, u"org.kde.kate"_s},
            {user + u"dbus-:1.2-org.gnome.TextEditor@0.service"_s, u"org.gnome.TextEditor"_s},
            {user + u"app-org.gnome.Terminal.slice/vte-spawn-1.scope"_s, u"org.gnome.Terminal"_s},
            {user + u"session.slice"_s, {}},
            {u"/"_s, {}},
        };
        for (const auto &row : rows) {
            QCOMPARE(applicationIdInUnits(row.group), row.id);
        }
    }
};

QTEST_GUILESS_MAIN(TestDesktopEntries)
#include "test_desktop_entries.moc"
