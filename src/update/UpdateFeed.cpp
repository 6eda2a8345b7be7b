// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "update/UpdateFeed.h"

#include "update/Ed25519PublicKey.h"
#include "update/SignatureCheck.h"

#include <algorithm>
#include <rapidjson/document.h>
#include <set>
#include <string_view>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

constexpr QByteArrayView heading("vellumo-signed-feed ");
constexpr qsizetype base64SignatureSize = (Ed25519PublicKey::signatureSize + 2) / 3 * 4;

constexpr int knownFormat = 1;
constexpr std::string_view product("app.vellumo.Vellumo");
constexpr qsizetype maxNotesLength = 16384;
constexpr qsizetype maxAddressLength = 2048;

// Iterative, so that nesting cannot exhaust the stack.
constexpr unsigned parseFlags =
    rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;

using Value = rapidjson::Value;

std::string_view view(const Value &text)
{
    return {text.GetString(), text.GetStringLength()};
}

/// Rejects duplicate members, which different parsers may read differently.
bool hasDoubles(const Value &object)
{
    std::set<std::string_view> names;
    return std::ranges::any_of(object.GetObject(), [&names](const auto &member) {
        return !names.insert(view(member.name)).second;
    });
}

const Value *member(const Value &object, const char *name)
{
    const auto found = object.FindMember(name);
    return found == object.MemberEnd() ? nullptr : &found->value;
}

std::optional<QString> textMember(const Value &object, const char *name, qsizetype maxLength)
{
    const Value *value = member(object, name);
    if (value == nullptr || !value->IsString()) {
        return std::nullopt;
    }
    const QString result = QString::fromUtf8(view(*value));
    if (result.size() > maxLength) {
        return std::nullopt;
    }
    return result;
}

std::optional<QDate> dateMember(const Value &object, const char *name)
{
    constexpr auto form = "yyyy-MM-dd"_L1;
    const auto written = textMember(object, name, form.size());
    const QDate result = written ? QDate::fromString(*written, form) : QDate();
    // reject other spellings, such as with blanks
    if (!result.isValid() || result.toString(form) != *written) {
        return std::nullopt;
    }
    return result;
}

std::optional<DebianVersion> versionMember(const Value &object)
{
    const auto written = textMember(object, "version", maxAddressLength);
    return written ? DebianVersion::fromString(*written) : std::nullopt;
}

std::optional<QUrl> pageMember(const Value &object)
{
    const auto written = textMember(object, "page", maxAddressLength);
    if (!written) {
        return std::nullopt;
    }
    const QUrl url(*written, QUrl::StrictMode);
    if (!url.isValid() || url.scheme() != "https"_L1 || url.host().isEmpty()
        || !url.userInfo().isEmpty()) {
        return std::nullopt;
    }
    return url;
}

/// Returns the signed bytes after verifying the signature.
Result<QByteArrayView, FeedFault> signedBytes(QByteArrayView document, const Ed25519PublicKey &key,
                                              const SignatureCheck &check)
{
    const qsizetype bodyStart = heading.size() + base64SignatureSize + 1;
    if (document.size() > UpdateFeed::maxSize || document.size() <= bodyStart
        || !document.startsWith(heading) || document[bodyStart - 1] != '\n') {
        return FeedFault::Unsigned;
    }
    const auto signature = strictBase64(document.sliced(heading.size(), base64SignatureSize),
                                        Ed25519PublicKey::signatureSize);
    const QByteArrayView body = document.sliced(bodyStart);
    if (!signature) {
        return FeedFault::Unsigned;
    }
    switch (check.verify(key, body, *signature)) {
    case SignatureCheck::Verdict::Good:
        return body;
    case SignatureCheck::Verdict::Bad:
        return FeedFault::Unsigned;
    case SignatureCheck::Verdict::Impossible:
        return FeedFault::Unverifiable;
    }
    Q_UNREACHABLE();
}

} // namespace

Result<UpdateFeed, FeedFault> UpdateFeed::fromSigned(QByteArrayView document,
                                                     const Ed25519PublicKey &key,
                                                     const SignatureCheck &check, QDate today)
{
    const auto body = signedBytes(document, key, check);
    if (!body.isOk()) {
        return body.error();
    }
    rapidjson::Document feed;
    feed.Parse<parseFlags>(body.value().data(), static_cast<size_t>(body.value().size()));
    if (feed.HasParseError() || !feed.IsObject() || hasDoubles(feed)) {
        return FeedFault::Malformed;
    }
    const Value *name = member(feed, "product");
    if (name == nullptr || !name->IsString() || view(*name) != product) {
        return FeedFault::Foreign;
    }
    const Value *format = member(feed, "format");
    const Value *notes = member(feed, "notes");
    if (format == nullptr || !format->IsInt() || format->GetInt() != knownFormat || notes == nullptr
        || !notes->IsObject() || hasDoubles(*notes)) {
        return FeedFault::Malformed;
    }
    const auto newest = versionMember(feed);
    const auto released = dateMember(feed, "date");
    const auto expires = dateMember(feed, "expires");
    const auto english = textMember(*notes, "en", maxNotesLength);
    const auto chinese = textMember(*notes, "zh", maxNotesLength);
    const auto address = pageMember(feed);
    if (!newest || !released || !expires || !english || !chinese || !address) {
        return FeedFault::Malformed;
    }
    if (*expires < today) {
        return FeedFault::Expired;
    }
    return UpdateFeed{*newest, *released, *english, *chinese, *address};
}

} // namespace vellumo
