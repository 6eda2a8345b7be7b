// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QJsonObject>
#include <QPoint>
#include <QString>
#include <QTcpServer>
#include <optional>

namespace vellumo::test {

/// Pages for browsers, served from memory on a free loopback port. The page script tells the server
/// where on the screen each element with an id lies, what is selected and whether it has the focus,
/// so that a test knows the truth from the browser itself.
class PageServer : public QObject {
    Q_OBJECT

public:
    PageServer();

    /// The address of a page; any path and query after it shows the same page with the path's last
    /// part as title.
    [[nodiscard]] QString address(const QString &path) const;

    void setBody(const QString &path, const QString &html);

    /// What the page of this path reported last.
    [[nodiscard]] QJsonObject report(const QString &path) const;
    [[nodiscard]] QString selection(const QString &path) const;
    [[nodiscard]] bool hasFocus(const QString &path) const;
    /// Just inside the first and the last character of an element, once the page knows where its
    /// window lies: a motion of the pointer over the page tells it.
    [[nodiscard]] std::optional<QPoint> startOf(const QString &path, const QString &id) const;
    [[nodiscard]] std::optional<QPoint> endOf(const QString &path, const QString &id) const;

private:
    void serve(class QTcpSocket *socket);
    [[nodiscard]] std::optional<QPoint> place(const QString &path, const QString &id,
                                              const QString &end) const;

    QTcpServer server_;
    QHash<QString, QString> bodies_;
    QHash<QString, QJsonObject> reports_;
};

} // namespace vellumo::test
