// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "notes/ReadingNote.h"
#include <QRandomGenerator>

namespace vellumo::bench {

/// Reproducible notes of realistic size: a sentence or a paragraph, English or Chinese.
class NoteMaker {
public:
    ReadingNote note()
    {
        const bool chinese = random_.bounded(3) == 0;
        const QString sentence = chinese
            ? QStringLiteral("潮水每天涨落两次，没有人问它为什么。")
            : QStringLiteral("The tide turns twice a day, and nobody asks it why. ");
        ReadingNote made;
        made.id = id();
        // all different: equal texts are merged into one note
        made.sourceText = sentence.repeated(random_.bounded(1, 5)) + QString::number(++made_);
        made.translation = QStringLiteral("潮水每天涨落两次。");
        made.explanation = sentence.repeated(random_.bounded(2, 6));
        made.createdAt = 700'000'000 + (random_.generateDouble() * 80'000'000);
        for (int i = random_.bounded(3); i > 0; --i)
            made.followUps.append(
                {id(), QStringLiteral("Why twice, and not once?"), sentence.repeated(2)});
        return made;
    }

    static ReadingContext context(int number)
    {
        const QString host = QStringLiteral("site%1.example").arg(number);
        return {QStringLiteral("web-url:https://%1/page").arg(host), host,
                ReadingContextSource::webURL};
    }

private:
    QUuid id()
    {
        const quint64 high = random_.generate64();
        const quint64 low = random_.generate64();
        return {static_cast<uint>(high >> 32), static_cast<ushort>(high >> 16),
                static_cast<ushort>(high),     static_cast<uchar>(low >> 56),
                static_cast<uchar>(low >> 48), static_cast<uchar>(low >> 40),
                static_cast<uchar>(low >> 32), static_cast<uchar>(low >> 24),
                static_cast<uchar>(low >> 16), static_cast<uchar>(low >> 8),
                static_cast<uchar>(low)};
    }

    QRandomGenerator random_{20260101};
    int made_ = 0;
};

} // namespace vellumo::bench
