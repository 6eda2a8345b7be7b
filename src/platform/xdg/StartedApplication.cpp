// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/xdg/StartedApplication.h"

#include <QFile>
#include <QFileInfo>
#include <QSettings>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr qint64 maxSize = qint64{64} * 1024;

QString processFile(qint64 processIdentifier, const QString &name)
{
    return u"/proc/%1/%2"_s.arg(processIdentifier).arg(name);
}

QString contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(maxSize)) : QString();
}

/// Undoes the escaping of systemd's unit names: "\x2d" for '-'.
QString unescaped(const QString &text)
{
    QByteArray bytes;
    const QByteArray escaped = text.toUtf8();
    for (qsizetype i = 0; i < escaped.size(); ++i) {
        bool isNumber = false;
        const char byte = escaped.mid(i, 2) == "\\x"
            ? static_cast<char>(escaped.mid(i + 2, 2).toUInt(&isNumber, 16))
            : '\0';
        bytes.append(isNumber ? byte : escaped.at(i));
        i += isNumber ? 3 : 0;
    }
    return QString::fromUtf8(bytes);
}

QString applicationIdInUnit(const QString &unit)
{
    const QString name = unit.section(u'.', 0, -2);
    const QString type = unit.section(u'.', -1);
    QStringList parts = name.section(u'@', 0, 0).split(u'-');
    const QString kind = parts.takeFirst();
    if (type == "scope"_L1 && kind == "app"_L1 && !parts.isEmpty()) {
        parts.removeLast(); // a number
    }
    const bool isStartedByBus = type == "service"_L1 && kind == "dbus"_L1;
    if ((kind != "app"_L1 && !isStartedByBus) || parts.isEmpty()) {
        return {};
    }
    return unescaped(parts.constLast()); // before it: the launcher
}

} // namespace

QString applicationIdInUnits(const QString &controlGroup)
{
    const QStringList units = controlGroup.split(u'/', Qt::SkipEmptyParts);
    for (qsizetype i = units.size() - 1; i >= 0; --i) {
        if (QString id = applicationIdInUnit(units[i]); !id.isEmpty()) {
            return id;
        }
    }
    return {};
}

QString startedApplicationId(qint64 processIdentifier)
{
    const QString sandbox = processFile(processIdentifier, u"root/.flatpak-info"_s);
    if (QFileInfo::exists(sandbox)) {
        return QSettings(sandbox, QSettings::IniFormat).value(u"Application/name"_s).toString();
    }
    const QString groups = contents(processFile(processIdentifier, u"cgroup"_s));
    for (const QString &line : groups.split(u'\n')) {
        if (line.startsWith("0::"_L1)) {
            return applicationIdInUnits(line.mid(3));
        }
    }
    return {};
}

QString programName(qint64 processIdentifier)
{
    const QFileInfo program(processFile(processIdentifier, u"exe"_s));
    return QFileInfo(program.symLinkTarget()).fileName();
}

} // namespace vellumo
