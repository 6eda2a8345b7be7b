// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "sync/DataConnectHistory.h"

#include "account/Authenticating.h"
#include "platform/Clock.h"
#include "platform/Diagnostics.h"
#include "settings/ConfigurationKeys.h"
#include "sync/LogExcerpt.h"

#include <memory>
#include <thread>
#include <utility>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo {

namespace {

const QString mutation = u"executeMutation"_s;
const QString query = u"executeQuery"_s;

constexpr auto timeout = 60s;
constexpr auto defaultTotalTimeout = 120s;
constexpr auto listTotalTimeout = 600s; // ten thousand notes over a slow line
constexpr qint64 defaultBodyLimit = qint64{1} * 1024 * 1024;
constexpr qint64 listBodyLimit = qint64{32} * 1024 * 1024;
constexpr qint64 maxReadAtOnce = qint64{256} * 1024; // some milliseconds of the main thread

QString sentId(const QUuid &id)
{
    return id.toString(QUuid::WithoutBraces);
}

/// What it means for an operation that there is no token.
SyncError::Kind kindOf(const AuthError &error)
{
    using Kind = SyncError::Kind;
    switch (error.kind) {
    case AuthError::Kind::Network:
        // too large is the answer of the token service, not a note
        return error.network == HttpError::Kind::TooLarge ? Kind::Unreadable
                                                          : DataConnectWire::kindOf(error.network);
    case AuthError::Kind::notConfigured:
        return Kind::NotConfigured;
    case AuthError::Kind::Unreadable:
        return Kind::Unreadable;
    case AuthError::Kind::server:
        return error.endsSession() ? Kind::SignedOut : Kind::Refused;
    case AuthError::Kind::NoBrowser:
    case AuthError::Kind::Superseded:
    case AuthError::Kind::Unfinished:
    case AuthError::Kind::OtherAccount:
    case AuthError::Kind::Cancelled:
        return Kind::SignedOut;
    }
    Q_UNREACHABLE();
}

/// Runs the action from the event loop, unless the context is destroyed by then.
void post(QObject *context, const std::function<void()> &action)
{
    QMetaObject::invokeMethod(context, action, Qt::QueuedConnection);
}

} // namespace

/// Decodes a long listing on a worker thread. Owned by the context that waits for it.
class DataConnectHistory::ListReading : public QObject {
public:
    using Notes = Result<QList<ReadingNote>, DataConnectError>;

    ListReading(const Answer &answer, double now, QObject *context,
                std::function<void(const Notes &)> completion)
        : QObject(context)
        , completion_(std::move(completion))
        , worker_([this, answer, now] {
            QMetaObject::invokeMethod(
                this,
                [this, listed = DataConnectWire::listedNotes(answer, now)] {
                    deleteLater();
                    const auto end = std::exchange(completion_, {});
                    end(listed); // which may end the context
                },
                Qt::QueuedConnection);
        })
    {
    }
    ~ListReading() override { worker_.join(); }
    Q_DISABLE_COPY_MOVE(ListReading)

private:
    std::function<void(const Notes &)> completion_;
    std::thread worker_; ///< the last member: it uses the others
};

DataConnectHistory::Reader
DataConnectHistory::atOnce(std::optional<DataConnectError> (*read)(const Answer &))
{
    return [read](const Answer &answer, QObject * /*context*/, const Verdict &verdict) {
        verdict(read(answer));
    };
}

struct DataConnectHistory::Operation {
    QString kind;
    QString name;
    DataConnectVariables variables = {};
    std::chrono::milliseconds totalTimeout = defaultTotalTimeout;
    qint64 bodyLimit = defaultBodyLimit;
};

DataConnectHistory::DataConnectHistory(Collaborators collaborators)
    : with_(std::move(collaborators))
{
}

bool DataConnectHistory::isConfigured() const
{
    return with_.configuration(configuration::dataConnectUrl)
        && with_.configuration(configuration::firebaseKey);
}

