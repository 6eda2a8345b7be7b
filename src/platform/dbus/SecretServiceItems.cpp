// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/SecretServiceItems.h"

#include "platform/dbus/ApplicationName.h"
#include "platform/dbus/SecretServiceWire.h"
#include "platform/dbus/SessionBus.h"

#include <QDBusArgument>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

using namespace secretservice;

namespace {

// A keyring that has just been started by the call may have to read its files first.
constexpr int timeoutMs = 25'000;

} // namespace

SecretServiceItems::SecretServiceItems(SessionBus &bus, QObject *parent)
    : SecretItems(parent)
    , bus_(bus)
{
    registerTypes();
    connect(&bus_, &SessionBus::opened, this, &SecretServiceItems::next);
}

void SecretServiceItems::get(const QString &account, QObject *context, Completion completion)
{
    begin({.account = account, .context = context, .completion = std::move(completion)});
}

void SecretServiceItems::set(const QString &account, const QByteArray &value)
{
    owed_.remove(account);
    begin({.kind = Operation::Kind::write, .account = account, .value = value});
}

void SecretServiceItems::remove(const QString &account)
{
    owed_.remove(account);
    begin({.kind = Operation::Kind::remove, .account = account});
}

void SecretServiceItems::unlock()
{
    begin({.kind = Operation::Kind::unlock});
}

void SecretServiceItems::begin(Operation operation)
{
    operations_.append(std::move(operation));
    QMetaObject::invokeMethod(this, &SecretServiceItems::next, Qt::QueuedConnection);
}

void SecretServiceItems::next()
{
    if (isRunning_ || operations_.isEmpty() || !bus_.hasOpened()) {
        return;
    }
    isRunning_ = true;
    if (!bus_.connection()) {
        finish();
        return;
    }
    watchService();
    if (session_.isEmpty()) {
        openSession();
        return;
    }
    switch (operations_.constFirst().kind) {
    case Operation::Kind::read:
        read();
        break;
    case Operation::Kind::write:
        write();
        break;
    case Operation::Kind::remove:
        removeAll();
        break;
    case Operation::Kind::unlock:
        askToUnlock();
        break;
    }
}

void SecretServiceItems::finish(const SecretAnswer &answer)
{
    const Operation done = operations_.takeFirst();
    isRunning_ = false;
    QMetaObject::invokeMethod(this, &SecretServiceItems::next, Qt::QueuedConnection);
    const bool isDone =
        answer.kind == SecretAnswer::Kind::found || answer.kind == SecretAnswer::Kind::missing;
    isWaiting_ = isWaiting_ || !isDone;
    const auto changesIt = [&done](const Operation &later) {
        return later.account == done.account && later.kind != Operation::Kind::read;
    };
    const bool isOwed = !isDone && changesIt(done) && !done.account.isEmpty()
        && std::none_of(operations_.cbegin(), operations_.cend(), changesIt);
    if (isOwed) {
        owed_.insert(done.account,
                     done.kind == Operation::Kind::write ? std::optional(done.value)
                                                         : std::nullopt);
    }
    if (done.completion && done.context) {
        done.completion(answer);
    }
}

void SecretServiceItems::openSession()
{
    const Arguments plain{u"plain"_s, QVariant::fromValue(QDBusVariant(QString()))};
    call(servicePath, serviceInterface, "OpenSession", plain, "vo", [this](const auto *answer) {
        session_ = answer ? pathIn(answer->at(1)) : QString();
        if (session_.isEmpty()) {
            finish();
        } else {
            isRunning_ = false;
            next();
        }
    });
}

void SecretServiceItems::read()
{
    search([this](const QStringList &open, const QStringList &locked) {
        if (!open.isEmpty()) {
            const Arguments session{QVariant::fromValue(QDBusObjectPath(session_))};
            call(open.constFirst(), itemInterface, "GetSecret", session, "(oayays)",
                 [this](const auto *answer) {
                     using Kind = SecretAnswer::Kind;
                     finish(answer ? SecretAnswer{Kind::found,
                                                  qdbus_cast<BusSecret>(answer->at(0)).value}
                                   : SecretAnswer());
                 });
        } else if (!locked.isEmpty()) {
            watchCollection(locked.constFirst().section(u'/', 0, -2));
            finish({SecretAnswer::Kind::locked});
        } else {
            // A closed keyring may hide what it has.
            askWhetherLocked([this](std::optional<bool> isLocked) {
                finish(!isLocked       ? SecretAnswer()
                           : *isLocked ? SecretAnswer{SecretAnswer::Kind::locked}
                                       : SecretAnswer{SecretAnswer::Kind::missing});
            });
        }
    });
}

