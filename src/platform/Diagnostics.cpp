// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/Diagnostics.h"

#include <QList>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace vellumo {

QString logLine(const QString &text)
{
    QString line;
    line.reserve(text.size());
    const QList<uint> characters = text.toUcs4();
    for (const uint c : characters) {
        switch (QChar::category(c)) {
        case QChar::Other_Control:
        case QChar::Separator_Line:
        case QChar::Separator_Paragraph:
            line += u' ';
            break;
        case QChar::Other_Format:
            break;
        default:
            line.append(QStringView(QChar::fromUcs4(c)));
        }
    }
    return line;
}

void printLine(const QString &line)
{
    printText(logLine(line));
}

void printText(const QString &text)
{
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void printDiagnostic(const QString &text)
{
    printLine(u"vellumo: "_s + text);
}

} // namespace vellumo