QUrl DataConnectHistory::url(const QString &kind) const
{
    const QString base = with_.configuration(configuration::dataConnectUrl).value_or(QString());
    const QString key = with_.configuration(configuration::firebaseKey).value_or(QString());
    return QUrl(base + u':' + kind + u"?key="_s + key, QUrl::StrictMode);
}

void DataConnectHistory::execute(const Operation &operation, QObject *context, const Reader &read,
                                 const Completion &completion) const
{
    const QUrl address = url(operation.kind);
    using Kind = SyncError::Kind;
    if (!address.isValid() || address.host().isEmpty()) {
        const Failure failure{Kind::AddressNotAllowed, false, u"bad URL"_s};
        post(context, [completion, failure] { completion(failure); });
        return;
    }
    HttpRequest request;
    request.method = "POST";
    request.url = address;
    request.body = DataConnectWire::requestBody(operation.name, operation.variables);
    request.timeout = timeout;
    request.totalTimeout = operation.totalTimeout;
    request.bodyLimit = operation.bodyLimit;

    QStringList sent{address.query()};
    for (const auto &[name, value] : operation.variables) {
        sent.append(value.value_or(QString()));
    }
    const auto authorize = [request, context, read, completion, sent, uid = with_.auth.uid(),
                            &auth = with_.auth, &session = with_.session](const auto &token) {
        if (!uid.isEmpty() && auth.uid() != uid) {
            const QString why = u"another account has signed in meanwhile"_s;
            completion(Failure{Kind::SignedOut, false, why});
        } else if (!token.isOk()) {
            const QString why = summary(token.error());
            completion(Failure{kindOf(token.error()), false, logExcerpt(why, sent)});
        } else if (!token.value()) {
            const QString why = u"user authentication required"_s;
            completion(Failure{Kind::SignedOut, false, why});
        } else {
            HttpRequest authorized = request;
            authorized.headers = {{"Content-Type", "application/json"},
                                  {"X-Firebase-Auth-Token", token.value()->toUtf8()}};
            session.send(authorized, context,
                         [context, read, completion,
                          secrets = sent + QStringList{*token.value()}](const Answer &answer) {
                             read(answer, context, [completion, secrets](const auto &error) {
                                 finish(error, secrets, completion);
                             });
                         });
        }
    };
    with_.auth.idToken(context, authorize);
}

void DataConnectHistory::finish(const std::optional<DataConnectError> &error,
                                const QStringList &sent, const Completion &completion)
{
    if (!error) {
        completion(std::nullopt);
        return;
    }
    const QString excerpt = logExcerpt(error->description, sent);
    // an empty body is a description too, but says nothing in a log
    completion(Failure{error->kind, error->isDuplicate,
                       excerpt.isEmpty() ? u"HTTP %1"_s.arg(error->code) : excerpt});
}

void DataConnectHistory::saveProfile(const std::optional<QString> &hearAbout,
                                     const std::optional<QString> &role,
                                     const std::optional<QString> &industry, QObject *context,
                                     const Done &completion) const
{
    if (!isConfigured()) {
        post(context, [completion] { completion(SyncError::Kind::NotConfigured); });
        return;
    }
    const Operation operation{
        mutation,
        u"UpsertProfile"_s,
        {{u"hearAbout"_s, hearAbout}, {u"role"_s, role}, {u"industry"_s, industry}}};
    execute(operation, context, atOnce(DataConnectWire::done), [completion](const auto &failure) {
        if (failure) {
            printDiagnostic(u"profile save failed — "_s + failure->excerpt);
        }
        completion(failure ? failure->kind : SyncError::Kind::None);
    });
}

void DataConnectHistory::createNote(const ReadingNote &note, QObject *context,
                                    const Done &completion) const
{
    if (!isConfigured()) {
        post(context, [completion] { completion(SyncError::Kind::NotConfigured); });
        return;
    }
    const Operation operation{mutation,
                              u"CreateNote"_s,
                              {{u"id"_s, sentId(note.id)},
                               {u"sourceText"_s, note.sourceText},
                               {u"translation"_s, note.translation},
                               {u"explanation"_s, note.explanation}}};
    const auto end = [completion](const auto &failure) {
        const bool isThere = !failure || failure->isDuplicate;
        if (!isThere) {
            printDiagnostic(u"history create failed — "_s + failure->excerpt);
        } else if (failure) {
            printDiagnostic(u"history create refused, taken as done — "_s + failure->excerpt);
        }
        completion(isThere ? SyncError::Kind::None : failure->kind);
    };
    execute(operation, context, atOnce(DataConnectWire::noteInserted), end);
}