void SecretServiceItems::write()
{
    askWhetherLocked([this](std::optional<bool> isLocked) {
        if (!isLocked.value_or(true)) {
            createItem();
        } else {
            finish({SecretAnswer::Kind::locked});
        }
    });
}

void SecretServiceItems::createItem()
{
    const Operation &operation = operations_.constFirst();
    dismissQuestions(operation.account);
    const QVariantMap properties{
        {u"org.freedesktop.Secret.Item.Label"_s, u"vellumo: "_s + operation.account},
        {u"org.freedesktop.Secret.Item.Attributes"_s, attributes()}};
    const BusSecret secret{QDBusObjectPath(session_), {}, operation.value, u"text/plain"_s};
    const bool replaces = true;
    call(collection_, collectionInterface, "CreateItem",
         {properties, QVariant::fromValue(secret), replaces}, "oo",
         [this, account = operation.account](const auto *answer) {
             const bool isStored = answer && !pathIn(answer->at(0)).isEmpty();
             const QString question = answer && !isStored ? pathIn(answer->at(1)) : QString();
             if (!question.isEmpty()) {
                 questions_.append({account, question});
                 finish({SecretAnswer::Kind::missing}); // it is up to the user now
             } else {
                 finish({isStored ? SecretAnswer::Kind::found : SecretAnswer::Kind::locked});
             }
         });
}

void SecretServiceItems::removeAll()
{
    dismissQuestions(operations_.constFirst().account);
    search([this](const QStringList &open, const QStringList &locked) {
        for (const QString &item : open) {
            call(item, itemInterface, "Delete", {}, "o",
                 [this, account = operations_.constFirst().account](const auto *answer) {
                     if (const QString path = answer ? pathIn(answer->at(0)) : QString();
                         !path.isEmpty()) {
                         questions_.append({account, path});
                     }
                 });
        }
        askWhetherLocked([this, isHidden = !locked.isEmpty()](std::optional<bool> isLocked) {
            const bool isLeft = isHidden || isLocked.value_or(true);
            finish({isLeft ? SecretAnswer::Kind::locked : SecretAnswer::Kind::missing});
        });
    });
}

void SecretServiceItems::askToUnlock()
{
    askQuestions();
    askWhetherLocked([this](std::optional<bool> isLocked) {
        const bool isWriteOwed =
            std::any_of(owed_.cbegin(), owed_.cend(), [](const auto &value) { return value; });
        const auto ask = [this](const Arguments *answer) {
            prompt(answer ? pathIn(answer->at(1)) : QString());
        };
        // What comes of it arrives as a signal, whenever the user has answered.
        if (!isLocked && isWriteOwed) {
            const QVariantMap label{{u"org.freedesktop.Secret.Collection.Label"_s, u"Default"_s}};
            call(servicePath, serviceInterface, "CreateCollection", {label, u"default"_s}, "oo",
                 ask);
        } else if (isLocked.value_or(false) && isWaiting_) {
            const Paths collections{QDBusObjectPath(collection_)};
            call(servicePath, serviceInterface, "Unlock", {QVariant::fromValue(collections)}, "aoo",
                 ask);
        }
        finish({SecretAnswer::Kind::missing});
    });
}

void SecretServiceItems::prompt(const QString &path)
{
    if (!path.isEmpty()) {
        call(path, promptInterface, "Prompt", {QString()}, "", [](const auto *) {});
    }
}

void SecretServiceItems::askQuestions()
{
    const auto questions = std::exchange(questions_, {});
    for (const Question &question : questions) {
        bus_.connection()->connect(QString(), question.path, QString::fromLatin1(promptInterface),
                                   u"Completed"_s, this, SLOT(onAnswered(QDBusMessage)));
        prompt(question.path);
    }
}

void SecretServiceItems::dismissQuestions(const QString &account)
{
    questions_.removeIf([&](const Question &question) {
        const bool isOutdated = question.account == account;
        if (isOutdated) {
            call(question.path, promptInterface, "Dismiss", {}, "", [](const auto *) {});
        }
        return isOutdated;
    });
}

void SecretServiceItems::onAnswered(const QDBusMessage &message)
{
    bus_.connection()->disconnect(QString(), message.path(), QString::fromLatin1(promptInterface),
                                  u"Completed"_s, this, SLOT(onAnswered(QDBusMessage)));
    const bool isDismissed = message.signature() != "bv"_L1 || message.arguments().at(0).toBool();
    if (!isDismissed) {
        Q_EMIT becameReadable();
    }
}

void SecretServiceItems::search(
    const std::function<void(const QStringList &, const QStringList &)> &then)
{
    const Attributes wanted{{u"service"_s, ApplicationName::id},
                            {u"account"_s, operations_.constFirst().account}};
    call(servicePath, serviceInterface, "SearchItems", {QVariant::fromValue(wanted)}, "aoao",
         [this, then](const auto *answer) {
             if (answer) {
                 then(pathsIn(answer->at(0)), pathsIn(answer->at(1)));
             } else {
                 finish();
             }
         });
}

