// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "notes/ExactJson.h"

#include <charconv>
#include <cstdint>
#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>

namespace vellumo {

namespace {

using rapidjson::SizeType;

// Iterative, so that deep nesting cannot exhaust the stack. Numbers are parsed as text, since
// RapidJSON's exact conversion reads beyond a table when hundreds of zeros follow the point.
constexpr unsigned parseFlags = rapidjson::kParseIterativeFlag
    | rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;

/// Forwards the reader's events to a document and converts numbers.
class NumbersConverted {
public:
    explicit NumbersConverted(rapidjson::Document &document) : document_(document) { }

    bool RawNumber(const char *text, SizeType length, bool /*copy*/)
    {
        const char *end = text + length;
        std::int64_t integer = 0;
        if (const auto [last, error] = std::from_chars(text, end, integer);
            error == std::errc() && last == end) {
            return document_.Int64(integer);
        }
        double number = 0;
        const auto [last, error] = std::from_chars(text, end, number);
        return error == std::errc() && last == end && document_.Double(number);
    }

    bool Null() { return document_.Null(); }
    bool Bool(bool value) { return document_.Bool(value); }
    bool Int(int value) { return document_.Int(value); }
    bool Uint(unsigned value) { return document_.Uint(value); }
    bool Int64(std::int64_t value) { return document_.Int64(value); }
    bool Uint64(std::uint64_t value) { return document_.Uint64(value); }
    bool Double(double value) { return document_.Double(value); }
    bool String(const char *text, SizeType length, bool copy)
    {
        return document_.String(text, length, copy);
    }
    bool StartObject() { return document_.StartObject(); }
    bool Key(const char *text, SizeType length, bool copy)
    {
        return document_.Key(text, length, copy);
    }
    bool EndObject(SizeType count) { return document_.EndObject(count); }
    bool StartArray() { return document_.StartArray(); }
    bool EndArray(SizeType count) { return document_.EndArray(count); }

private:
    rapidjson::Document &document_;
};

} // namespace

bool parseExactly(const QByteArray &json, rapidjson::Document &document)
{
    bool isWhole = false;
    auto generate = [&json, &isWhole](rapidjson::Document &target) {
        rapidjson::MemoryStream bytes(json.constData(), static_cast<size_t>(json.size()));
        rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> stream(bytes);
        NumbersConverted handler(target);
        rapidjson::Reader reader;
        isWhole = !reader.Parse<parseFlags>(stream, handler).IsError();
        return isWhole;
    };
    document.Populate(generate);
    return isWhole;
}

} // namespace vellumo
