// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "driver/Application.h"

#include "driver/Waiting.h"
#include <QDir>
#include <QFile>
#include <QStandardPaths>
#include <csignal>
#include <unistd.h>

namespace vellumo::test {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

qint64 parentOf(qint64 process)
{
    QFile file(u"/proc/%1/stat"_s.arg(process));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray text = file.readAll();
    // the name, in parentheses, may hold anything
    const QList<QByteArray> fields = text.mid(text.lastIndexOf(')') + 2).split(' ');
    return fields.size() > 1 ? fields.at(1).toLongLong() : 0;
}

constexpr auto quietProfile = R"(
user_pref("app.normandy.enabled", false);
user_pref("app.update.enabled", false);
user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.newtabpage.enabled", false);
user_pref("browser.safebrowsing.malware.enabled", false);
user_pref("browser.safebrowsing.phishing.enabled", false);
user_pref("browser.sessionstore.resume_from_crash", false);
user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("browser.startup.page", 0);
user_pref("browser.tabs.firefox-view", false);
user_pref("browser.translations.enable", false);
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("datareporting.policy.firstRunURL", "");
user_pref("network.captive-portal-service.enabled", false);
user_pref("network.connectivity-service.enabled", false);
user_pref("toolkit.telemetry.enabled", false);
user_pref("ui.caretBlinkTime", 0);
)";

} // namespace

Application::Application(Command command) : command_(std::move(command))
{
    process_.setProgram(command_.program);
    process_.setArguments(command_.arguments);
    process_.setStandardInputFile(QProcess::nullDevice());
}

Application::~Application()
{
    end();
}

bool Application::isInstalled() const
{
    return command_.program.contains(u'/')
        ? QFile::exists(command_.program)
        : !QStandardPaths::findExecutable(command_.program).isEmpty();
}

std::optional<WindowId> Application::start(const Desktop &desktop)
{
    if (!launch())
        return std::nullopt;
    return desktop.waitForWindow(command_.windowClass, command_.title);
}

bool Application::launch()
{
    process_.start();
    return process_.waitForStarted();
}

QString Application::errorOutput()
{
    errorOutput_ += QString::fromUtf8(process_.readAllStandardError());
    return errorOutput_;
}

QString Application::standardOutput()
{
    standardOutput_ += QString::fromUtf8(process_.readAllStandardOutput());
    return standardOutput_;
}

QList<qint64> Application::tree() const
{
    QList<qint64> found;
    const qint64 root = process_.processId();
    if (root == 0)
        return found;
    const QStringList entries = QDir(u"/proc"_s).entryList(QDir::Dirs);
    for (const QString &entry : entries) {
        const qint64 candidate = entry.toLongLong();
        qint64 ancestor = candidate;
        while (ancestor > 1 && ancestor != root)
            ancestor = parentOf(ancestor);
        if (candidate > 1 && ancestor == root)
            found.append(candidate);
    }
    return found;
}

void Application::signalAll(int number) const
{
    const QList<qint64> processes = tree();
    for (const qint64 process : processes)
        ::kill(static_cast<pid_t>(process), number);
}

void Application::signal(int number) const
{
    if (process_.processId() > 0)
        ::kill(static_cast<pid_t>(process_.processId()), number);
}

std::optional<int> Application::end()
{
    if (isRunning()) {
        const QList<qint64> processes = tree();
        continueAll();
        signal(SIGTERM);
        if (!waitForEnd(5s)) {
            for (const qint64 process : processes)
                ::kill(static_cast<pid_t>(process), SIGKILL);
            process_.waitForFinished();
        }
    }
    if (crashed())
        return std::nullopt;
    return exitCode();
}

void Application::setEnvironment(const QString &name, const QString &value)
{
    QProcessEnvironment environment = process_.processEnvironment();
    if (environment.isEmpty())
        environment = QProcessEnvironment::systemEnvironment();
    environment.insert(name, value);
    process_.setProcessEnvironment(environment);
}

Application::Command firefox(const QString &address, const QString &title, const QString &profile)
{
    QDir().mkpath(profile);
    QFile settings(profile + u"/user.js"_s);
    if (settings.open(QIODevice::WriteOnly))
        settings.write(quietProfile);
    return {u"Firefox"_s,
            u"firefox-esr"_s,
            {u"--no-remote"_s, u"--profile"_s, profile, address},
            u"firefox"_s,
            title};
}

Application::Command mousepad(const QString &file)
{
    return {u"Mousepad"_s,
            u"mousepad"_s,
            {u"--disable-server"_s, file},
            u"mousepad"_s,
            QFileInfo(file).fileName()};
}

Application::Command qtTextEdit(const QString &file)
{
    return {u"Qt text edit"_s, QStringLiteral(VELLUMO_TEXT_EDIT), {file}, u"plain_text_edit"_s, {}};
}

QByteArray outputOf(const QString &program, const QStringList &arguments, const QByteArray &input,
                    std::chrono::milliseconds time)
{
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    const auto ended = [&process] { return process.state() == QProcess::NotRunning; };
    // an owner that gives the selection away at this moment leaves the question unanswered
    if (!waitUntil(ended, time)) {
        process.kill();
        process.waitForFinished();
    }
    return process.readAllStandardOutput();
}

} // namespace vellumo::test
