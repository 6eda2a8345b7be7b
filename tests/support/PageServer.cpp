// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "support/PageServer.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QTcpSocket>

namespace vellumo::test {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView pageScript = uR"js(
let origin = null;
function places() {
    const found = {};
    for (const element of document.querySelectorAll('[id]')) {
        const range = document.createRange();
        range.selectNodeContents(element);
        const boxes = range.getClientRects();
        if (!boxes.length || !origin) continue;
        const first = boxes[0], last = boxes[boxes.length - 1];
        const at = (x, y) => [Math.round(origin[0] + x), Math.round(origin[1] + y)];
        found[element.id] = {start: at(first.left + 1, (first.top + first.bottom) / 2),
                             end: at(last.right - 1, (last.top + last.bottom) / 2)};
    }
    return found;
}
let order = Promise.resolve();
function report() {
    const state = JSON.stringify({places: places(), selection: getSelection().toString(),
                                  hasFocus: document.hasFocus()});
    order = order.then(() => fetch('/report' + location.pathname, {method: 'POST', body: state}));
}
addEventListener('mousemove', event => {
    const now = [event.screenX - event.clientX, event.screenY - event.clientY];
    if (origin && origin[0] === now[0] && origin[1] === now[1]) return;
    origin = now;
    report();
});
for (const name of ['load', 'focus', 'blur', 'resize']) addEventListener(name, report);
document.addEventListener('selectionchange', report);
)js";

} // namespace

PageServer::PageServer()
{
    if (!server_.listen(QHostAddress::LocalHost))
        qFatal("no free port on the loopback interface");
    connect(&server_, &QTcpServer::newConnection, this, [this] {
        while (QTcpSocket *socket = server_.nextPendingConnection()) {
            connect(socket, &QTcpSocket::readyRead, this, [this, socket] { serve(socket); });
            connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        }
    });
}

QString PageServer::address(const QString &path) const
{
    return u"http://127.0.0.1:%1/%2"_s.arg(server_.serverPort()).arg(path);
}

void PageServer::setBody(const QString &path, const QString &html)
{
    bodies_.insert(path, html);
}

QJsonObject PageServer::report(const QString &path) const
{
    return reports_.value(path);
}

QString PageServer::selection(const QString &path) const
{
    return report(path).value("selection"_L1).toString();
}

bool PageServer::hasFocus(const QString &path) const
{
    return report(path).value("hasFocus"_L1).toBool();
}

std::optional<QPoint> PageServer::startOf(const QString &path, const QString &id) const
{
    return place(path, id, u"start"_s);
}

std::optional<QPoint> PageServer::endOf(const QString &path, const QString &id) const
{
    return place(path, id, u"end"_s);
}

std::optional<QPoint> PageServer::place(const QString &path, const QString &id,
                                        const QString &end) const
{
    const QJsonArray point =
        report(path).value("places"_L1).toObject().value(id).toObject().value(end).toArray();
    if (point.size() != 2)
        return std::nullopt;
    return QPoint(point.at(0).toInt(), point.at(1).toInt());
}

void PageServer::serve(QTcpSocket *socket)
{
    // a request counts once it is there whole
    const QByteArray request = socket->peek(1 << 20);
    const qsizetype headEnd = request.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return;
    qsizetype length = 0;
    const QByteArrayList lines = request.left(headEnd).split('\n');
    for (const QByteArray &line : lines) {
        if (line.toLower().startsWith("content-length:"))
            length = line.mid(15).trimmed().toLongLong();
    }
    if (request.size() < headEnd + 4 + length)
        return;
    socket->skip(headEnd + 4 + length);

    const QByteArrayList start = lines.first().split(' ');
    QString path = QString::fromUtf8(start.value(1).mid(1));
    path.truncate(path.indexOf(u'?') < 0 ? path.size() : path.indexOf(u'?'));
    QByteArray status("404 Not Found");
    QByteArray body;
    if (start.first() == "POST" && path.startsWith("report/"_L1)) {
        const auto state = QJsonDocument::fromJson(request.mid(headEnd + 4, length)).object();
        reports_.insert(path.mid(7), state);
        status = "204 No Content";
    } else if (start.first() == "GET" && bodies_.contains(path)) {
        const QString title = path.section(u'/', -1);
        body = u"<!DOCTYPE html><html lang=en><head><meta charset=utf-8><title>%1</title>"
               "<script>%2</script></head><body>%3</body></html>"_s
                   .arg(title, pageScript.toString(), bodies_.value(path))
                   .toUtf8();
        status = "200 OK";
    }
    socket->write("HTTP/1.1 " + status
                  + "\r\nContent-Type: text/html; charset=utf-8\r\nCache-Control: no-store\r\n"
                    "Connection: close\r\nContent-Length: "
                  + QByteArray::number(body.size()) + "\r\n\r\n" + body);
    socket->disconnectFromHost();
}

} // namespace vellumo::test
