// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/shortcuts/Accelerator.h"

#include <QRegularExpression>
#include <array>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo::accelerator {

namespace {

struct Modifier {
    QLatin1StringView name; ///< in lower case
    QLatin1StringView readable;
};

/// In the order in which they are written.
constexpr std::array order{"Super"_L1, "Ctrl"_L1, "Alt"_L1, "Shift"_L1};

constexpr std::array modifiers{
    Modifier{"super"_L1, "Super"_L1},  Modifier{"mod4"_L1, "Super"_L1},
    Modifier{"control"_L1, "Ctrl"_L1}, Modifier{"primary"_L1, "Ctrl"_L1},
    Modifier{"ctrl"_L1, "Ctrl"_L1},    Modifier{"ctl"_L1, "Ctrl"_L1},
    Modifier{"alt"_L1, "Alt"_L1},      Modifier{"mod1"_L1, "Alt"_L1},
    Modifier{"shift"_L1, "Shift"_L1},  Modifier{"shft"_L1, "Shift"_L1},
};

} // namespace

QStringList strings(const QString &text)
{
    // either kind of quotes, and a backslash before a character that is meant as it is
    static const QRegularExpression string(uR"x('((?:[^'\\]|\\.)*)'|"((?:[^"\\]|\\.)*)")x"_s);
    static const QRegularExpression escaped(uR"(\\(.))"_s);
    QStringList result;
    for (auto it = string.globalMatch(text); it.hasNext();) {
        const QRegularExpressionMatch match = it.next();
        QString found = match.captured(1) + match.captured(2);
        result.append(found.replace(escaped, u"\\1"_s));
    }
    return result;
}

QString textOf(const QString &string)
{
    QString result = string;
    result.replace(u'\\', u"\\\\"_s).replace(u'\'', u"\\'"_s);
    return u'\'' + result + u'\'';
}

QString textOf(const QStringList &strings)
{
    if (strings.isEmpty()) {
        return u"@as []"_s;
    }
    QStringList texts;
    for (const QString &string : strings) {
        texts.append(textOf(string));
    }
    return u'[' + texts.join(u", "_s) + u']';
}

QString readable(const QString &accelerator)
{
    static const QRegularExpression form(u"^((?:<[A-Za-z0-9_]+>)*)([A-Za-z0-9_]+)$"_s);
    const QRegularExpressionMatch match = form.match(accelerator);
    if (!match.hasMatch()) {
        return {};
    }
    QStringList held;
    const QStringList names =
        match.captured(1).toLower().split(QRegularExpression(u"[<>]+"_s), Qt::SkipEmptyParts);
    for (const QString &name : names) {
        for (const Modifier &modifier : modifiers) {
            if (name == modifier.name) {
                held.append(modifier.readable);
            }
        }
    }
    QStringList keys;
    for (const QLatin1StringView name : order) {
        if (held.contains(name)) {
            keys.append(name);
        }
    }
    const QString key = match.captured(2);
    keys.append(key.size() == 1 ? key.toUpper() : key);
    return keys.join(u'+');
}

} // namespace vellumo::accelerator
