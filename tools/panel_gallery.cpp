// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// Shows the panel's states for review: panel_gallery STATE [--zh] [--step ms]. Each line of input
// shows another state; the program ends with its input.

#include "NoMonitors.h"
#include "computer/FailureText.h"
#include "panel/ResultPanelController.h"
#include "platform/windowing/QtFloatingWindows.h"
#include "platform/windowing/QtScreens.h"
#include "ui/ApplicationFonts.h"
#include "ui/BilingualText.h"
#include "ui/ConsentDialog.h"
#include "ui/QmlEngine.h"
#include "ui/look/SystemLook.h"
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickWindow>
#include <QSocketNotifier>
#include <QTextStream>
#include <iostream>
#include <string>

using namespace Qt::StringLiterals;
using namespace vellumo;

namespace {

const ExplanationResult answer{
    u"中间件位于操作系统与其上运行的应用程序之间。"_s,
    u"指的是一层“夹在中间”的软件:应用不直接跟系统打交道,而是通过它来通信、管理数据。"_s};
const QString selection = u"Middleware sits between the operating system and the applications that "
                          "run on it."_s;
const ReadingContext context{u"web-url:https://en.wikipedia.org/"_s, u"en.wikipedia.org"_s,
                             ReadingContextSource::webURL};

QString repeated(const QString &text, int times)
{
    return QString(text).repeated(times);
}

class Gallery {
public:
    Gallery(ResultPanelController &panel, ConsentDialog &dialog)
        : panel_(panel)
        , dialog_(dialog) { }

