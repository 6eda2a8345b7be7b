// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Draws the main window for review: window_gallery FOLDER [NAME...] writes a picture of each view,
// or of those named, in each language and appearance.

#include "mainwindow/WindowDesk.h"
#include "notes/NoteDates.h"
#include "ui/ApplicationFonts.h"
#include <QDir>
#include <QGuiApplication>
#include <QPalette>
#include <QTest>
#include <cmath>

using namespace Qt::StringLiterals;
using namespace vellumo;
using namespace vellumo::test;

namespace {

NoteWithContext note(double secondsAgo, const QString &source, const QString &meaning,
                     const ReadingContext &context, int followUps)
{
    NoteWithContext entry;
    entry.note.id = QUuid::createUuid();
    entry.note.sourceText = source;
    entry.note.explanation = meaning;
    entry.note.createdAt = eveningOfTheDay - secondsAgo;
    entry.context = context;
    for (int i = 0; i < followUps; ++i) {
        entry.note.followUps.append(
            {QUuid::createUuid(), i % 2 == 0 ? u"那驱动程序算中间件吗?"_s : u"And on Linux?"_s,
             i % 2 == 0
                 ? u"不算。驱动程序直接和硬件打交道,属于操作系统一侧;中间件站在应用这一侧,"
                   u"替应用打理通信、"
                   "事务和数据访问。"_s
                 : u"On Linux the same word is used for message brokers, transaction "
                   "monitors and the like; what talks to hardware is part of the kernel."_s});
    }
    return entry;
}

QList<NoteWithContext> someNotes()
{
    const ReadingContext wiki{u"web-url:https://en.wikipedia.org/wiki/Middleware"_s,
                              u"en.wikipedia.org"_s, ReadingContextSource::webURL};
    const ReadingContext times{u"web-url:https://www.nytimes.com/2026/11/20/science/owls.html"_s,
                               u"www.nytimes.com"_s, ReadingContextSource::webURL};
    const ReadingContext paper{u"app-window:org.gnome.Evince:Hardin 1968.pdf"_s,
                               u"Hardin 1968.pdf"_s, ReadingContextSource::appWindow};
    QList<NoteWithContext> notes{
        note(1080,
             u"Middleware sits between the operating system and the applications that run "
             "on it, and hides the differences below."_s,
             u"指的是一层“夹在中间”的软件:应用不直接跟系统打交道,而是通过它来通信。"_s, wiki, 2),
        note(1800, u"ubiquitous"_s, u"无处不在的;源自拉丁语 ubique(到处)。"_s, times, 0),
        note(day, u"the tragedy of the commons"_s,
             u"公地悲剧:人人可用的资源,因各自取用而被耗尽。"_s, paper, 1),
        note(day + 500, u"法无禁止即可为"_s,
             u"What the law does not forbid, one may do: a principle of private law."_s, wiki, 0),
        note(3 * day, u"<b>bold</b> & <script>alert(1)</script>"_s,
             u"مرحبا 👩‍👩‍👧‍👦 gjpqy ÅÉ"_s,
             {u"window-session:org.gnome.Terminal"_s, u"Terminal"_s,
              ReadingContextSource::windowSession},
             0)};
    notes[0].note.translation = u"中间件位于操作系统和运行其上的应用之间,并隐藏下层的差异。"_s;
    for (int i = 4; i < 120; ++i) {
        notes.append(note(day * (3.1 + i * 0.37), u"word number %1 of the long list"_s.arg(i),
                          u"第 %1 个词的解释"_s.arg(i),
                          i % 3 == 0       ? wiki
                              : i % 3 == 1 ? times
                                           : paper,
                          i % 5 == 0 ? 1 : 0));
    }
    return notes;
}

NoteWithContext longNote()
{
    return note(5000,
                QString(u"A sentence that goes on and on, with many clauses. "_s).repeated(20000),
                QString(u"很长的解释,一直写下去。"_s).repeated(500),
                {u"web-url:https://a.test/%1"_s.arg(QString(400, u'x')), u"a.test"_s,
                 ReadingContextSource::webURL},
                40);
}

struct View {
    QString name;
    std::function<void(WindowDesk &)> prepare; ///< runs before the window is created
    std::function<void(WindowDesk &)> act = [](WindowDesk &) {};
    QSize size = {};
    qreal textPoints = 0; ///< point size of the application's font, for large text
};

QList<View> views()
{
    const auto plain = [](WindowDesk &desk) { desk.useWithoutAccount(); };
    const auto signedIn = [](WindowDesk &desk) {
        desk.secrets.values = {
            {u"refreshToken"_s, "r"}, {u"uid"_s, "u"}, {u"email"_s, "reader@example.org"}};
    };
    const auto empty = [](WindowDesk &desk) {
        desk.useWithoutAccount();
        desk.notes.notes.clear();
    };
    const auto toNotes = [](WindowDesk &desk) { desk.click("notes"); };
    const auto toNote = [](WindowDesk &desk) {
        desk.click("notes");
        desk.key(Qt::Key_Down);
        desk.key(Qt::Key_Return);
    };
    const auto toComputer = [](WindowDesk &desk) { desk.click("computer"); };
    const auto scroll = [](WindowDesk &desk, qreal share) {
        QQuickItem *reader = desk.item("computerPage");
        const qreal hidden = reader->property("contentHeight").toReal() - reader->height();
        reader->setProperty("contentY", std::round(hidden * share));
    };
    const auto toService = [](WindowDesk &desk) { desk.window.showService(); };
    const auto withService = [](WindowDesk &desk) {
        desk.useWithoutAccount();
        desk.computer.enterService();
    };
    const auto poor = [withService](WindowDesk &desk) {
        withService(desk);
        desk.computer.accessibility.trusted = false;
        desk.computer.desktop.isPoor = true;
        desk.computer.desktop.state = DesktopReporting::Keyring::Locked;
        desk.computer.login.now = LoginStart::State::SwitchedOff;
        desk.secrets.isLocked = true;
    };
    const auto wrong = [](WindowDesk &desk) {
        desk.window.showService();
        for (const char c : {'h', 't', 't', 'p', ':', '/', '/', 'a', '.', 'b'}) {
            QTest::keyClick(desk.window.window(), c);
        }
        desk.key(Qt::Key_Return);
    };
    const auto refused = [](WindowDesk &desk) {
        desk.window.showService();
        QCoreApplication::processEvents(); // delivers the key
        desk.computer.explainer->explain({u"tide"_s, u"English"_s}, &desk.window,
                                         [](const auto &) {});
        desk.item("tryOut")->forceActiveFocus();
        desk.key(Qt::Key_Space);
        QCoreApplication::processEvents();
        while (desk.http.answer(HttpResponse{.status = 401})) { }
    };
    const auto toInsights = [](WindowDesk &desk) { desk.click("insights"); };
    const auto select = [](WindowDesk &desk) {
        desk.click("notes");
        desk.click("select");
        desk.key(Qt::Key_Space);
        desk.key(Qt::Key_Down);
        QTest::keyClick(desk.window.window(), Qt::Key_Down, Qt::ShiftModifier);
    };
    const auto exportTo = [select](const QString &path) {
        return [select, path](WindowDesk &desk) {
            QFile::remove(QDir::tempPath() + u"/vellumo-gallery.md"_s);
            desk.host.answer = [path](const PageHosting::FileQuestion &question) {
                question.onChosen(path);
            };
            if (desk.notes.notes.size() < 1000) {
                select(desk);
            } else {
                desk.click("notes");
            }
            desk.click("export");
            desk.click("exportChoose");
        };
    };
    const auto search = [](const char *text) {
        return [text](WindowDesk &desk) {
            desk.click("notes");
            for (const char *c = text; *c != 0; ++c) {
                QTest::keyClick(desk.window.window(), *c);
            }
        };
    };
    constexpr QSize usual(1040, 720);
    constexpr QSize small(1008, 552);
    constexpr QSize least(640, 440);
    return {
        {u"sign-in"_s, [](WindowDesk &) {}},
        {u"sign-in-working"_s, [](WindowDesk &) {}, [](WindowDesk &g) { g.click("signIn"); }},
        {u"sign-in-error"_s, [](WindowDesk &g) { g.workspace.opensUrls = false; },
         [](WindowDesk &g) { g.click("signIn"); }},
        {u"home"_s, plain},
        {u"home-signed-in"_s,
         [signedIn](WindowDesk &g) {
             signedIn(g);
             g.sync.fetched = NoteDates::localTime(eveningOfTheDay);
         }},
        {u"home-question"_s,
         [plain](WindowDesk &g) {
             plain(g);
             g.defaults.setValue(u"askedForLoginStart"_s, {});
         }},
        {u"home-empty"_s, empty},
        {u"home-arriving"_s,
         [signedIn](WindowDesk &g) {
             signedIn(g);
             g.sync.onTheirWay = 128;
         }},
        {u"home-sync-trouble"_s,
         [signedIn](WindowDesk &g) {
             signedIn(g);
             g.sync.trouble = SyncError::Kind::Unreachable;
             g.sync.left = 3;
         }},
        {u"home-unreadable-file"_s,
         [plain](WindowDesk &g) {
             plain(g);
             g.notes.unreadable = {
                 u"/home/reader/.local/share/vellumo/notes.json.unreadable-20261121T183000123Z"_s};
         }},
        {u"notes-unsaved"_s,
         [plain](WindowDesk &g) {
             plain(g);
             g.notes.failure = u"No space left on device"_s;
         },
         toNotes, small},
        {u"notes"_s, plain, toNotes},
        {u"notes-focus"_s, plain,
         [](WindowDesk &g) {
             g.click("notes");
             g.key(Qt::Key_Down, 3);
         }},
        {u"notes-by-place"_s, plain,
         [](WindowDesk &g) {
             g.click("notes");
             g.item("grouping")->forceActiveFocus();
             g.key(Qt::Key_Right);
         }},
        {u"notes-empty"_s, empty, toNotes},
        {u"search"_s, plain, search("middle")},
        {u"search-nothing"_s, plain, search("zebra")},
        {u"note"_s, plain, toNote},
        {u"note-long"_s,
         [](WindowDesk &g) {
             g.useWithoutAccount();
             g.notes.notes.prepend(longNote());
         },
         toNote},
        {u"note-beside"_s, plain,
         [](WindowDesk &g) {
             g.click("notes");
             static_cast<void>(g.window.window()->grabWindow()); // lays out the list
             QTest::mouseClick(g.window.window(), Qt::LeftButton, {},
                               g.item("rows")->mapToScene({200, 150}).toPoint());
         },
         QSize(1300, 720)},
        {u"settings"_s, plain, [](WindowDesk &g) { g.click("settings"); }},
        {u"insights"_s, plain, toInsights, usual},
        {u"insights-focus"_s, plain,
         [](WindowDesk &g) {
             g.click("insights");
             g.item("days")->forceActiveFocus();
             g.key(Qt::Key_Left, 2);
             g.key(Qt::Key_Up, 2);
         },
         usual},
        {u"insights-end"_s, plain,
         [](WindowDesk &g) {
             g.click("insights");
             g.key(Qt::Key_PageDown, 3);
             g.item("place")->forceActiveFocus();
             g.key(Qt::Key_Down, 1);
         },
         usual},
        {u"insights-empty"_s, empty, toInsights},
        {u"notes-of-a-place"_s, plain,
         [](WindowDesk &g) {
             g.click("insights");
             g.item("place")->forceActiveFocus();
             g.key(Qt::Key_Return);
         },
         usual},
        {u"computer"_s, plain, toComputer, usual},
        {u"computer-service"_s, withService, toService, usual},
        {u"computer-wrong"_s, plain, wrong, usual},
        {u"computer-refused"_s, withService, refused, usual},
        {u"computer-remove"_s, withService,
         [toService](WindowDesk &g) {
             toService(g);
             g.click("forgetKey");
         },
         usual},
        {u"computer-poor"_s, poor, toComputer, usual},
        {u"computer-poor-service"_s, poor, toService, usual},
        {u"computer-end"_s, signedIn,
         [toComputer, scroll](WindowDesk &g) {
             toComputer(g);
             scroll(g, 1);
         },
         usual},
        {u"computer-poor-end"_s, poor,
         [refused, scroll](WindowDesk &g) {
             refused(g);
             scroll(g, 1);
         },
         usual},
        {u"computer-large"_s, withService, toComputer, small, 20},
        {u"computer-large-service"_s, withService, toService, small, 20},
        {u"computer-large-key"_s, withService,
         [toService](WindowDesk &g) {
             toService(g);
             g.key(Qt::Key_Tab, 4);
         },
         small, 20},
        {u"computer-large-works"_s, poor,
         [toComputer, scroll](WindowDesk &g) {
             toComputer(g);
             scroll(g, 0.75);
         },
         small, 20},
        {u"computer-large-end"_s, poor,
         [refused, scroll](WindowDesk &g) {
             refused(g);
             scroll(g, 1);
         },
         small, 20},
        {u"computer-least"_s, withService, toService, least},
        {u"home-small"_s, plain, [](WindowDesk &) {}, small},
        {u"sign-in-large"_s, [](WindowDesk &) {}, [](WindowDesk &) {}, small, 20},
        {u"home-large"_s, signedIn, [](WindowDesk &) {}, small, 20},
        {u"home-empty-large"_s, empty, [](WindowDesk &) {}, small, 20},
        {u"notes-large"_s, plain, toNotes, small, 20},
        {u"note-large"_s, plain, toNote, small, 20},
        {u"settings-large"_s, plain, [](WindowDesk &g) { g.click("settings"); }, small, 20},
        {u"selecting"_s, plain, select, usual},
        {u"selecting-large"_s, plain, select, small, 20},
        {u"selecting-least"_s, plain, select, least},
        {u"export"_s, plain,
         [select](WindowDesk &g) {
             select(g);
             g.click("export");
         },
         usual},
        {u"export-all"_s, plain,
         [](WindowDesk &g) {
             g.click("notes");
             g.click("export");
         },
         usual},
        {u"export-large"_s, plain,
         [select](WindowDesk &g) {
             select(g);
             g.click("export");
         },
         QSize(960, 520), 20},
        {u"export-replace"_s, plain, exportTo(u"/etc/passwd"_s), usual},
        {u"export-replace-large"_s, plain, exportTo(u"/etc/passwd"_s), small, 20},
        {u"export-replace-least"_s, plain, exportTo(u"/etc/passwd"_s), least},
        {u"exported"_s, plain, exportTo(QDir::tempPath() + u"/vellumo-gallery.md"_s), usual},
        {u"exported-large"_s, plain, exportTo(QDir::tempPath() + u"/vellumo-gallery.md"_s), small,
         20},
        {u"export-failed"_s, plain, exportTo(u"/gone/notes.md"_s), usual},
        {u"export-writing"_s,
         [](WindowDesk &g) {
             g.useWithoutAccount();
             while (g.notes.notes.size() < 200'000) {
                 g.notes.notes.append(g.notes.notes.first(g.notes.notes.size()));
             }
         },
         exportTo(QDir::tempPath() + u"/vellumo-gallery.md"_s), usual},
        {u"insights-large"_s, plain, toInsights, small, 20},
        {u"insights-large-end"_s, plain,
         [](WindowDesk &g) {
             g.click("insights");
             g.key(Qt::Key_PageDown, 2);
         },
         small, 20},
        {u"insights-least"_s, plain, toInsights, least},
        {u"home-least"_s, signedIn, [](WindowDesk &) {}, least},
        {u"notes-least"_s, plain, toNotes, least},
        {u"note-least"_s, plain, toNote, least},
    };
}

bool draw(const View &view, const QString &language, bool dark, const QString &folder)
{
    WindowDesk desk(language);
    desk.notes.notes = someNotes();
    QFont font = QGuiApplication::font();
    const qreal points = font.pointSizeF();
    if (view.textPoints > 0) {
        font.setPointSizeF(view.textPoints);
        QGuiApplication::setFont(font);
    }
    view.prepare(desk);
    QCoreApplication::processEvents(); // restores the session
    desk.window.show();
    QQuickWindow *window = desk.window.window();
    if (window == nullptr) {
        return false;
    }
    if (view.size.isValid()) {
        window->resize(view.size);
    }
    if (!QTest::qWaitForWindowExposed(window)) {
        return false;
    }
    QTest::qWait(20);
    view.act(desk);
    QTest::qWait(200); // longer than any animation
    window->grabWindow().save(u"%1/%2-%3-%4.png"_s.arg(folder, view.name,
                                                       language == "English"_L1 ? u"en"_s : u"zh"_s,
                                                       dark ? u"dark"_s : u"light"_s));
    if (view.textPoints > 0) {
        font.setPointSizeF(points);
        QGuiApplication::setFont(font);
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickWindow::setTextRenderType(QQuickWindow::NativeTextRendering);
    const QGuiApplication application(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    installApplicationFonts();
    const QString folder = QGuiApplication::arguments().value(1, u"."_s);
    const QStringList names = QGuiApplication::arguments().mid(2);
    QDir().mkpath(folder);
    for (const bool dark : {false, true}) {
        QGuiApplication::setPalette(QPalette(dark ? Qt::black : Qt::white));
        for (const auto &language : {u"English"_s, u"Chinese"_s}) {
            const QList<View> all = views();
            for (const View &view : all) {
                if ((names.isEmpty() || names.contains(view.name))
                    && !draw(view, language, dark, folder)) {
                    return EXIT_FAILURE;
                }
            }
        }
    }
    return EXIT_SUCCESS;
}
