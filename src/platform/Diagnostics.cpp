// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/Diagnostics.h"

#include <cstdio>

using namespace Qt::StringLiterals;

namespace vellumo {

void printLine(const QString &line)
{
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stdout);
    std::fflush(stdout);
}

void printDiagnostic(const QString &text)
{
    printLine(u"vellumo: "_s + text);
}

} // namespace vellumo
