// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "sync/InternetDateTime.h"

#include <chrono>

namespace vellumo {

namespace {

using namespace std::chrono;

constexpr sys_days referenceDay{year(2001) / January / 1};
constexpr int maxFractionDigits = 9;

/// Takes pieces of fixed form off the text's start. After the first that does not fit, none does.
class Scanner {
public:
    explicit Scanner(QStringView text) : rest_(text) { }

    [[nodiscard]] bool isAtEnd() const { return isSound_ && rest_.isEmpty(); }

    void literal(QChar expected)
    {
        isSound_ = isSound_ && rest_.startsWith(expected);
        rest_ = rest_.mid(1);
    }

    /// A number of exactly so many ASCII digits that is at most this.
    int number(int digits, int most)
    {
        int value = 0;
        for (int i = 0; i < digits; ++i) {
            value = (value * 10) + digit();
        }
        isSound_ = isSound_ && value <= most;
        return value;
    }

    double fraction()
    {
        double value = 0;
        double weight = 0.1;
        int count = 0;
        do {
            value += digit() * weight;
            weight /= 10;
            ++count;
        } while (isSound_ && !rest_.isEmpty() && isDigit(rest_.front()));
        isSound_ = isSound_ && count <= maxFractionDigits;
        return value;
    }

    seconds offset()
    {
        if (rest_ == u"Z") {
            rest_ = {};
            return seconds(0);
        }
        const int sign = rest_.startsWith(u'-') ? -1 : 1;
        isSound_ = isSound_ && (rest_.startsWith(u'+') || rest_.startsWith(u'-'));
        rest_ = rest_.mid(1);
        const hours whole(number(2, 23));
        literal(u':');
        return sign * (whole + minutes(number(2, 59)));
    }

private:
    static bool isDigit(QChar character) { return character >= u'0' && character <= u'9'; }

    int digit()
    {
        if (!isSound_ || rest_.isEmpty() || !isDigit(rest_.front())) {
            isSound_ = false;
            return 0;
        }
        const int value = rest_.front().unicode() - u'0';
        rest_ = rest_.mid(1);
        return value;
    }

    QStringView rest_;
    bool isSound_ = true;
};

} // namespace

std::optional<double> internetDateTime(QStringView text)
{
    Scanner scanner(text);
    const year inYear(scanner.number(4, 9999));
    scanner.literal(u'-');
    const month inMonth(static_cast<unsigned>(scanner.number(2, 12)));
    scanner.literal(u'-');
    const year_month_day date =
        inYear / inMonth / day(static_cast<unsigned>(scanner.number(2, 31)));
    scanner.literal(u'T');
    seconds time = hours(scanner.number(2, 23));
    scanner.literal(u':');
    time += minutes(scanner.number(2, 59));
    scanner.literal(u':');
    time += seconds(scanner.number(2, 59));
    scanner.literal(u'.');
    const double fraction = scanner.fraction();
    time -= scanner.offset();
    if (!scanner.isAtEnd() || !date.ok()) {
        return std::nullopt;
    }
    const seconds whole = sys_days(date) - referenceDay + time;
    return static_cast<double>(whole.count()) + fraction;
}

} // namespace vellumo
