// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "sync/DataConnectAnswer.h"

#include "sync/DataConnectWire.h"
#include "sync/InternetDateTime.h"

#include <array>
#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>
#include <string_view>
#include <utility>

namespace vellumo {

namespace {

constexpr size_t maxDepth = 8;

// Iterative: hostile nesting must not exhaust the stack.
constexpr unsigned parseFlags =
    rapidjson::kParseIterativeFlag | rapidjson::kParseValidateEncodingFlag;

/// The objects and lists that are read; everything else is skipped.
enum class Place : quint8 {
    outside,
    answer,
    errors,
    error,
    data,
    inserted,
    notes,
    note,
    followUps,
    followUp,
    skipped,
};

/// The members that are read, each a bit of what has been seen of an object.
enum Member : unsigned {
    noMember = 0,
    errorsMember = 1 << 0,
    dataMember = 1 << 1,
    message = 1 << 2,
    noteInsert = 1 << 3,
    notesMember = 1 << 4,
    id = 1 << 5,
    sourceText = 1 << 6,
    translation = 1 << 7,
    explanation = 1 << 8,
    createdAt = 1 << 9,
    followUpsMember = 1 << 10,
    question = 1 << 11,
    answerText = 1 << 12,
};

constexpr unsigned wholeNote = id | sourceText | explanation | createdAt | followUpsMember;
constexpr unsigned wholeFollowUp = id | question | answerText;

struct MemberName {
    Place place;
    std::string_view name;
    Member member;
};

constexpr std::array memberNames{
    MemberName{Place::answer, "errors", errorsMember},
    MemberName{Place::answer, "data", dataMember},
    MemberName{Place::error, "message", message},
    MemberName{Place::data, "note_insert", noteInsert},
    MemberName{Place::data, "notes", notesMember},
    MemberName{Place::inserted, "id", id},
    MemberName{Place::note, "id", id},
    MemberName{Place::note, "sourceText", sourceText},
    MemberName{Place::note, "translation", translation},
    MemberName{Place::note, "explanation", explanation},
    MemberName{Place::note, "createdAt", createdAt},
    MemberName{Place::note, "followUps_on_note", followUpsMember},
    MemberName{Place::followUp, "id", id},
    MemberName{Place::followUp, "question", question},
    MemberName{Place::followUp, "answer", answerText},
};

/// Takes the parser's events. Each answers whether to go on.
class Handler : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, Handler> {
public:
    Handler(DataConnectAnswer &read, double now) : read_(read), now_(now) { }

    /// Numbers and truth values: nothing that is read has this form.
    bool Default()
    {
        misfit();
        return depth_ > 0;
    }

    bool Null()
    {
        // as good as absent, where something may be
        const bool mayBe = member_ == errorsMember || member_ == dataMember
            || member_ == translation || member_ == noteInsert || member_ == notesMember;
        if (!mayBe) {
            misfit();
        }
        member_ = noMember;
        return depth_ > 0;
    }

    bool String(const char *text, rapidjson::SizeType length, bool /*copy*/)
    {
        if (member_ == noMember) {
            misfit();
            return depth_ > 0;
        }
        const auto whole = [&] { return QString::fromUtf8(text, static_cast<qsizetype>(length)); };
        switch (member_) {
        case message:
            read_.errors.append(whole());
            found();
            break;
        case id:
            takeId(whole());
            break;
        case sourceText:
            take(note_.sourceText, whole());
            break;
        case translation:
            take(note_.translation, whole());
            break;
        case explanation:
            take(note_.explanation, whole());
            break;
        case createdAt:
            note_.createdAt = internetDateTime(whole()).value_or(now_);
            found();
            break;
        case question:
            take(exchange_.question, whole());
            break;
        case answerText:
            take(exchange_.answer, whole());
            break;
        default:
            misfit();
        }
        return true;
    }

    bool Key(const char *text, rapidjson::SizeType length, bool /*copy*/)
    {
        member_ = noMember;
        for (const MemberName &known : memberNames) {
            if (known.place == place() && known.name == std::string_view(text, length)) {
                member_ = (levels_[depth_ - 1].named & known.member) == 0 ? known.member : noMember;
                levels_[depth_ - 1].named |= known.member;
            }
        }
        return true;
    }

