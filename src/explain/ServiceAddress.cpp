// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ServiceAddress.h"

#include "platform/WebAddress.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

QString withScheme(const QString &text)
{
    if (text.contains("://"_L1)) {
        return text;
    }
    const QUrl plain(u"http://"_s + text);
    const bool isNear = isLoopback(plain) || isPrivateAddress(plain.host());
    return (isNear ? u"http://"_s : u"https://"_s) + text;
}

QString withoutSlashes(QString path)
{
    while (path.endsWith(u'/')) {
        path.chop(1);
    }
    return path;
}

} // namespace

ServiceAddress ServiceAddress::fromInput(const QString &text)
{
    const QString typed = text.trimmed();
    if (typed.isEmpty()) {
        return {};
    }
    const auto wrong = [](Problem problem) { return ServiceAddress{{}, problem}; };
    if (std::ranges::any_of(typed, [](QChar c) { return c.isSpace() || !c.isPrint(); })) {
        return wrong(Problem::NoAddress);
    }
    QUrl url(withScheme(typed), QUrl::StrictMode);
    if (!url.userInfo().isEmpty()) {
        return wrong(Problem::Credentials);
    }
    if (const auto refusal = refusalOf(url)) {
        return wrong(refusal->kind == HttpError::Kind::Insecure ? Problem::Insecure
                                                                : Problem::NoAddress);
    }
    if (url.hasQuery() || url.hasFragment()) {
        return wrong(Problem::Query);
    }
    QString path = withoutSlashes(url.path(QUrl::FullyEncoded));
    if (path.isEmpty()) {
        path = u"/v1"_s;
    }
    for (const QString method = u"/chat/completions"_s; path.endsWith(method);) {
        path = withoutSlashes(path.chopped(method.size()));
    }
    url.setPath(path, QUrl::StrictMode);
    return {url.toString(QUrl::FullyEncoded), Problem::None};
}

} // namespace vellumo