void SecretServiceItems::askWhetherLocked(const std::function<void(std::optional<bool>)> &then)
{
    const auto ask = [this, then](const Arguments *alias) {
        collection_ = alias ? pathIn(alias->at(0)) : QString();
        if (collection_.isEmpty()) {
            then(std::nullopt);
            return;
        }
        call(collection_, propertiesInterface, "Get",
             {QString::fromLatin1(collectionInterface), u"Locked"_s}, "v",
             [this, then](const auto *answer) {
                 if (!answer) {
                     then(std::nullopt);
                     return;
                 }
                 const bool isLocked =
                     answer->at(0).template value<QDBusVariant>().variant().toBool();
                 if (isLocked) {
                     watchCollection(collection_);
                 }
                 then(isLocked);
             });
    };
    call(servicePath, serviceInterface, "ReadAlias", {u"default"_s}, "o", ask);
}

void SecretServiceItems::watchService()
{
    if (std::exchange(isWatching_, true)) {
        return;
    }
    QDBusConnection bus = *bus_.connection();
    // An empty service: naming one would make QtDBus look its owner up in a blocking call.
    for (const QString &signal : {u"CollectionCreated"_s, u"CollectionChanged"_s}) {
        bus.connect(QString(), servicePath, QString::fromLatin1(serviceInterface), signal, this,
                    SLOT(onCollectionsChanged()));
    }
    auto *owners =
        new QDBusServiceWatcher(serviceName, bus, QDBusServiceWatcher::WatchForOwnerChange, this);
    connect(
        owners, &QDBusServiceWatcher::serviceOwnerChanged, this,
        [this](const QString &, const QString &, const QString &owner) { onOwnerChanged(owner); });
}

void SecretServiceItems::watchCollection(const QString &path)
{
    if (path == watchedCollection_) {
        return;
    }
    QDBusConnection bus = *bus_.connection();
    const auto properties = QString::fromLatin1(propertiesInterface);
    const QString signal = u"PropertiesChanged"_s;
    if (!watchedCollection_.isEmpty()) {
        bus.disconnect(QString(), watchedCollection_, properties, signal, this,
                       SLOT(onPropertiesChanged(QDBusMessage)));
    }
    watchedCollection_ = path;
    bus.connect(QString(), path, properties, signal, this, SLOT(onPropertiesChanged(QDBusMessage)));
}

void SecretServiceItems::onPropertiesChanged(const QDBusMessage &message)
{
    if (message.signature() != "sa{sv}as"_L1) {
        return;
    }
    const auto values = qdbus_cast<QVariantMap>(message.arguments().at(1));
    if (values.contains(u"Locked"_s) && !values.value(u"Locked"_s).toBool()) {
        onCollectionsChanged();
    }
}

void SecretServiceItems::onOwnerChanged(const QString &newOwner)
{
    session_.clear();
    questions_.clear();
    if (!newOwner.isEmpty()) {
        onCollectionsChanged();
    }
}

void SecretServiceItems::onCollectionsChanged()
{
    if (!std::exchange(isWaiting_, false)) {
        return;
    }
    const auto owed = std::exchange(owed_, {});
    for (auto it = owed.begin(); it != owed.end(); ++it) {
        if (it.value()) {
            set(it.key(), *it.value());
        } else {
            remove(it.key());
        }
    }
    Q_EMIT becameReadable();
}

void SecretServiceItems::call(const QString &path, const char *interface, const char *method,
                              const Arguments &arguments, const char *signature, Reply then)
{
    QDBusMessage message = QDBusMessage::createMethodCall(
        serviceName, path, QString::fromLatin1(interface), QString::fromLatin1(method));
    message.setArguments(arguments);
    auto *watcher =
        new QDBusPendingCallWatcher(bus_.connection()->asyncCall(message, timeoutMs), this);
    connect(watcher, &QDBusPendingCallWatcher::finished, this,
            [signature, then = std::move(then)](QDBusPendingCallWatcher *done) {
                done->deleteLater();
                const QDBusMessage reply = done->reply();
                const bool isAnswer =
                    !done->isError() && reply.signature() == QLatin1StringView(signature);
                const Arguments answer = isAnswer ? reply.arguments() : Arguments();
                then(isAnswer ? &answer : nullptr);
            });
}

QVariant SecretServiceItems::attributes() const
{
    return QVariant::fromValue(Attributes{{u"xdg:schema"_s, ApplicationName::id},
                                          {u"service"_s, ApplicationName::id},
                                          {u"account"_s, operations_.constFirst().account}});
}

} // namespace vellumo