    bool StartObject()
    {
        Place next = Place::skipped;
        if (depth_ == 0) {
            next = Place::answer;
        } else if (place() == Place::errors) {
            next = Place::error;
        } else if (place() == Place::notes) {
            next = Place::note;
            note_ = {};
        } else if (place() == Place::followUps) {
            next = Place::followUp;
            exchange_ = {};
        } else if (member_ == dataMember) {
            next = Place::data;
            read_.data = DataConnectAnswer::Data::object;
        } else if (member_ == noteInsert) {
            next = Place::inserted;
        } else {
            misfit();
        }
        return enter(next);
    }

    bool EndObject(rapidjson::SizeType /*count*/)
    {
        const Level ended = levels_[--depth_];
        if (ended.place == Place::error && (ended.found & message) == 0) {
            read_.areErrorsSound = false;
        } else if (ended.place == Place::inserted) {
            read_.hasInsertedId = (ended.found & id) != 0;
        } else if (ended.place == Place::followUp) {
            if ((ended.found & wholeFollowUp) != wholeFollowUp) {
                areNotesSound_ = false;
            } else if (areNotesSound_) {
                exchange_.id = QUuid::createUuid();
                note_.followUps.append(std::move(exchange_));
            }
        } else if (ended.place == Place::note) {
            if ((ended.found & wholeNote) != wholeNote) {
                areNotesSound_ = false;
            } else if (areNotesSound_) {
                notes_.append(std::move(note_));
            }
        }
        return true;
    }

    bool StartArray()
    {
        Place next = Place::skipped;
        if (depth_ == 0) {
            return false;
        }
        if (member_ == errorsMember) {
            next = Place::errors;
        } else if (member_ == notesMember) {
            next = Place::notes;
        } else if (member_ == followUpsMember) {
            next = Place::followUps;
            found();
        } else {
            misfit();
        }
        return enter(next);
    }

    bool EndArray(rapidjson::SizeType /*count*/)
    {
        if (levels_[--depth_].place == Place::notes && areNotesSound_) {
            read_.notes = std::move(notes_);
        }
        return true;
    }

private:
    struct Level {
        Place place = Place::outside;
        unsigned named = 0; ///< members that have come
        unsigned found = 0; ///< members that have come in their form
    };

    [[nodiscard]] Place place() const
    {
        return depth_ == 0 ? Place::outside : levels_[depth_ - 1].place;
    }

    bool enter(Place place)
    {
        if (depth_ == maxDepth) {
            return false;
        }
        levels_[depth_++] = {place};
        member_ = noMember;
        return true;
    }

    void found() { levels_[depth_ - 1].found |= std::exchange(member_, noMember); }

    void take(QString &to, QString &&text)
    {
        to = std::move(text);
        found();
    }

    void takeId(const QString &text)
    {
        if (place() == Place::note) {
            note_.id = DataConnectWire::uuid(text).value_or(QUuid::createUuid());
        }
        found();
    }

    /// A value has come that does not have the form of what should be here.
    void misfit()
    {
        const Member member = std::exchange(member_, noMember);
        if (member == errorsMember || place() == Place::errors) {
            read_.areErrorsSound = false;
        } else if (member == dataMember) {
            read_.data = DataConnectAnswer::Data::other;
        } else if (member == translation || place() == Place::notes
                   || place() == Place::followUps) {
            areNotesSound_ = false;
        }
    }

    DataConnectAnswer &read_;
    double now_;
    std::array<Level, maxDepth> levels_;
    size_t depth_ = 0;
    Member member_ = noMember; ///< that the next value belongs to
    bool areNotesSound_ = true;
    QList<ReadingNote> notes_;
    ReadingNote note_;
    FollowUpExchange exchange_;
};

} // namespace

std::optional<DataConnectAnswer> DataConnectAnswer::fromJson(const QByteArray &json, double now)
{
    rapidjson::MemoryStream bytes(json.constData(), static_cast<size_t>(json.size()));
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(bytes);
    DataConnectAnswer read;
    Handler handler(read, now);
    rapidjson::Reader reader;
    if (reader.Parse<parseFlags>(stream, handler).IsError()) {
        return std::nullopt;
    }
    return read;
}

} // namespace vellumo
