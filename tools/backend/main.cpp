// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
//
// vellumo_backend [--data FILE] [--port PORT] [-- COMMAND [ARGUMENT...]]: runs the stand-in
// backend. A command is run with the environment to use it, and its exit status is returned;
// otherwise the configuration is printed and the backend serves until it is ended.
#include "backend/Backend.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QProcess>
#include <csignal>
#include <cstdio>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;
using vellumo::test::Backend;

namespace {

void print(const QString &line)
{
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

/// Runs the command until it ends. It is terminated with this process.
int runBeside(const Backend &backend, const QStringList &command)
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const auto &[name, value] : backend.environment())
        environment.insert(name, value);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedChannels);
    process.setInputChannelMode(QProcess::ForwardedInputChannel);
    process.setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGTERM); });
    const auto finish = [&process] {
        const bool isWell = process.exitStatus() == QProcess::NormalExit;
        QCoreApplication::exit(isWell ? process.exitCode() : EXIT_FAILURE);
    };
    QObject::connect(&process, &QProcess::finished, qApp, finish);
    QObject::connect(&process, &QProcess::errorOccurred, qApp, [&](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            print(u"backend: cannot start "_s + command.first());
            QCoreApplication::exit(EXIT_FAILURE);
        }
    });
    process.start(command.first(), command.mid(1));
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Stands in for the services behind an account."_s);
    parser.addHelpOption();
    parser.addOptions(
        {{u"data"_s, u"Keep accounts and notes in this file."_s, u"FILE"_s, u":memory:"_s},
         {u"port"_s, u"Listen on this port."_s, u"PORT"_s, u"0"_s}});
    parser.addPositionalArgument(u"command"_s, u"Runs beside it."_s, u"[-- COMMAND...]"_s);
    parser.process(application);

    Backend backend(parser.value(u"data"_s), parser.value(u"port"_s).toUShort());
    backend.onLine = [](const QString &line) { print(u"backend: "_s + line); };
    print(u"backend: faults on demand: curl -d fail=offline http://127.0.0.1:%1/control"_s.arg(
        backend.port()));
    if (!parser.positionalArguments().isEmpty())
        return runBeside(backend, parser.positionalArguments());
    for (const auto &[name, value] : backend.environment())
        print(name + u'=' + value);
    return QCoreApplication::exec();
}
