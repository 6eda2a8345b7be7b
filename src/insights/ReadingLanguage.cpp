// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "insights/ReadingLanguage.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <vector>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

using Language = ReadingLanguage;

constexpr qsizetype maxExamined = 160; ///< UTF-16 units
constexpr int sureHan = 8; ///< Japanese of this length almost always contains a kana
constexpr int sureWords = 2;
/// A character of these scripts counts as much as several letters of others.
constexpr int hanWeight = 3;

struct CommonWords {
    Language language;
    QStringView words;
};

/// Words that are common in one of the languages and rare or absent in the others. None is longer
/// than eight letters, and all of those are in Latin-1.
constexpr std::array<CommonWords, 7> commonWords{{
    {Language::English,
     u"the and that with this which from are have has they their its not were been would you when "
     "of to by"},
    {Language::French, u"les des est une dans qui pour pas sur avec ne aux sont et du"},
    {Language::German, u"der und das nicht ist den dem ein eine mit sich auf für von zu"},
    {Language::Spanish, u"los las el por con una y es pero más como del"},
    {Language::Italian, u"il che di della sono gli nel per è anche non"},
    {Language::Portuguese, u"os não uma um em com para são dos ao da"},
    {Language::Dutch, u"het een niet van ook zijn voor naar wordt aan deze"},
}};

constexpr int longestWord = 8;

/// Appends a letter to a word that is packed into an integer.
constexpr quint64 longer(quint64 word, char16_t letter)
{
    return word << 8 | (letter & 0xFF);
}

struct KnownWord {
    quint64 word;
    Language language;
    friend bool operator<(const KnownWord &a, const KnownWord &b) { return a.word < b.word; }
};

std::vector<KnownWord> sortedWords()
{
    std::vector<KnownWord> sorted;
    for (const CommonWords &of : commonWords) {
        for (const QStringView word : of.words.tokenize(u' ')) {
            quint64 number = 0;
            for (const QChar letter : word) {
                number = longer(number, letter.unicode());
            }
            sorted.push_back({number, of.language});
        }
    }
    std::sort(sorted.begin(), sorted.end());
    return sorted;
}

bool isLatin1Letter(char16_t c)
{
    return (c >= u'a' && c <= u'z') || (c >= 0xDF && c <= 0xFF && c != 0xF7);
}

char16_t lowered(char16_t c)
{
    const bool isUpper = (c >= u'A' && c <= u'Z') || (c >= 0xC0 && c <= 0xDE && c != 0xD7);
    return isUpper ? static_cast<char16_t>(c + 0x20) : c;
}

/// Returns the language whose common words occur, for a text in Latin letters.
Language byWords(QStringView text)
{
    static const std::vector<KnownWord> known = sortedWords();
    std::array<int, static_cast<size_t>(Language::Count)> hits{};
    quint64 word = 0;
    int length = 0;
    // a word that is cut by the limit does not count
    for (const QChar each : text) {
        const char16_t c = lowered(each.unicode());
        if (isLatin1Letter(c)) {
            word = longer(word, c);
            ++length;
            continue;
        }
        if (each.isLetter()) {
            length = longestWord + 1; // not a letter of any known word
            continue;
        }
        if (length > 0 && length <= longestWord) {
            const auto found = std::lower_bound(known.begin(), known.end(), KnownWord{word, {}});
            if (found != known.end() && found->word == word) {
                ++hits[static_cast<size_t>(found->language)];
            }
        }
        word = 0;
        length = 0;
    }
    const auto best = std::max_element(hits.begin(), hits.end());
    const int others = std::accumulate(hits.begin(), hits.end(), 0) - *best;
    return *best >= sureWords && *best >= 2 * others
        ? static_cast<Language>(std::distance(hits.begin(), best))
        : Language::LatinLetters;
}

struct Letters {
    int han = 0;
    int kana = 0;
    int hangul = 0;
    std::array<int, static_cast<size_t>(Language::Count)> others{};