    void show(const QString &state)
    {
        const auto present = [this](IslandContent content) {
            panel_.present(std::move(content), context, {});
        };
        if (state == "loading"_L1) {
            present(IslandContent::loading(u"ubiquitous"_s));
        } else if (state == "result"_L1) {
            present(IslandContent::result(answer, selection, {}));
        } else if (state == "english"_L1) {
            present(IslandContent::result(
                {{},
                 u"“Ubiquitous” means present everywhere at the same time. Here the author "
                 "says that computers have become so common that nobody notices them."_s},
                u"ubiquitous"_s, {}));
        } else if (state == "thread"_L1) {
            present(IslandContent::result(
                answer, selection,
                {{u"为什么需要这一层?"_s,
                  u"为了让不同的应用用同一种方式说话,省得每个应用都自己处理系统之间的差别。"_s},
                 {u"举个例子?"_s, {}}}));
        } else if (state == "failed"_L1) {
            present(IslandContent::result(
                answer, selection,
                {{u"And what about a message queue, is that middleware as well?"_s,
                  u"vellumo could not answer that just now."_s,
                  ExplanationFailure{.kind = HttpError::Kind::TimedOut}}}));
        } else if (state == "long"_L1) {
            present(IslandContent::result(
                {answer.translation, repeated(answer.explanation + u"\n"_s, 40)}, selection, {}));
        } else if (state == "paragraph"_L1) {
            present(IslandContent::result({repeated(answer.translation, 8), answer.explanation},
                                          repeated(selection + u" "_s, 6), {}));
        } else if (state == "error"_L1) {
            panel_.showError(u"Select text first."_s, ErrorHelp::None, {});
        } else if (state == "refused"_L1) {
            panel_.showError(
                u"vellumo could not explain this yet."_s, ErrorHelp::Service,
                ExplanationFailure{.kind = ServiceError::Kind::badStatus, .status = 401});
        } else if (state == "untrusted"_L1) {
            panel_.showError(u"vellumo needs Accessibility permission — enable it in System "
                             "Settings → Privacy & Security → Accessibility."_s,
                             ErrorHelp::Permission, {});
        } else if (state == "sample"_L1) {
            present(IslandContent::result(answer, selection, {}, SampleAnswers::Unconfigured));
        } else if (state == "demo"_L1) {
            present(IslandContent::demo(answer));
        } else if (state == "hostile"_L1) {
            present(IslandContent::result(
                {u"<b>bold</b><img src=\"http://127.0.0.1/x.png\"> &amp; <a href=\"x\">link</a>"_s,
                 u"مرحبا بالعالم \u202Eאבג\u202C zalgo: Z̴̧̛͖a̷̢͝l̵͇̈́g̶̨̛o̸͎̓ "
                 u"👩‍👩‍👧‍👦\u0000\u0007 "
                 "verylongwordwithoutanybreak"_s
                     + repeated(u"x"_s, 200) + repeated(u"长文"_s, 50000)},
                repeated(u"<i>a</i>\r\n\t"_s, 10000),
                {{repeated(u"why "_s, 60), repeated(u"因为"_s, 90)}}));
        } else if (state == "think"_L1) {
            panel_.showFollowUpThinking(u"为什么需要这一层?"_s);
        } else if (state == "answer"_L1) {
            panel_.showFollowUpAnswer(
                u"为了让不同的应用用同一种方式说话,省得每个应用都自己处理系统之间的差别。"_s);
        } else if (state == "focus"_L1) {
            panel_.focusPanel();
        } else if (state == "consent"_L1) {
            dialog_.ask([](bool allowed) { std::cout << "allowed " << allowed << std::endl; });
        } else if (state == "dismiss"_L1) {
            panel_.dismiss();
        } else if (state == "quit"_L1) {
            QCoreApplication::quit();
        }
    }

private:
    ResultPanelController &panel_;
    ConsentDialog &dialog_;
};

/// Prints the time from a command until the next frame was painted.
void measure(const QString &state, Gallery &gallery)
{
    QElapsedTimer timer;
    timer.start();
    auto painted = std::make_shared<QList<QMetaObject::Connection>>();
    const auto windows = QGuiApplication::allWindows();
    for (QWindow *window : windows) {
        if (auto *quick = qobject_cast<QQuickWindow *>(window)) {
            *painted << QObject::connect(
                quick, &QQuickWindow::frameSwapped, quick, [timer, painted, state] {
                    std::cout << "painted " << state.toStdString() << ' '
                              << static_cast<double>(timer.nsecsElapsed()) / 1e6 << " ms"
                              << std::endl;
                    for (const auto &connection : *painted) {
                        QObject::disconnect(connection);
                    }
                    painted->clear();
                });
        }
    }
    gallery.show(state);
    std::cout << "returned " << state.toStdString() << ' '
              << static_cast<double>(timer.nsecsElapsed()) / 1e6 << " ms" << std::endl;
}

} // namespace

int main(int argc, char **argv)
{
    QtFloatingWindows::chooseRenderer();
    QGuiApplication app(argc, argv);
    QGuiApplication::setQuitOnLastWindowClosed(false);
    installApplicationFonts();

    const bool chinese = QCoreApplication::arguments().contains(u"--zh"_s);
    QQmlEngine engine;
    prepareEngine(engine);
    BilingualText texts([chinese] { return chinese ? u"Chinese"_s : u"English"_s; });
    QtFloatingWindows windows(engine,
                              [&engine] { return SystemLook::of(engine)->isMotionReduced(); });
    QtScreens screens;
    NoMonitors monitors;
    ResultPanelController panel(windows, screens, monitors, texts);
    panel.describeFailure = [&texts](const ExplanationFailure &failure) {
        return failureText(failure, texts);
    };
    ConsentDialog dialog(engine, texts);
    Gallery gallery(panel, dialog);
    QObject::connect(&panel, &ResultPanelController::serviceSettingsRequested, &panel, [] {});

    QElapsedTimer timer;
    timer.start();
    panel.prepare();
    std::cout << "prepared " << timer.elapsed() << " ms" << std::endl;

    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, &app, [&] {
        std::string line;
        if (!std::getline(std::cin, line)) {
            QCoreApplication::quit();
            return;
        }
        measure(QString::fromStdString(line), gallery);
    });
    return QGuiApplication::exec();
}
