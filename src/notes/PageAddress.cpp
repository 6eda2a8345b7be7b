// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "notes/PageAddress.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {
constexpr auto webPrefix = "web-url:"_L1;
} // namespace

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

QString shortNameOf(const ReadingContext &context)
{
    const QString &name = context.displayName;
    return context.source == ReadingContextSource::webURL && name.startsWith("www."_L1)
        ? name.sliced(4)
        : name;
}

} // namespace vellumo
