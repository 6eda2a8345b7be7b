// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/ReadingNote.h"

#include <QHashFunctions>

namespace vellumo {

size_t qHash(const ReadingContext &context, size_t seed)
{
    return qHashMulti(seed, context.key, context.displayName, stringValue(context.source));
}

QString stringValue(ReadingContextSource source)
{
    switch (source) {
    case ReadingContextSource::webURL:
        return QStringLiteral("webURL");
    case ReadingContextSource::filePath:
        return QStringLiteral("filePath");
    case ReadingContextSource::appWindow:
        return QStringLiteral("appWindow");
    case ReadingContextSource::windowSession:
        return QStringLiteral("windowSession");
    }
    Q_UNREACHABLE();
}

std::optional<ReadingContextSource> readingContextSource(QStringView stringValue)
{
    for (const auto source :
         {ReadingContextSource::webURL, ReadingContextSource::filePath,
          ReadingContextSource::appWindow, ReadingContextSource::windowSession}) {
        if (stringValue == vellumo::stringValue(source)) {
            return source;
        }
    }
    return std::nullopt;
}

} // namespace vellumo
