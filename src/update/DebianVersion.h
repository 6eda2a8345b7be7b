// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <compare>
#include <optional>

namespace vellumo {

/// A version as Debian writes and orders it: [epoch:]upstream[-revision]. Versions that differ in
/// writing may be equivalent, such as 1.0 and 1.00.
class DebianVersion {
public:
    /// Absent for what is no version: other characters, an empty part, no leading digit, or more
    /// than 64 characters.
    [[nodiscard]] static std::optional<DebianVersion> fromString(QStringView text);

    /// As it was written.
    [[nodiscard]] QString toString() const { return QString::fromLatin1(text_); }

    friend std::weak_ordering operator<=>(const DebianVersion &left, const DebianVersion &right);

private:
    QByteArray text_;
    QByteArray epoch_;
    QByteArray upstream_;
    QByteArray revision_;
};

} // namespace vellumo
