// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
// A server's message, followed by a NUL and each value that was sent.

#include "Fuzzing.h"
#include "sync/LogExcerpt.h"

using namespace vellumo;
using namespace vellumo::fuzzing;

namespace {

/// Folds one character at a time: in a whole text some letters become two, which changes counts.
QString lowered(QString text)
{
    for (QChar &c : text) {
        c = c.toLower();
    }
    return text;
}

} // namespace

int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QStringList parts = text(data, size).split(QChar(u'\0'));
    const QString message = parts.takeFirst();
    const QString excerpt = logExcerpt(message, parts);
    require(excerpt.size() <= 201, "an excerpt is short");
    require(!excerpt.contains(u'\n') && !excerpt.contains(u'\r'), "an excerpt is one line");
    // what is left is compared as it is looked for: without case, white space as one blank
    const QString left = lowered(excerpt);
    for (const QString &part : parts) {
        const QString value = lowered(part.simplified());
        for (qsizetype i = 0; i + 8 <= value.size(); ++i) {
            require(!left.contains(QStringView(value).sliced(i, 8)), "nothing sent is shown");
        }
    }
    return 0;
}
