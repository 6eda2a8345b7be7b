// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/Application.h"

#include "support/Waiting.h"
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

Application::Command chromium(const QString &address, const QString &title, const QString &profile,
                              bool exposesTree)
{
    QStringList arguments{u"--no-first-run"_s,
                          u"--no-default-browser-check"_s,
                          u"--disable-gpu"_s,
                          u"--password-store=basic"_s,
                          u"--disable-background-networking"_s,
                          u"--disable-component-update"_s,
                          u"--disable-sync"_s,
                          u"--user-data-dir="_s + profile,
                          u"--window-size=1200,760"_s,
                          u"--window-position=20,20"_s};
    if (::getuid() == 0)
        arguments.append(u"--no-sandbox"_s);
    if (!exposesTree)
        arguments.append(u"--disable-renderer-accessibility"_s);
    arguments.append(address);
    return {exposesTree ? u"Chromium with its tree"_s : u"Chromium"_s, u"chromium"_s, arguments,
            u"chromium"_s, title};
}

Application::Command epiphany(const QString &address, const QString &title)
{
    return {u"GNOME Web"_s,
            u"epiphany-browser"_s,
            {u"--incognito-mode"_s, address},
            u"epiphany"_s,
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

Application::Command gnomeTextEditor(const QString &file)
{
    return {u"GNOME Text Editor"_s,
            u"gnome-text-editor"_s,
            {u"--standalone"_s, file},
            u"gnome-text-editor"_s,
            QFileInfo(file).fileName()};
}

Application::Command evince(const QString &file)
{
    return {u"Evince"_s, u"evince"_s, {file}, u"evince"_s, QFileInfo(file).fileName()};
}

Application::Command writer(const QString &file, const QString &profile)
{
    return {u"LibreOffice Writer"_s,
            u"soffice"_s,
            {u"--norestore"_s, u"--nologo"_s, u"--nofirststartwizard"_s, u"--nolockcheck"_s,
             u"-env:UserInstallation=file://"_s + profile, u"--writer"_s, file},
            u"libreoffice"_s,
            QFileInfo(file).fileName()};
}

Application::Command qtTextEdit(const QString &file)
{
    return {u"Qt text edit"_s,
            QStringLiteral(VELLUMO_TEST_TEXT_EDIT),
            {file},
            u"plain_text_edit"_s,
            {}};
}

Application::Command xterm(const QString &script)
{
    return {u"xterm"_s,
            u"xterm"_s,
            {u"-fa"_s, u"DejaVu Sans Mono"_s, u"-fs"_s, u"12"_s, u"-geometry"_s, u"80x12+100+300"_s,
             u"-e"_s, u"bash"_s, u"-c"_s, script},
            u"xterm"_s,
            {}};
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

QByteArray pdf(const QStringList &lines)
{
    QByteArray text("BT /F1 24 Tf 72 700 Td ");
    for (const QString &line : lines) {
        QByteArray escaped = line.toLatin1();
        escaped.replace('\\', "\\\\").replace('(', "\\(").replace(')', "\\)");
        text += '(' + escaped + ") Tj 0 -40 Td ";
    }
    text += "ET";
    const QByteArrayList objects{
        "<< /Type /Catalog /Pages 2 0 R >>",
        "<< /Type /Pages /Kids [4 0 R] /Count 1 >>",
        "<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>",
        "<< /Type /Page /Parent 2 0 R /MediaBox [0 0 612 792] /Contents 5 0 R "
        "/Resources << /Font << /F1 3 0 R >> >> >>",
        "<< /Length " + QByteArray::number(text.size()) + " >>\nstream\n" + text + "\nendstream",
    };
    QByteArray file("%PDF-1.4\n");
    QByteArray table("0000000000 65535 f \n");
    for (qsizetype i = 0; i < objects.size(); ++i) {
        table += QByteArray::number(file.size()).rightJustified(10, '0') + " 00000 n \n";
        file += QByteArray::number(i + 1) + " 0 obj\n" + objects.at(i) + "\nendobj\n";
    }
    const QByteArray start = QByteArray::number(file.size());
    const QByteArray count = QByteArray::number(objects.size() + 1);
    file += "xref\n0 " + count + '\n' + table + "trailer << /Size " + count
        + " /Root 1 0 R >>\nstartxref\n" + start + "\n%%EOF\n";
    return file;
}

} // namespace vellumo::test
