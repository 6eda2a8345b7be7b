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
    Outside,
    Answer,
    Errors,
    Error,
    Data,
    Inserted,
    Notes,
    Note,
    FollowUps,
    FollowUp,
    Skipped,
};

/// The members that are read, each a bit of what has been seen of an object.
enum Member : unsigned {
    NoMember = 0,
    ErrorsMember = 1 << 0,
    DataMember = 1 << 1,
    Message = 1 << 2,
    NoteInsert = 1 << 3,
    NotesMember = 1 << 4,
    Id = 1 << 5,
    SourceText = 1 << 6,
    Translation = 1 << 7,
    Explanation = 1 << 8,
    CreatedAt = 1 << 9,
    FollowUpsMember = 1 << 10,
    Question = 1 << 11,
    AnswerText = 1 << 12,
};

constexpr unsigned wholeNote = Id | SourceText | Explanation | CreatedAt | FollowUpsMember;
constexpr unsigned wholeFollowUp = Id | Question | AnswerText;

struct MemberName {
    Place place;
    std::string_view name;
    Member member;
};

constexpr std::array memberNames{
    MemberName{Place::Answer, "errors", ErrorsMember},
    MemberName{Place::Answer, "data", DataMember},
    MemberName{Place::Error, "message", Message},
    MemberName{Place::Data, "note_insert", NoteInsert},
    MemberName{Place::Data, "notes", NotesMember},
    MemberName{Place::Inserted, "id", Id},
    MemberName{Place::Note, "id", Id},
    MemberName{Place::Note, "sourceText", SourceText},
    MemberName{Place::Note, "translation", Translation},
    MemberName{Place::Note, "explanation", Explanation},
    MemberName{Place::Note, "createdAt", CreatedAt},
    MemberName{Place::Note, "followUps_on_note", FollowUpsMember},
    MemberName{Place::FollowUp, "id", Id},
    MemberName{Place::FollowUp, "question", Question},
    MemberName{Place::FollowUp, "answer", AnswerText},
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
        const bool mayBe = member_ == ErrorsMember || member_ == DataMember
            || member_ == Translation || member_ == NoteInsert || member_ == NotesMember;
        if (!mayBe) {
            misfit();
        }
        member_ = NoMember;
        return depth_ > 0;
    }

    bool String(const char *text, rapidjson::SizeType length, bool /*copy*/)
    {
        if (member_ == NoMember) {
            misfit();
            return depth_ > 0;
        }
        const auto whole = [&] { return QString::fromUtf8(text, static_cast<qsizetype>(length)); };
        switch (member_) {
        case Message:
            read_.errors.append(whole());
            found();
            break;
        case Id:
            takeId(whole());
            break;
        case SourceText:
            take(note_.sourceText, whole());
            break;
        case Translation:
            take(note_.translation, whole());
            break;
        case Explanation:
            take(note_.explanation, whole());
            break;
        case CreatedAt:
            note_.createdAt = internetDateTime(whole()).value_or(now_);
            found();
            break;
        case Question:
            take(exchange_.question, whole());
            break;
        case AnswerText:
            take(exchange_.answer, whole());
            break;
        default:
            misfit();
        }
        return true;
    }

    bool Key(const char *text, rapidjson::SizeType length, bool /*copy*/)
    {
        member_ = NoMember;
        for (const MemberName &known : memberNames) {
            if (known.place == place() && known.name == std::string_view(text, length)) {
                member_ = (levels_[depth_ - 1].named & known.member) == 0 ? known.member : NoMember;
                levels_[depth_ - 1].named |= known.member;
            }
        }
        return true;
    }

    bool StartObject()
    {
        Place next = Place::Skipped;
        if (depth_ == 0) {
            next = Place::Answer;
        } else if (place() == Place::Errors) {
            next = Place::Error;
        } else if (place() == Place::Notes) {
            next = Place::Note;
            note_ = {};
        } else if (place() == Place::FollowUps) {
            next = Place::FollowUp;
            exchange_ = {};
        } else if (member_ == DataMember) {
            next = Place::Data;
            read_.data = DataConnectAnswer::Data::Object;
        } else if (member_ == NoteInsert) {
            next = Place::Inserted;
        } else {
            misfit();
        }
        return enter(next);
    }

    bool EndObject(rapidjson::SizeType /*count*/)
    {
        const Level ended = levels_[--depth_];
        if (ended.place == Place::Error && (ended.found & Message) == 0) {
            read_.areErrorsSound = false;
        } else if (ended.place == Place::Inserted) {
            read_.hasInsertedId = (ended.found & Id) != 0;
        } else if (ended.place == Place::FollowUp) {
            if ((ended.found & wholeFollowUp) != wholeFollowUp) {
                areNotesSound_ = false;
            } else if (areNotesSound_) {
                exchange_.id = QUuid::createUuid();
                note_.followUps.append(std::move(exchange_));
            }
        } else if (ended.place == Place::Note) {
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
        Place next = Place::Skipped;
        if (depth_ == 0) {
            return false;
        }
        if (member_ == ErrorsMember) {
            next = Place::Errors;
        } else if (member_ == NotesMember) {
            next = Place::Notes;
        } else if (member_ == FollowUpsMember) {
            next = Place::FollowUps;
            found();
        } else {
            misfit();
        }
        return enter(next);
    }

    bool EndArray(rapidjson::SizeType /*count*/)
    {
        if (levels_[--depth_].place == Place::Notes && areNotesSound_) {
            read_.notes = std::move(notes_);
        }
        return true;
    }

private:
    struct Level {
        Place place = Place::Outside;
        unsigned named = 0; ///< members that have come
        unsigned found = 0; ///< members that have come in their form
    };

    [[nodiscard]] Place place() const
    {
        return depth_ == 0 ? Place::Outside : levels_[depth_ - 1].place;
    }

    bool enter(Place place)
    {
        if (depth_ == maxDepth) {
            return false;
        }
        levels_[depth_++] = {place};
        member_ = NoMember;
        return true;
    }

    void found() { levels_[depth_ - 1].found |= std::exchange(member_, NoMember); }

    void take(QString &to, QString &&text)
    {
        to = std::move(text);
        found();
    }

    void takeId(const QString &text)
    {
        if (place() == Place::Note) {
            note_.id = DataConnectWire::uuid(text).value_or(QUuid::createUuid());
        }
        found();
    }

    /// A value has come that does not have the form of what should be here.
    void misfit()
    {
        const Member member = std::exchange(member_, NoMember);
        if (member == ErrorsMember || place() == Place::Errors) {
            read_.areErrorsSound = false;
        } else if (member == DataMember) {
            read_.data = DataConnectAnswer::Data::Other;
        } else if (member == Translation || place() == Place::Notes
                   || place() == Place::FollowUps) {
            areNotesSound_ = false;
        }
    }

    DataConnectAnswer &read_;
    double now_;
    std::array<Level, maxDepth> levels_;
    size_t depth_ = 0;
    Member member_ = NoMember; ///< that the next value belongs to
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
