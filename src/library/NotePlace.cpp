// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "library/NotePlace.h"

#include "notes/PageAddress.h"
#include "ui/PlainText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
constexpr qsizetype maxPlace = 120;
} // namespace

bool isPulled(const ReadingContext &context)
{
    return context.key == cloudKey;
}

QString placeOf(const ReadingContext &context, bool english)
{
    if (isPulled(context)) {
        return english ? u"Synced notes"_s : u"已同步的笔记"_s;
    }
    return presentableLine(shortNameOf(context), maxPlace);
}

QString placeKey(const ReadingContext &context)
{
    // the prefix keeps a window title from being equal to the key of synced notes
    return isPulled(context) ? QString(cloudKey) : u'/' + context.displayName;
}

bool isSamePlace(const ReadingContext &one, const ReadingContext &other)
{
    return isPulled(one) == isPulled(other)
        && (isPulled(one) || one.displayName == other.displayName);
}

} // namespace vellumo
