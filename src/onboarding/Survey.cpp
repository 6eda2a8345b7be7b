// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "onboarding/Survey.h"

#include <QSvgRenderer>

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

const Survey &hearAboutSurvey()
{
    static const Survey survey{u"How did you hear about us?"_s,
                               u"你是从哪里知道我们的?"_s,
                               2,
                               {{u"person.2"_s, u"朋友或同事"_s, u"Friend or colleague"_s},
                                {u"brand:instagram"_s, u"Instagram"_s, u"Instagram"_s},
                                {u"brand:facebook"_s, u"Facebook"_s, u"Facebook"_s},
                                {u"brand:x"_s, u"X (Twitter)"_s, u"X (Twitter)"_s},
                                {u"brand:linkedin"_s, u"LinkedIn"_s, u"LinkedIn"_s},
                                {u"brand:tiktok"_s, u"TikTok"_s, u"TikTok"_s},
                                {u"magnifyingglass"_s, u"搜索引擎"_s, u"Search engine"_s},
                                {u"brand:youtube"_s, u"YouTube"_s, u"YouTube"_s},
                                {u"sparkles"_s, u"AI 工具"_s, u"AI tools"_s},
                                {u"dot.radiowaves.left.and.right"_s, u"Newsletter / 博客 / 播客"_s,
                                 u"Newsletter, blog, or podcast"_s},
                                {u"brand:threads"_s, u"Threads"_s, u"Threads"_s},
                                {u"ellipsis"_s, u"其他"_s, u"Other"_s}}};
    return survey;
}

const Survey &roleSurvey()
{
    static const Survey survey{
        u"Which option best describes your role?"_s,
        u"哪个最符合你的角色?"_s,
        3,
        {{u"dollarsign.circle"_s, u"金融"_s, u"Finance"_s},
         {u"chart.line.uptrend.xyaxis"_s, u"销售"_s, u"Sales"_s},
         {u"graduationcap"_s, u"学生"_s, u"Student"_s},
         {u"safari"_s, u"管理层"_s, u"Leadership"_s},
         {u"headphones"_s, u"客户支持"_s, u"Customer support"_s},
         {u"stethoscope"_s, u"医疗"_s, u"Healthcare"_s},
         {u"square.grid.2x2"_s, u"产品 / 设计"_s, u"Product / design"_s},
         {u"book"_s, u"教育者"_s, u"Educator"_s},
         {u"person.3"_s, u"人力 / HR"_s, u"People / HR"_s},
         {u"lightbulb"_s, u"顾问"_s, u"Consultant"_s},
         {u"scalemass"_s, u"法务"_s, u"Legal"_s},
         {u"gearshape.2"_s, u"运营"_s, u"Operations"_s},
         {u"pencil.tip"_s, u"写作者"_s, u"Writer"_s},
         {u"wand.and.stars"_s, u"创作者"_s, u"Creator"_s},
         {u"megaphone"_s, u"市场"_s, u"Marketing"_s},
         {u"chevron.left.forwardslash.chevron.right"_s, u"工程 / 数据"_s, u"Engineering / data"_s},
         {u"ellipsis"_s, u"其他"_s, u"Other"_s}}};
    return survey;
}

const Survey &industrySurvey()
{
    static const Survey survey{
        u"What industry are you in?"_s,
        u"你在哪个行业?"_s,
        3,
        {{u"bag"_s, u"零售"_s, u"Retail"_s},
         {u"plus.forwardslash.minus"_s, u"会计"_s, u"Accounting"_s},
         {u"lightbulb"_s, u"咨询"_s, u"Consulting"_s},
         {u"heart"_s, u"非营利"_s, u"Nonprofit"_s},
         {u"umbrella"_s, u"保险"_s, u"Insurance"_s},
         {u"chevron.left.forwardslash.chevron.right"_s, u"科技"_s, u"Technology"_s},
         {u"stethoscope"_s, u"医疗健康"_s, u"Healthcare"_s},
         {u"house"_s, u"房地产"_s, u"Real estate"_s},
         {u"scalemass"_s, u"法律"_s, u"Legal"_s},
         {u"theatermasks"_s, u"娱乐"_s, u"Entertainment"_s},
         {u"book"_s, u"教育"_s, u"Education"_s},
         {u"creditcard"_s, u"金融服务"_s, u"Financial services"_s},
         {u"building.columns"_s, u"政府"_s, u"Government"_s},
         {u"bell"_s, u"酒店旅游"_s, u"Hospitality"_s},
         {u"megaphone"_s, u"市场营销"_s, u"Marketing"_s},
         {u"dot.radiowaves.left.and.right"_s, u"媒体"_s, u"Media"_s},
         {u"testtube.2"_s, u"生物科技"_s, u"Biotechnology"_s},
         {u"ellipsis"_s, u"其他"_s, u"Other"_s}}};
    return survey;
}

QString drawing(const QString &folder, QStringView name)
{
    return u":/qt/qml/Vellumo/Onboarding/%1/%2.svg"_s.arg(folder, name);
}

} // namespace

const Survey *surveyOf(Phase phase)
{
    switch (phase) {
    case Phase::hearAbout:
        return &hearAboutSurvey();
    case Phase::role:
        return &roleSurvey();
    case Phase::industry:
        return &industrySurvey();
    default:
        return nullptr;
    }
}

QString surveyIconFile(const QString &icon)
{
    const QString brand = u"brand:"_s;
    if (!icon.startsWith(brand)) {
        return drawing(u"symbols"_s, icon);
    }
    const QString mark = drawing(u"SurveyIcons"_s, QStringView(icon).sliced(brand.size()));
    return QSvgRenderer(mark).isValid() ? mark : drawing(u"symbols"_s, u"globe");
}

} // namespace vellumo
