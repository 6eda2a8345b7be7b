// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "driver/PageServer.h"

#include <QJsonArray>
#include <QJsonDocument>

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
    server_.answerWith([this](const HttpReceived &request) { return answer(request); });
}

std::optional<QPoint> PageServer::place(const QString &path, const QString &id,
                                        const QString &end) const
{
    const QJsonArray point = reports_.value(path)["places"_L1][id][end].toArray();
    if (point.size() != 2)
        return std::nullopt;
    return QPoint(point.at(0).toInt(), point.at(1).toInt());
}

HttpAnswer PageServer::answer(const HttpReceived &request)
{
    const QString path = QString::fromUtf8(request.target).mid(1).section(u'?', 0, 0);
    HttpAnswer answer{.status = "404 Not Found",
                      .headers = {{"Content-Type", "text/html; charset=utf-8"},
                                  {"Cache-Control", "no-store"},
                                  {"Connection", "close"}},
                      .closes = true};
    if (request.method == "POST" && path.startsWith("report/"_L1)) {
        reports_.insert(path.mid(7), QJsonDocument::fromJson(request.body).object());
        answer.status = "204 No Content";
    } else if (request.method == "GET" && bodies_.contains(path)) {
        answer.status = "200 OK";
        answer.body = u"<!DOCTYPE html><html lang=en><head><meta charset=utf-8><title>%1</title>"
                      "<script>%2</script></head><body>%3</body></html>"_s
                          .arg(path.section(u'/', -1), pageScript.toString(), bodies_.value(path))
                          .toUtf8();
    }
    return answer;
}

} // namespace vellumo::test
