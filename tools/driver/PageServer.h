// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "http/HttpServer.h"
#include <QJsonObject>
#include <QPoint>

namespace vellumo::test {

/// Pages for browsers, served from memory on a free loopback port. The page script reports where on
/// the screen each element with an id lies, what is selected and whether the page has the focus.
class PageServer {
public:
    PageServer();

    /// The address of a page; any path and query after it shows the same page with the path's last
    /// part as title.
    [[nodiscard]] QString address(const QString &path) const
    {
        return server_.url({}).toString() + u'/' + path;
    }
    void setBody(const QString &path, const QString &html) { bodies_.insert(path, html); }

    /// What the page of this path reported last.
    [[nodiscard]] QString selection(const QString &path) const
    {
        return reports_.value(path)[QLatin1StringView("selection")].toString();
    }
    [[nodiscard]] bool hasFocus(const QString &path) const
    {
        return reports_.value(path)[QLatin1StringView("hasFocus")].toBool();
    }
    /// Just inside the first and the last character of an element, once the page knows where its
    /// window lies, which a motion of the pointer over the page lets it know.
    [[nodiscard]] std::optional<QPoint> startOf(const QString &path, const QString &id) const
    {
        return place(path, id, QStringLiteral("start"));
    }
    [[nodiscard]] std::optional<QPoint> endOf(const QString &path, const QString &id) const
    {
        return place(path, id, QStringLiteral("end"));
    }

private:
    [[nodiscard]] HttpAnswer answer(const HttpReceived &request);
    [[nodiscard]] std::optional<QPoint> place(const QString &path, const QString &id,
                                              const QString &end) const;

    HttpServer server_;
    QHash<QString, QString> bodies_;
    QHash<QString, QJsonObject> reports_;
};

} // namespace vellumo::test
