// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/dbus/SecretServiceItems.h"

#include "platform/Wiping.h"
#include "platform/dbus/ApplicationName.h"
#include "platform/dbus/SessionBus.h"

#include <QDBusArgument>
#include <QDBusVariant>
#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

using namespace secretservice;

SecretServiceItems::SecretServiceItems(SessionBus &bus, const QString &cipherModule,
                                       QObject *parent)
    : SecretItems(parent)
    , bus_(bus)
    , watch_(bus)
    , prompts_(bus)
    , session_(bus, cipherModule)
{
    registerTypes();
    connect(&watch_, &SecretServiceWatch::ownerChanged, this, &SecretServiceItems::onOwnerChanged);
    connect(&watch_, &SecretServiceWatch::collectionsChanged, this,
            &SecretServiceItems::onCollectionsChanged);
    connect(&prompts_, &SecretServicePrompts::agreed, this, &SecretServiceItems::becameReadable);
    connect(&bus_, &SessionBus::opened, this, &SecretServiceItems::next);
}

void SecretServiceItems::get(const QString &account, QObject *context, Completion completion)
{
    begin({.account = account, .context = context, .completion = std::move(completion)});
}

void SecretServiceItems::set(const QString &account, const QByteArray &value)
{
    owed_.remove(account);
    begin({.kind = Operation::Kind::Write, .account = account, .value = value});
}

void SecretServiceItems::remove(const QString &account)
{
    owed_.remove(account);
    begin({.kind = Operation::Kind::Remove, .account = account});
}

void SecretServiceItems::unlock()
{
    begin({.kind = Operation::Kind::Unlock});
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
    watch_.begin();
    switch (operations_.constFirst().kind) {
    case Operation::Kind::Read:
        read();
        break;
    case Operation::Kind::Write:
        write();
        break;
    case Operation::Kind::Remove:
        removeAll();
        break;
    case Operation::Kind::Unlock:
        askToUnlock();
        break;
    }
}

void SecretServiceItems::finish(const SecretAnswer &answer)
{
    Operation done = operations_.takeFirst();
    isRunning_ = false;
    QMetaObject::invokeMethod(this, &SecretServiceItems::next, Qt::QueuedConnection);
    const bool isDone =
        answer.kind == SecretAnswer::Kind::Found || answer.kind == SecretAnswer::Kind::Missing;
    isWaiting_ = isWaiting_ || !isDone;
    const auto changesIt = [&done](const Operation &later) {
        return later.account == done.account && later.kind != Operation::Kind::Read;
    };
    const bool isOwed = !isDone && changesIt(done) && !done.account.isEmpty()
        && std::none_of(operations_.cbegin(), operations_.cend(), changesIt);
    if (isOwed) {
        owed_.insert(done.account,
                     done.kind == Operation::Kind::Write ? std::optional(done.value)
                                                         : std::nullopt);
    }
    wipe(done.value);
    if (done.completion && done.context) {
        done.completion(answer);
    }
}

void SecretServiceItems::read()
{
    search([this](const QStringList &open, const QStringList &locked) {
        if (!open.isEmpty()) {
            choose(open, [this](const QString &item) { readItem(item); });
        } else if (!locked.isEmpty()) {
            watch_.watchCollection(locked.constFirst().section(u'/', 0, -2));
            finish({SecretAnswer::Kind::Locked});
        } else {
            // A closed keyring may hide its items.
            askWhetherLocked([this](std::optional<bool> isLocked) {
                finish(!isLocked       ? SecretAnswer()
                           : *isLocked ? SecretAnswer{SecretAnswer::Kind::Locked}
                                       : SecretAnswer{SecretAnswer::Kind::Missing});
            });
        }
    });
}

void SecretServiceItems::readItem(const QString &item)
{
    session_.open([this, item](bool isOpen) {
        if (!isOpen) {
            finish();
            return;
        }
        const Arguments session{QVariant::fromValue(QDBusObjectPath(session_.path()))};
        call(item, itemInterface, "GetSecret", session, "(oayays)", [this](const auto *answer) {
            const auto value =
                answer ? session_.unseal(qdbus_cast<BusSecret>(answer->at(0))) : std::nullopt;
            finish(value ? SecretAnswer{SecretAnswer::Kind::Found, *value} : SecretAnswer());
        });
    });
}

void SecretServiceItems::choose(const QStringList &items,
                                const std::function<void(const QString &)> &then)
{
    if (items.size() == 1) {
        then(items.constFirst());
        return;
    }
    search(attributes(), [this, items, then](const QStringList &own, const QStringList &) {
        askWhetherLocked([this, items, own, then](std::optional<bool>) {
            const auto rank = [this, &own](const QString &item) {
                const bool isInOurs =
                    !collection_.isEmpty() && item.section(u'/', 0, -2) == collection_;
                return (own.contains(item) ? 2 : 0) + (isInOurs ? 1 : 0);
            };
            then(*std::ranges::max_element(items, {}, rank));
        });
    });
}

