// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/ProgramEnvironment.h"

#include <QHash>
#include <QProcess>
#include <QProcessEnvironment>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace vellumo::programEnvironment {

namespace {

// Process-wide, like the environment itself.

QHash<QString, QString> &taken()
{
    static QHash<QString, QString> values;
    return values;
}

using Values = QHash<QByteArray, std::optional<QByteArray>>;

/// Values that setHere() has replaced.
Values &before()
{
    static Values values;
    return values;
}

std::optional<rlimit> &coreLimit()
{
    static std::optional<rlimit> limit;
    return limit;
}

void set(const char *name, const std::optional<QByteArray> &value)
{
    if (value) {
        qputenv(name, *value);
    } else {
        qunsetenv(name);
    }
}

QProcessEnvironment ofPrograms()
{
    QProcessEnvironment result = QProcessEnvironment::systemEnvironment();
    for (auto it = before().cbegin(); it != before().cend(); ++it) {
        const QString name = QString::fromLatin1(it.key());
        if (it.value()) {
            result.insert(name, QString::fromLocal8Bit(*it.value()));
        } else {
            result.remove(name);
        }
    }
    const QStringList names = result.keys();
    for (const QString &name : names) {
        if (name.startsWith("VELLUMO_"_L1)) {
            result.remove(name);
        }
    }
    return result;
}

} // namespace

void takeOwn(const QStringList &names)
{
    for (const QString &name : names) {
        const QByteArray key = name.toLatin1();
        if (char *value = std::getenv(key.constData())) {
            taken().insert(name, QString::fromLocal8Bit(value));
            ::explicit_bzero(value, std::strlen(value));
            qunsetenv(key.constData());
        }
    }
}

QString own(const QString &name)
{
    return qEnvironmentVariable(name.toLatin1().constData(), taken().value(name));
}

void setHere(const char *name, const QByteArray &value)
{
    if (!before().contains(name)) {
        before().insert(
            name, qEnvironmentVariableIsSet(name) ? std::optional(qgetenv(name)) : std::nullopt);
    }
    qputenv(name, value);
}

void restore(const char *name)
{
    if (const auto found = before().constFind(name); found != before().cend()) {
        set(name, *found);
        before().erase(found);
    }
}

bool startProgram(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProgram(program);
    process.setArguments(arguments);
    process.setProcessEnvironment(ofPrograms());
    process.setChildProcessModifier([limit = coreLimit()] {
        if (limit) {
            ::setrlimit(RLIMIT_CORE, &*limit);
        }
    });
    return process.startDetached();
}

void preventCoreDump()
{
    rlimit limit{};
    if (coreLimit() || ::getrlimit(RLIMIT_CORE, &limit) != 0) {
        return;
    }
    coreLimit() = limit;
    // One byte, not zero: the kernel ignores other limits where dumps are piped to a program, such
    // as the journal's. The process stays dumpable, since the desktop's portals identify their
    // callers by /proc/PID/root, which an undumpable process hides from them.
    limit.rlim_cur = limit.rlim_max < 1 ? limit.rlim_max : 1;
    ::setrlimit(RLIMIT_CORE, &limit);
}

} // namespace vellumo::programEnvironment
