// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/xdg/ExecLine.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace vellumo::execLine {

namespace {

/// Characters that a backslash escapes between double quotes.
constexpr QStringView escapedInQuotes = u"\\\"`$";

} // namespace

QStringList words(const QString &value)
{
    QStringList words;
    QString word;
    bool isInWord = false;
    bool isInQuotes = false;
    const auto endWord = [&] {
        if (isInWord) {
            words.append(word.replace(u"%%"_s, u"%"_s));
        }
        word.clear();
        isInWord = false;
    };
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i].isSpace() && !isInQuotes) {
            endWord();
            continue;
        }
        isInWord = true;
        if (value[i] == u'"') {
            isInQuotes = !isInQuotes;
            continue;
        }
        if (value[i] == u'\\' && i + 1 < value.size() && escapedInQuotes.contains(value[i + 1])) {
            ++i;
        }
        word += value[i];
    }
    endWord();
    return words;
}

QByteArray written(const QString &program)
{
    static const QRegularExpression plain(u"^[\\w.+-]+$"_s);
    if (plain.match(program).hasMatch()) {
        return program.toUtf8();
    }
    QString word(u'"');
    for (const QChar c : program) {
        if (escapedInQuotes.contains(c)) {
            word += u'\\';
        }
        word += c;
    }
    // in addition to quoting: field codes, and the escapes of all values of an entry
    word += u'"';
    return word.replace(u'%', u"%%"_s).replace(u'\\', u"\\\\"_s).toUtf8();
}

} // namespace vellumo::execLine