    void add(char32_t c)
    {
        if (c < 0x80) {
            const char32_t lower = c | 0x20;
            others[static_cast<size_t>(Language::LatinLetters)] +=
                lower >= U'a' && lower <= U'z' ? 1 : 0;
            return;
        }
        if (!QChar::isLetter(c)) {
            return;
        }
        switch (QChar::script(c)) {
        case QChar::Script_Han:
        case QChar::Script_Bopomofo:
            ++han;
            return;
        case QChar::Script_Hiragana:
        case QChar::Script_Katakana:
            ++kana;
            return;
        case QChar::Script_Hangul:
            ++hangul;
            return;
        case QChar::Script_Latin:
            return count(Language::LatinLetters);
        case QChar::Script_Cyrillic:
            return count(Language::CyrillicLetters);
        case QChar::Script_Arabic:
            return count(Language::ArabicLetters);
        case QChar::Script_Greek:
            return count(Language::Greek);
        case QChar::Script_Hebrew:
            return count(Language::HebrewLetters);
        case QChar::Script_Devanagari:
            return count(Language::DevanagariLetters);
        case QChar::Script_Thai:
            return count(Language::Thai);
        case QChar::Script_Inherited:
        case QChar::Script_Common:
            return;
        default:
            return count(Language::OtherLetters);
        }
    }

private:
    void count(Language language) { ++others[static_cast<size_t>(language)]; }
};

} // namespace

ReadingLanguage readingLanguage(QStringView text)
{
    text = text.first(std::min(text.size(), maxExamined));
    Letters letters;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const bool isPair = text[i].isHighSurrogate() && i + 1 < text.size();
        letters.add(isPair ? QChar::surrogateToUcs4(text[i], text[i + 1]) : text[i].unicode());
        i += isPair ? 1 : 0;
    }
    const auto best = std::max_element(letters.others.begin(), letters.others.end());
    const int eastAsian = letters.han + letters.kana + letters.hangul;
    if (eastAsian * hanWeight > *best) {
        if (letters.hangul > letters.han + letters.kana) {
            return Language::Korean;
        }
        if (letters.kana > 0) {
            return Language::Japanese;
        }
        return letters.han >= sureHan ? Language::Chinese : Language::ChineseCharacters;
    }
    if (*best == 0) {
        return Language::NoLetters;
    }
    const auto letter = static_cast<Language>(std::distance(letters.others.begin(), best));
    return letter == Language::LatinLetters ? byWords(text) : letter;
}

bool isDetermined(ReadingLanguage language)
{
    switch (language) {
    case Language::ChineseCharacters:
    case Language::LatinLetters:
    case Language::CyrillicLetters:
    case Language::ArabicLetters:
    case Language::HebrewLetters:
    case Language::DevanagariLetters:
    case Language::OtherLetters:
    case Language::NoLetters:
    case Language::Count:
        return false;
    default:
        return true;
    }
}

QString nameOf(ReadingLanguage language, bool english)
{
    switch (language) {
    case Language::Chinese:
        return english ? u"Chinese"_s : u"中文"_s;
    case Language::ChineseCharacters:
        return english ? u"Undetermined (Han characters)"_s : u"未识别（汉字）"_s;
    case Language::Japanese:
        return english ? u"Japanese"_s : u"日语"_s;
    case Language::Korean:
        return english ? u"Korean"_s : u"韩语"_s;
    case Language::English:
        return english ? u"English"_s : u"英语"_s;
    case Language::French:
        return english ? u"French"_s : u"法语"_s;
    case Language::German:
        return english ? u"German"_s : u"德语"_s;
    case Language::Spanish:
        return english ? u"Spanish"_s : u"西班牙语"_s;
    case Language::Italian:
        return english ? u"Italian"_s : u"意大利语"_s;
    case Language::Portuguese:
        return english ? u"Portuguese"_s : u"葡萄牙语"_s;
    case Language::Dutch:
        return english ? u"Dutch"_s : u"荷兰语"_s;
    case Language::LatinLetters:
        return english ? u"Undetermined (Latin script)"_s : u"未识别（拉丁字母）"_s;
    case Language::CyrillicLetters:
        return english ? u"Undetermined (Cyrillic script)"_s : u"未识别（西里尔字母）"_s;
    case Language::ArabicLetters:
        return english ? u"Undetermined (Arabic script)"_s : u"未识别（阿拉伯字母）"_s;
    case Language::Greek:
        return english ? u"Greek"_s : u"希腊语"_s;
    case Language::HebrewLetters:
        return english ? u"Undetermined (Hebrew script)"_s : u"未识别（希伯来字母）"_s;
    case Language::DevanagariLetters:
        return english ? u"Undetermined (Devanagari script)"_s : u"未识别（天城文字母）"_s;
    case Language::Thai:
        return english ? u"Thai"_s : u"泰语"_s;
    case Language::NoLetters:
        return english ? u"Numbers and signs"_s : u"数字和符号"_s;
    case Language::OtherLetters:
    case Language::Count:
        break;
    }
    return english ? u"Undetermined (other script)"_s : u"未识别（其他文字）"_s;
}

} // namespace vellumo
