// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QByteArrayView>
#include <QString>
#include <optional>

namespace vellumo {

/// The main group, [Desktop Entry], of a file in the format of freedesktop.org. Changes keep the
/// rest of the file byte for byte.
class DesktopFile {
public:
    /// One `key=value` of the group, without blanks around either. Views into contents().
    struct Entry {
        QByteArrayView key;
        QByteArrayView value;
        qsizetype start = 0; ///< of the line
        qsizetype end = 0; ///< of the line, before its newline
    };

    explicit DesktopFile(QByteArray contents);

    [[nodiscard]] const QByteArray &contents() const { return contents_; }

    /// Returns the first entry that starts at or after `position`.
    [[nodiscard]] std::optional<Entry> entryFrom(qsizetype position) const;

    /// Returns the unescaped value; null without such an entry.
    [[nodiscard]] QString value(QByteArrayView key) const;
    [[nodiscard]] bool has(QByteArrayView key) const { return find(key).has_value(); }

    /// `value` is written as it is; the caller escapes it.
    void set(QByteArrayView key, QByteArrayView value);
    void remove(QByteArrayView key);

    /// Replaces the escapes \s, \n, \t, \r and \\ in a value.
    [[nodiscard]] static QString unescaped(QByteArrayView value);

private:
    [[nodiscard]] std::optional<Entry> find(QByteArrayView key) const;
    void findGroup();

    QByteArray contents_;
    qsizetype start_ = 0; ///< of the group's first line after its header
    qsizetype end_ = 0; ///< of the next group's header, or of the file
};

} // namespace vellumo
