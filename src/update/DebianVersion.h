// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <compare>
#include <optional>

namespace vellumo {

/// A version in Debian's format and order: [epoch:]upstream[-revision]. Different texts may be
/// equivalent, such as 1.0 and 1.00.
class DebianVersion {
public:
    /// Parses a version. Absent for other characters, an empty part, no leading digit, or more than
    /// 64 characters.
    [[nodiscard]] static std::optional<DebianVersion> fromString(QStringView text);

    /// Returns the original text.
    [[nodiscard]] QString toString() const { return QString::fromLatin1(text_); }

    friend std::weak_ordering operator<=>(const DebianVersion &left, const DebianVersion &right);

private:
    QByteArray text_;
    QByteArray epoch_;
    QByteArray upstream_;
    QByteArray revision_;
};

} // namespace vellumo
