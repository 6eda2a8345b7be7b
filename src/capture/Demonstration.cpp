// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "capture/Demonstration.h"

using namespace Qt::StringLiterals;

namespace vellumo {

ExplanationResult demonstrationAnswer(bool english)
{
    if (english) {
        return {QString(),
                u"Just like this — select, double-tap Option, and the explanation appears right "
                "here."_s};
    }
    return {u"vellumo 是 Mac 上的阅读助手:选中看不懂的文字,双击 Option,解释立刻出现。"_s,
            u"就像现在这样 —— 答案直接来找你,不用切走正在读的页面。"_s};
}

ReadingNote demonstrationNote(bool english, double createdAt)
{
    ReadingNote note;
    note.id = QUuid::createUuid();
    note.sourceText = u"vellumo is a reading assistant for your Mac."_s;
    note.translation = english ? QString() : u"vellumo 是 Mac 上的阅读助手。"_s;
    note.explanation = english ? u"Select, double-tap Option — every explanation collects here."_s
                               : u"选中,双击 Option —— 每次解释都会存在这里。"_s;
    note.createdAt = createdAt;
    return note;
}

} // namespace vellumo
