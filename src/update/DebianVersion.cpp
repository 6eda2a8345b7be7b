// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "update/DebianVersion.h"

#include <QByteArrayView>
#include <algorithm>

namespace vellumo {

namespace {

constexpr qsizetype maxVersionLength = 64;
constexpr qsizetype maxEpochLength = 9;

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

bool consistsOf(QByteArrayView part, QByteArrayView furtherCharacters)
{
    return std::ranges::all_of(part, [furtherCharacters](char c) {
        return isDigit(c) || isLetter(c) || furtherCharacters.contains(c);
    });
}

/// Removes and returns the longest prefix of digits, or of other characters.
QByteArrayView takeRun(QByteArrayView &text, bool ofDigits)
{
    const auto end =
        std::ranges::find_if(text, [ofDigits](char c) { return isDigit(c) != ofDigits; });
    const QByteArrayView run = text.first(end - text.begin());
    text = text.sliced(run.size());
    return run;
}

/// Returns the sort rank: a tilde before the end, the end before letters, letters before other
/// characters.
int rank(QByteArrayView run, qsizetype index)
{
    if (index >= run.size()) {
        return 0;
    }
    const char c = run[index];
    if (c == '~') {
        return -1;
    }
    constexpr int afterLetters = 256;
    return isLetter(c) ? c : c + afterLetters;
}

std::weak_ordering compareSigns(QByteArrayView left, QByteArrayView right)
{
    for (qsizetype i = 0; i < std::max(left.size(), right.size()); ++i) {
        if (const auto order = rank(left, i) <=> rank(right, i); std::is_neq(order)) {
            return order;
        }
    }
    return std::weak_ordering::equivalent;
}

/// Compares numbers of any length.
std::weak_ordering compareNumbers(QByteArrayView left, QByteArrayView right)
{
    const auto significant = [](QByteArrayView digits) {
        const auto start = std::ranges::find_if(digits, [](char c) { return c != '0'; });
        return digits.sliced(start - digits.begin());
    };
    left = significant(left);
    right = significant(right);
    if (left.size() != right.size()) {
        return left.size() <=> right.size();
    }
    return left.compare(right) <=> 0;
}

std::weak_ordering compareParts(QByteArrayView left, QByteArrayView right)
{
    while (!left.isEmpty() || !right.isEmpty()) {
        if (const auto order = compareSigns(takeRun(left, false), takeRun(right, false));
            std::is_neq(order)) {
            return order;
        }
        if (const auto order = compareNumbers(takeRun(left, true), takeRun(right, true));
            std::is_neq(order)) {
            return order;
        }
    }
    return std::weak_ordering::equivalent;
}

} // namespace

std::optional<DebianVersion> DebianVersion::fromString(QStringView text)
{
    if (text.size() > maxVersionLength) {
        return std::nullopt;
    }
    DebianVersion version;
    version.text_ = text.toUtf8();
    version.upstream_ = version.text_;
    if (const qsizetype colon = version.upstream_.indexOf(':'); colon >= 0) {
        version.epoch_ = version.upstream_.first(colon);
        version.upstream_ = version.upstream_.sliced(colon + 1);
        if (version.epoch_.isEmpty() || version.epoch_.size() > maxEpochLength
            || !std::ranges::all_of(version.epoch_, isDigit)) {
            return std::nullopt;
        }
    }
    if (const qsizetype dash = version.upstream_.lastIndexOf('-'); dash >= 0) {
        version.revision_ = version.upstream_.sliced(dash + 1);
        version.upstream_ = version.upstream_.first(dash);
        if (version.revision_.isEmpty() || !consistsOf(version.revision_, "+.~")) {
            return std::nullopt;
        }
    }
    if (version.upstream_.isEmpty() || !isDigit(version.upstream_.front())
        || !consistsOf(version.upstream_, "+.~-:")) {
        return std::nullopt;
    }
    return version;
}

std::weak_ordering operator<=>(const DebianVersion &left, const DebianVersion &right)
{
    if (const auto order = compareNumbers(left.epoch_, right.epoch_); std::is_neq(order)) {
        return order;
    }
    if (const auto order = compareParts(left.upstream_, right.upstream_); std::is_neq(order)) {
        return order;
    }
    return compareParts(left.revision_, right.revision_);
}

} // namespace vellumo
