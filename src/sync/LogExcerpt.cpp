// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "sync/LogExcerpt.h"

#include <algorithm>
#include <array>
#include <bitset>
#include <utility>

namespace vellumo {

namespace {

constexpr qsizetype longest = 200;
constexpr qsizetype window = 8;
constexpr qsizetype minHidden = 3; // shorter values would hide half of every message
constexpr QChar ellipsis = u'\u2026';

/// The last characters of a text, as many as are compared.
class Window {
public:
    void take(QChar c)
    {
        last_[size_ % window] = c;
        ++size_;
        sum_ = (sum_ << 8U) ^ c.unicode(); // eight characters later nothing is left of it
    }

    /// Of all that was taken.
    [[nodiscard]] qsizetype size() const { return size_; }
    [[nodiscard]] quint16 hash() const
    {
        return static_cast<quint16>((sum_ * 0x9e3779b97f4a7c15U) >> 48U);
    }
    [[nodiscard]] QString text() const
    {
        QString text;
        for (qsizetype i = std::max<qsizetype>(0, size_ - window); i < size_; ++i) {
            text.append(last_[i % window]);
        }
        return text;
    }

private:
    std::array<QChar, window> last_;
    qsizetype size_ = 0;
    quint64 sum_ = 0;
};

/// Which parts of a short text repeat something that was sent.
class Repetitions {
public:
    explicit Repetitions(const QString &text) : text_(text), lengths_(text.size(), 0)
    {
        Window last;
        for (const QChar c : text) {
            last.take(c);
            if (last.size() >= window) {
                hashes_.set(last.hash());
            }
        }
    }

    /// Looks at each character once, however long the value is, and copies none of it.
    void add(const QString &value)
    {
        Window last; // of the value on one line, in lower case
        const auto take = [&](QChar c) {
            last.take(c);
            if (last.size() >= window && hashes_[last.hash()]) {
                mark(last.text());
            }
        };
        bool isGap = false;
        for (const QChar c : value) {
            if (c.isSpace()) {
                isGap = last.size() > 0;
                continue;
            }
            if (std::exchange(isGap, false)) {
                take(u' ');
            }
            take(c.toLower());
        }
        if (last.size() >= minHidden && last.size() < window) {
            mark(last.text());
        }
    }

    /// How many characters from this position on repeat something.
    [[nodiscard]] qsizetype lengthAt(qsizetype position) const { return lengths_[position]; }

private:
    void mark(const QString &piece)
    {
        for (qsizetype i = text_.indexOf(piece); i >= 0; i = text_.indexOf(piece, i + 1)) {
            lengths_[i] = std::max(lengths_[i], piece.size());
        }
    }

    const QString &text_;
    QList<qsizetype> lengths_; ///< by position
    std::bitset<65536> hashes_; ///< of each window of the text
};

} // namespace

QString logExcerpt(const QString &message, const QStringList &sent)
{
    // More than is shown, so that a value at the edge is still recognised.
    const QString text = message.left(4 * longest).simplified().left(longest + window);
    QString lower = text;
    for (QChar &c : lower) { // one by one, so that positions stay
        c = c.toLower();
    }
    Repetitions repetitions(lower);
    for (const QString &value : sent) {
        repetitions.add(value);
    }
    QString shown;
    qsizetype hiddenUntil = 0;
    for (qsizetype i = 0; i < text.size() && i < longest; ++i) {
        hiddenUntil = std::max(hiddenUntil, i + repetitions.lengthAt(i));
        if (i >= hiddenUntil) {
            shown.append(text.at(i));
        } else if (!shown.endsWith(ellipsis)) {
            shown.append(ellipsis);
        }
    }
    if (text.size() > longest && !shown.endsWith(ellipsis)) {
        shown.append(ellipsis);
    }
    return shown;
}

} // namespace vellumo
