// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "mainwindow/NotePlace.h"

#include "ui/PlainText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
constexpr auto webPrefix = "web-url:"_L1;
constexpr qsizetype longestPlace = 120;
} // namespace

QString placeOf(const ReadingContext &context, bool english)
{
    if (context.key == "cloud"_L1) {
        return english ? u"Synced notes"_s : u"已同步的笔记"_s;
    }
    return presentableLine(context.displayName, longestPlace);
}

QUrl pageOf(const ReadingContext &context)
{
    if (!context.key.startsWith(webPrefix)) {
        return {};
    }
    const QUrl url(context.key.mid(webPrefix.size()), QUrl::StrictMode);
    const bool isPage = url.isValid() && !url.host().isEmpty()
        && (url.scheme() == "https"_L1 || url.scheme() == "http"_L1);
    return isPage ? url : QUrl();
}

QString placeKey(const ReadingContext &context)
{
    return context.key == "cloud"_L1 ? context.key : context.displayName;
}

} // namespace vellumo