void SecretServiceItems::write()
{
    askWhetherLocked([this](std::optional<bool> isLocked) {
        if (isLocked.value_or(true)) {
            finish({SecretAnswer::Kind::Locked});
            return;
        }
        session_.open([this](bool isOpen) {
            if (isOpen) {
                createItem();
            } else {
                finish();
            }
        });
    });
}

void SecretServiceItems::createItem()
{
    const Operation &operation = operations_.constFirst();
    prompts_.dismiss(operation.account);
    const QVariantMap properties{
        {u"org.freedesktop.Secret.Item.Label"_s, u"vellumo: "_s + operation.account},
        {u"org.freedesktop.Secret.Item.Attributes"_s, QVariant::fromValue(attributes())}};
    const auto secret = session_.seal(operation.value);
    if (!secret) {
        finish();
        return;
    }
    const bool replaces = true;
    call(collection_, collectionInterface, "CreateItem",
         {properties, QVariant::fromValue(*secret), replaces}, "oo",
         [this, account = operation.account](const auto *answer) {
             const QString item = answer ? pathIn(answer->at(0)) : QString();
             const QString question = answer && item.isEmpty() ? pathIn(answer->at(1)) : QString();
             if (!item.isEmpty()) {
                 removeOthers(item);
             } else if (!question.isEmpty()) {
                 prompts_.add(account, question);
                 finish({SecretAnswer::Kind::Missing}); // the user decides
             } else {
                 finish({SecretAnswer::Kind::Locked});
             }
         });
}

void SecretServiceItems::removeOthers(const QString &item)
{
    search([this, item](const QStringList &open, const QStringList &) {
        for (const QString &other : open) {
            if (other != item) {
                removeItem(other);
            }
        }
        finish({SecretAnswer::Kind::Found});
    });
}

void SecretServiceItems::removeItem(const QString &item)
{
    call(item, itemInterface, "Delete", {}, "o",
         [this, account = operations_.constFirst().account](const auto *answer) {
             if (const QString path = answer ? pathIn(answer->at(0)) : QString(); !path.isEmpty()) {
                 prompts_.add(account, path);
             }
         });
}

void SecretServiceItems::removeAll()
{
    prompts_.dismiss(operations_.constFirst().account);
    search([this](const QStringList &open, const QStringList &locked) {
        for (const QString &item : open) {
            removeItem(item);
        }
        askWhetherLocked([this, isHidden = !locked.isEmpty()](std::optional<bool> isLocked) {
            const bool isLeft = isHidden || isLocked.value_or(true);
            finish({isLeft ? SecretAnswer::Kind::Locked : SecretAnswer::Kind::Missing});
        });
    });
}

void SecretServiceItems::askToUnlock()
{
    prompts_.askAll();
    askWhetherLocked([this](std::optional<bool> isLocked) {
        const bool isWriteOwed =
            std::any_of(owed_.cbegin(), owed_.cend(), [](const auto &value) { return value; });
        const auto ask = [this](const Arguments *answer) {
            prompts_.ask(answer ? pathIn(answer->at(1)) : QString());
        };
        // The result arrives as a signal when the user has answered.
        if (!isLocked && isWriteOwed) {
            const QVariantMap label{{u"org.freedesktop.Secret.Collection.Label"_s, u"Default"_s}};
            call(servicePath, serviceInterface, "CreateCollection", {label, u"default"_s}, "oo",
                 ask);
        } else if (isLocked.value_or(false) && isWaiting_) {
            const Paths collections{QDBusObjectPath(collection_)};
            call(servicePath, serviceInterface, "Unlock", {QVariant::fromValue(collections)}, "aoo",
                 ask);
        }
        finish({SecretAnswer::Kind::Missing});
    });
}

void SecretServiceItems::search(const Found &then)
{
    search({{u"service"_s, ApplicationName::id}, {u"account"_s, operations_.constFirst().account}},
           then);
}

void SecretServiceItems::search(const Attributes &wanted, const Found &then)
{
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
                     watch_.watchCollection(collection_);
                 }
                 then(isLocked);
             });
    };
    call(servicePath, serviceInterface, "ReadAlias", {u"default"_s}, "o", ask);
}

void SecretServiceItems::onOwnerChanged(bool isThere)
{
    session_.forget();
    prompts_.forget();
    if (isThere) {
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
    secretservice::call(*bus_.connection(), this, path, interface, method, arguments, signature,
                        std::move(then));
}

Attributes SecretServiceItems::attributes() const
{
    return {{u"xdg:schema"_s, ApplicationName::id},
            {u"service"_s, ApplicationName::id},
            {u"account"_s, operations_.constFirst().account}};
}

} // namespace vellumo
