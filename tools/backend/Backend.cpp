// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "backend/Backend.h"

#include <QJsonDocument>
#include <QUrlQuery>
#include <QUuid>

namespace vellumo::test {

using namespace Qt::StringLiterals;

namespace {

using Fault = Backend::Fault;

const QString connector = u"/v1/projects/stand-in/locations/here/services/vellumo/connectors/app"_s;

struct Operation {
    QString kind;
    QStringList required; ///< required variables
    QStringList optional = {};
    QStringList ids = {}; ///< variables that are ids
};

const QHash<QString, Operation> &operations()
{
    static const QHash<QString, Operation> known{
        {u"UpsertProfile"_s,
         {u"executeMutation"_s, {}, {u"hearAbout"_s, u"role"_s, u"industry"_s}}},
        {u"CreateNote"_s,
         {u"executeMutation"_s,
          {u"id"_s, u"sourceText"_s, u"translation"_s, u"explanation"_s},
          {},
          {u"id"_s}}},
        {u"AddFollowUp"_s,
         {u"executeMutation"_s, {u"noteId"_s, u"question"_s, u"answer"_s}, {}, {u"noteId"_s}}},
        {u"ListNotes"_s, {u"executeQuery"_s, {}}},
    };
    return known;
}

const QHash<QString, Fault> &faults()
{
    static const QHash<QString, Fault> known{{u"nothing"_s, Fault::None},
                                             {u"offline"_s, Fault::Offline},
                                             {u"slow"_s, Fault::Slow},
                                             {u"500"_s, Fault::ServerError},
                                             {u"errors"_s, Fault::GraphqlErrors},
                                             {u"expired"_s, Fault::TokenExpired},
                                             {u"cut"_s, Fault::CutAfterStoring},
                                             {u"malformed"_s, Fault::Malformed}};
    return known;
}

HttpAnswer json(const QByteArray &status, const QJsonObject &body)
{
    return {.status = status,
            .headers = {{"Content-Type", "application/json; charset=utf-8"}},
            .body = QJsonDocument(body).toJson(QJsonDocument::Compact)};
}

/// Returns an error in the form outside of GraphQL.
HttpAnswer refusal(const QByteArray &status, const QString &message)
{
    const int code = status.left(3).toInt();
    return json(status, {{u"error"_s, QJsonObject{{u"code"_s, code}, {u"message"_s, message}}}});
}

HttpAnswer graphqlErrors(const QStringList &messages)
{
    QJsonArray errors;
    for (const QString &message : messages)
        errors.append(QJsonObject{{u"message"_s, message}});
    return json("200 OK", {{u"data"_s, QJsonValue::Null}, {u"errors"_s, errors}});
}

HttpAnswer page(const QByteArray &body)
{
    return {.headers = {{"Content-Type", "text/html; charset=utf-8"}},
            .body = "<!doctype html><html lang=en><meta charset=utf-8><title>vellumo</title>"
                    "<style>body{font:18px sans-serif;margin:15vh auto;max-width:22em}"
                    "input,button{font:inherit;padding:.4em .8em;margin:.4em 0}</style>"
                + body};
}

HttpAnswer brokenConnection()
{
    return {.stopsAfter = 0, .closes = true};
}

bool isLowerCaseId(const QString &text)
{
    const QUuid id = QUuid::fromString(text);
    return !id.isNull() && id.toString(QUuid::WithoutBraces) == text;
}

/// Returns what is wrong with the variables; empty if nothing is.
std::optional<QString> problem(const Operation &operation, const QJsonObject &variables)
{
    for (const QString &name : operation.required) {
        if (!variables.contains(name))
            return u"variable %1 is missing"_s.arg(name);
    }
    for (auto variable = variables.begin(); variable != variables.end(); ++variable) {
        const QString name = variable.key();
        if (!operation.required.contains(name) && !operation.optional.contains(name))
            return u"a variable that it does not have"_s;
        if (!variable->isString())
            return u"variable %1 is no text"_s.arg(name);
        if (operation.ids.contains(name) && !isLowerCaseId(variable->toString()))
            return u"variable %1 is no id in lower case"_s.arg(name);
    }
    return std::nullopt;
}

} // namespace

Backend::Backend(const QString &database, quint16 port)
    : tables_(database)
    , server_(HttpServer::Security::Plain, port)
{
    server_.answerWith([this](const HttpReceived &request) { return serve(request); });
}

QString Backend::apiKey()
{
    return u"stand-in-key"_s;
}

quint16 Backend::port() const
{
    return static_cast<quint16>(server_.url({}).port());
}

QString Backend::dataConnectUrl() const
{
    return server_.url(connector).toString();
}

QList<std::pair<QString, QString>> Backend::environment() const
{
    const QString base = server_.url({}).toString();
    return {{u"VELLUMO_DATACONNECT_URL"_s, dataConnectUrl()},
            {u"FIREBASE_API_KEY"_s, apiKey()},
            {u"VELLUMO_SECURETOKEN_URL"_s, base},
            {u"VELLUMO_SITE_URL"_s, base}};
}

HttpAnswer Backend::serve(const HttpReceived &request)
{
    // only the path: a query may have a key or an address
    label_ = QString::fromUtf8(request.target.split('?').first());
    const HttpAnswer answer = route(request);
    if (onLine)
        onLine(label_ + u": "_s
               + (answer.stopsAfter ? u"cut"_s : QString::fromLatin1(answer.status)));
    return answer;
}

HttpAnswer Backend::route(const HttpReceived &request)
{
    const QUrl url = QUrl::fromEncoded(request.target);
    const QUrlQuery query(url);
    const QString path = url.path();
    if (request.method == "GET" && path == "/login"_L1)
        return loginPage();
    if (request.method == "GET" && path == "/login/finish"_L1)
        return finishLogin(query);
    if (request.method == "GET" && path == "/favicon.ico"_L1)
        return refusal("404 Not Found", u"no icon"_s);
    if (request.method == "POST" && path == "/control"_L1)
        return control(request.body);
    if (fault_ == Fault::Offline)
        return brokenConnection();
    if (request.method == "POST" && path == "/v1/token"_L1)
        return spoilt(refresh(request, query));
    if (request.method == "POST" && path.startsWith(connector + u':'))
        return spoilt(execute(path.mid(connector.size() + 1), request, query));
    return complain(u"an unknown address"_s);
}

HttpAnswer Backend::loginPage()
{
    return page("<h1>Stand-in account</h1><p>Any address will do; each has notes of its own."
                "<form action=/login/finish><input name=email value=reader@example.org "
                "aria-label=Address><br><button>Sign in</button></form>");
}

HttpAnswer Backend::finishLogin(const QUrlQuery &query)
{
    const QString email = query.queryItemValue(u"email"_s, QUrl::FullyDecoded);
    if (email.isEmpty())
        return refusal("400 Bad Request", u"an address is needed"_s);
    const QString uid = tables_.uidOf(email);
    const QByteArray address =
        "vellumo://signed-in?refreshToken=" + tables_.newRefreshToken(uid).toLatin1()
        + "&uid=" + uid.toLatin1() + "&email=" + QUrl::toPercentEncoding(email);
    HttpAnswer answer = page("<p>Signed in. This page may be closed.");
    answer.status = "302 Found";
    answer.headers.append({"Location", address});
    return answer;
}

HttpAnswer Backend::control(const QByteArray &body)
{
    const QUrlQuery query(QString::fromUtf8(body));
    const QString fault = query.queryItemValue(u"fail"_s);
    const QString lifetime = query.queryItemValue(u"lifetime"_s);
    if ((!fault.isEmpty() && !faults().contains(fault)) || (fault.isEmpty() && lifetime.isEmpty()))
        return refusal("400 Bad Request",
                       u"fail=%1 or lifetime=SECONDS"_s.arg(faults().keys().join(u'|')));
    fault_ = faults().value(fault, fault_);
    if (!lifetime.isEmpty())
        tokenLifetime = std::chrono::seconds(lifetime.toInt());
    return json("200 OK", {});
}

HttpAnswer Backend::refresh(const HttpReceived &request, const QUrlQuery &query)
{
    static const QByteArray start("grant_type=refresh_token&refresh_token=");
    if (query.queryItems() != QList<std::pair<QString, QString>>{{u"key"_s, apiKey()}})
        return complain(u"token: wrong key"_s);
    if (request.header("Content-Type") != QByteArrayList{"application/x-www-form-urlencoded"}
        || !request.body.startsWith(start))
        return complain(u"token: not the agreed form"_s);
    ++counts_[u"token"_s];
    const auto uid = tables_.uidOfRefreshToken(QString::fromUtf8(request.body.mid(start.size())));
    if (!uid)
        return refusal("400 Bad Request", u"INVALID_REFRESH_TOKEN"_s);
    // The old refresh token stays valid: a client may end before it has stored the new one.
    return json("200 OK",
                {{u"id_token"_s, tables_.newIdToken(*uid, tokenLifetime)},
                 {u"refresh_token"_s, tables_.newRefreshToken(*uid)},
                 {u"expires_in"_s, QString::number(tokenLifetime.count())},
                 {u"token_type"_s, u"Bearer"_s},
                 {u"user_id"_s, *uid}});
}

HttpAnswer Backend::execute(const QString &kind, const HttpReceived &request,
                            const QUrlQuery &query)
{
    if (query.queryItems() != QList<std::pair<QString, QString>>{{u"key"_s, apiKey()}})
        return complain(u"operation: wrong key"_s);
    if (request.header("Content-Type") != QByteArrayList{"application/json"})
        return complain(u"operation: Content-Type"_s);
    const QByteArrayList tokens = request.header("X-Firebase-Auth-Token");
    if (tokens.size() != 1)
        return complain(u"operation: no token"_s);
    const auto uid = tables_.uidOfIdToken(QString::fromUtf8(tokens.first()));
    if (!uid || fault_ == Fault::TokenExpired)
        return refusal("401 Unauthorized", u"auth/invalid token"_s);

    const QJsonObject body = QJsonDocument::fromJson(request.body).object();
    const QString name = body.value("operationName"_L1).toString();
    const auto operation = operations().constFind(name);
    if (body.keys() != QStringList{u"operationName"_s, u"variables"_s}
        || !body.value("variables"_L1).isObject() || operation == operations().cend())
        return complain(u"operation: not the agreed form"_s);
    const QJsonObject variables = body.value("variables"_L1).toObject();
    label_ = name;
    if (operation->kind != kind)
        return complain(u"%1: asked as %2"_s.arg(name, kind));
    if (const auto found = problem(*operation, variables))
        return complain(name + u": "_s + *found);
    ++counts_[name];
    return perform(name, *uid, variables);
}

HttpAnswer Backend::perform(const QString &operation, const QString &uid,
                            const QJsonObject &variables)
{
    reached(operation, Step::Received);
    if (fault_ == Fault::GraphqlErrors)
        return graphqlErrors({u"stand-in failure"_s, u"and another"_s});
    if (fault_ == Fault::ServerError)
        return {.status = "500 Internal Server Error", .body = "stand-in failure"};
    std::optional<QString> failure;
    QJsonObject data;
    if (operation == "CreateNote"_L1) {
        failure = tables_.createNote(uid, variables);
        const QString id = variables.value("id"_L1).toString().remove(u'-');
        data.insert(u"note_insert"_s, QJsonObject{{u"id"_s, id}});
    } else if (operation == "AddFollowUp"_L1) {
        failure = tables_.addFollowUp(uid, variables);
        data.insert(u"followUp_insert"_s, QJsonObject());
    } else if (operation == "UpsertProfile"_L1) {
        failure = tables_.upsertProfile(uid, variables);
        data.insert(u"profile_upsert"_s, QJsonObject{{u"uid"_s, uid}});
    } else {
        data.insert(u"notes"_s, tables_.notes(uid));
    }
    reached(operation, Step::Stored);
    return failure ? graphqlErrors({*failure}) : json("200 OK", {{u"data"_s, data}});
}

HttpAnswer Backend::complain(const QString &what)
{
    complaints_.append(what);
    if (onLine)
        onLine(u"refused: "_s + what);
    return refusal("400 Bad Request", what);
}

void Backend::reached(const QString &operation, Step step)
{
    if (onStep)
        onStep(operation, step);
}

HttpAnswer Backend::spoilt(const HttpAnswer &answer) const
{
    HttpAnswer spoilt = answer;
    switch (fault_) {
    case Fault::Slow:
        spoilt.delay = slowness;
        break;
    case Fault::CutAfterStoring:
        return brokenConnection();
    case Fault::Malformed:
        spoilt.body.truncate(spoilt.body.size() / 2);
        break;
    default:
        break;
    }
    return spoilt;
}

} // namespace vellumo::test
