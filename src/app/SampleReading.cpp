// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "app/SampleReading.h"

using namespace Qt::StringLiterals;

namespace vellumo {

SampleReading sampleReading(bool english)
{
    const auto text = [english](const QString &inEnglish, const QString &inChinese) {
        return english ? inEnglish : inChinese;
    };
    const auto note = [](const QString &source, const QString &explanation,
                         const QList<FollowUpExchange> &followUps = {}) {
        return ReadingNote{QUuid::createUuid(), source, {}, explanation, 0, followUps};
    };

    SampleReading sample;
    sample.context = {u"web-url:https://harbour.example/gauge"_s, u"harbour.example"_s,
                      ReadingContextSource::webURL};
    sample.selection =
        u"a pipe so narrow at its foot that waves cannot get in and only the tide can"_s;
    sample.result = {
        text({}, u"一根底部极窄的管子，波浪进不去，只有潮水能进。"_s),
        text(u"This is a stilling well: water passes its small opening slowly. A wave is over "
             "before it could raise the level inside, so what is drawn is the tide alone."_s,
             u"这就是“静水井”：水只能从小孔缓缓进出，短促的波浪来不及抬高井内的水位，"
             "所以画下来的只有潮汐。"_s),
    };
    sample.followUp = {
        QUuid::createUuid(),
        text(u"And if it were wider?"_s, u"如果宽一些呢？"_s),
        text(u"Then every wave would come through, and the pen would draw the weather."_s,
             u"那样每一道波浪都会传进来，笔画下的就成了天气，而不是潮汐。"_s),
    };
    sample.notes = {
        note(u"stilling well"_s,
             text(u"A pipe with a small opening that keeps waves out of a measurement."_s,
                  u"静水井：只留小孔的管子，把波浪挡在测量之外。"_s),
             {sample.followUp}),
        note(u"spring tide"_s,
             text(u"The largest tide, when sun and moon pull in one line; not of the season."_s,
                  u"大潮：日月引力叠加时最大的潮，与季节无关。"_s)),
        note(u"take it with a grain of salt"_s,
             text(u"Believe it only in part."_s, u"对某事半信半疑，不全信。"_s)),
    };
    return sample;
}

} // namespace vellumo
