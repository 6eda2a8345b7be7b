// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "driver/Editor.h"

#include "driver/Waiting.h"
#include <QFile>

namespace vellumo::test {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

Editor::Editor(const Desktop &desktop, QString sentence)
    : desktop_(desktop)
    , sentence_(std::move(sentence))
{
}

bool Editor::open()
{
    QFile file(folder_.filePath(u"note.txt"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(sentence_.toUtf8()) < 0)
        return false;
    file.close();
    process_.emplace(qtTextEdit(file.fileName()));
    const auto window = process_->start(desktop_);
    if (!window || !desktop_.activate(*window))
        return false;
    window_ = *window;
    return selectAll();
}

bool Editor::select(qsizetype characters, quint8 controlKey)
{
    // keys may go astray until the window has the keyboard, and the editor prints what changes
    const QString expected = u"selected %1\n"_s.arg(characters);
    return waitUntil(
        [&] {
            desktop_.chord(Key::ControlLeft, controlKey);
            return waitUntil([&] { return process_->standardOutput().endsWith(expected); }, 500ms);
        },
        10s);
}

} // namespace vellumo::test
