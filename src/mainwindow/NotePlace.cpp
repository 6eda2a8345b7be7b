// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/NotePlace.h"

#include "ui/PlainText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
constexpr qsizetype longestPlace = 120;
} // namespace

QString placeOf(const ReadingContext &context, bool english)
{
    if (context.key == "cloud"_L1) {
        return english ? u"Synced notes"_s : u"已同步的笔记"_s;
    }
    return presentableLine(context.displayName, longestPlace);
}

QString placeKey(const ReadingContext &context)
{
    return context.key == "cloud"_L1 ? context.key : context.displayName;
}

} // namespace vellumo
