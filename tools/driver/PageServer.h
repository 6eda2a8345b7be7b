// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "http/HttpServer.h"
#include <QJsonObject>
#include <QPoint>

namespace vellumo::test {

/// Pages for browsers, served from memory on a free loopback port. The page script reports where on
/// the screen each element with an id is, what is selected and whether the page has the focus.
class PageServer {
public:
    PageServer();

    /// Returns the address of a page. Any path and query after it shows the same page with the
    /// path's last part as title.
    [[nodiscard]] QString address(const QString &path) const
    {
        return server_.url({}).toString() + u'/' + path;
    }
    void setBody(const QString &path, const QString &html) { bodies_.insert(path, html); }

    /// Return what the page of this path reported last.
    [[nodiscard]] QString selection(const QString &path) const
    {
        return reports_.value(path)[QLatin1StringView("selection")].toString();
    }
    [[nodiscard]] bool hasFocus(const QString &path) const
    {
        return reports_.value(path)[QLatin1StringView("hasFocus")].toBool();
    }
    /// Returns points just inside the first and the last character of an element, once the page
    /// knows where its window is. The page learns that from a motion of the pointer over it.
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
