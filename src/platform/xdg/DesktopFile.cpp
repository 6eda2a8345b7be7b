// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "platform/xdg/DesktopFile.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

/// Returns the end of the line that begins at `start`, before its newline.
qsizetype lineEnd(const QByteArray &contents, qsizetype start)
{
    const qsizetype end = contents.indexOf('\n', start);
    return end < 0 ? contents.size() : end;
}

QByteArrayView line(const QByteArray &contents, qsizetype start, qsizetype end)
{
    return QByteArrayView(contents).sliced(start, end - start).trimmed();
}

} // namespace

DesktopFile::DesktopFile(QByteArray contents) : contents_(std::move(contents))
{
    findGroup();
}

void DesktopFile::findGroup()
{
    bool isInside = false;
    start_ = end_ = contents_.size();
    for (qsizetype start = 0; start < contents_.size();) {
        const qsizetype end = lineEnd(contents_, start);
        if (const QByteArrayView text = line(contents_, start, end); text.startsWith('[')) {
            if (isInside) {
                end_ = start;
                return;
            }
            isInside = text == "[Desktop Entry]";
            start_ = isInside ? std::min(end + 1, contents_.size()) : contents_.size();
        }
        start = end + 1;
    }
}

std::optional<DesktopFile::Entry> DesktopFile::entryFrom(qsizetype position) const
{
    for (qsizetype start = std::max(position, start_); start < end_;) {
        const qsizetype end = lineEnd(contents_, start);
        const QByteArrayView text = line(contents_, start, end);
        const qsizetype equals = text.indexOf('=');
        if (equals > 0 && !text.startsWith('#')) {
            return Entry{text.first(equals).trimmed(), text.sliced(equals + 1).trimmed(), start,
                         end};
        }
        start = end + 1;
    }
    return std::nullopt;
}

std::optional<DesktopFile::Entry> DesktopFile::find(QByteArrayView key) const
{
    auto entry = entryFrom(0);
    while (entry && entry->key != key) {
        entry = entryFrom(entry->end + 1);
    }
    return entry;
}

QString DesktopFile::value(QByteArrayView key) const
{
    const auto entry = find(key);
    return entry ? unescaped(entry->value) : QString();
}

void DesktopFile::set(QByteArrayView key, QByteArrayView value)
{
    const QByteArray text = key.toByteArray() + '=' + value.toByteArray();
    if (const auto entry = find(key)) {
        contents_.replace(entry->start, entry->end - entry->start, text);
    } else {
        qsizetype last = end_;
        while (last > 0 && QChar::isSpace(static_cast<uchar>(contents_.at(last - 1)))) {
            --last;
        }
        contents_.insert(last, '\n' + text);
    }
    findGroup();
}

void DesktopFile::remove(QByteArrayView key)
{
    if (const auto entry = find(key)) {
        contents_.remove(entry->start, entry->end + 1 - entry->start);
        findGroup();
    }
}

QString DesktopFile::unescaped(QByteArrayView value)
{
    const QString text = QString::fromUtf8(value);
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        constexpr QStringView letters = u"sntr\\";
        constexpr QStringView meanings = u" \n\t\r\\";
        const qsizetype known =
            text.at(i) == u'\\' && i + 1 < text.size() ? letters.indexOf(text.at(i + 1)) : -1;
        result += known < 0 ? text.at(i) : meanings.at(known);
        i += known < 0 ? 0 : 1;
    }
    return result;
}

} // namespace vellumo