/// One upload of several follow-ups. Goes with the context that waits for it.
class DataConnectHistory::FollowUpUpload : public QObject {
public:
    FollowUpUpload(const DataConnectHistory &history, const QUuid &noteId,
                   QList<FollowUpExchange> exchanges, QObject *context, Done completion)
        : QObject(context)
        , history_(history)
        , noteId_(noteId)
        , exchanges_(std::move(exchanges))
        , completion_(std::move(completion))
    {
    }

    void sendNext()
    {
        if (next_ == exchanges_.size()) {
            finish(SyncError::Kind::None);
            return;
        }
        history_.addFollowUp(noteId_, exchanges_.at(next_), this, [this](const auto &failure) {
            if (failure) {
                printDiagnostic(u"follow-up upload failed — "_s + failure->excerpt);
                finish(failure->kind);
                return;
            }
            ++next_;
            sendNext();
        });
    }

private:
    void finish(SyncError::Kind error)
    {
        deleteLater();
        const Done completion = std::exchange(completion_, {}); // which may end the context
        completion(error);
    }

    const DataConnectHistory &history_;
    QUuid noteId_;
    QList<FollowUpExchange> exchanges_;
    qsizetype next_ = 0;
    Done completion_;
};

void DataConnectHistory::addFollowUps(const QUuid &noteId, const QList<FollowUpExchange> &exchanges,
                                      QObject *context, const Done &completion) const
{
    if (exchanges.isEmpty() || !isConfigured()) {
        const auto error =
            exchanges.isEmpty() ? SyncError::Kind::None : SyncError::Kind::NotConfigured;
        post(context, [completion, error] { completion(error); });
        return;
    }
    (new FollowUpUpload(*this, noteId, exchanges, context, completion))->sendNext();
}

void DataConnectHistory::addFollowUp(const QUuid &noteId, const FollowUpExchange &exchange,
                                     QObject *context, const Completion &completion) const
{
    const Operation operation{mutation,
                              u"AddFollowUp"_s,
                              {{u"noteId"_s, sentId(noteId)},
                               {u"question"_s, exchange.question},
                               {u"answer"_s, exchange.answer}}};
    execute(operation, context, atOnce(DataConnectWire::done), completion);
}

void DataConnectHistory::list(QObject *context, const Listed &completion) const
{
    if (!isConfigured()) {
        post(context, [completion] { completion(SyncError::Kind::NotConfigured); });
        return;
    }
    const auto notes = std::make_shared<QList<ReadingNote>>();
    const auto read = [notes, &clock = with_.clock](const Answer &answer, QObject *waiting,
                                                    const Verdict &verdict) {
        const auto take = [notes, verdict](const ListReading::Notes &listed) {
            if (listed.isOk()) {
                *notes = listed.value();
            }
            verdict(listed.isOk() ? std::nullopt : std::optional(listed.error()));
        };
        const double now = clock.secondsSinceReferenceDate();
        if (answer.isOk() && answer.value().body.size() > maxReadAtOnce) {
            new ListReading(answer, now, waiting, take);
        } else {
            take(DataConnectWire::listedNotes(answer, now));
        }
    };
    const Operation operation{query, u"ListNotes"_s, {}, listTotalTimeout, listBodyLimit};
    execute(operation, context, read, [completion, notes](const auto &failure) {
        if (failure) {
            printDiagnostic(u"history list failed — "_s + failure->excerpt);
            completion(failure->kind);
        } else {
            completion(*notes);
        }
    });
}

std::optional<QUuid> DataConnectHistory::uuid(const QString &from)
{
    return DataConnectWire::uuid(from);
}

} // namespace vellumo
