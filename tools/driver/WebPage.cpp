// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "driver/WebPage.h"

#include "driver/Waiting.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace vellumo::test {

WebPage::WebPage(const Desktop &desktop, QString name, const QString &html, const QString &suffix)
    : desktop_(desktop)
    , name_(std::move(name))
    , address_(pages_.address(name_ + suffix))
{
    pages_.setBody(name_, html);
    browser_.emplace(firefox(address_, name_, profile_.path()));
}

bool WebPage::open()
{
    const auto window = browser_->start(desktop_);
    if (!window || !desktop_.activate(*window))
        return false;
    window_ = *window;
    int step = 0;
    const bool placed = waitUntil(
        [&] {
            desktop_.moveTo(desktop_.geometry(window_).center() + QPoint(++step % 9, 0));
            return pages_.startOf(name_, u"sentence"_s).has_value();
        },
        30s);
    if (!placed)
        return false;
    desktop_.drag(*pages_.startOf(name_, u"sentence"_s), *pages_.endOf(name_, u"sentence"_s));
    return waitUntil([&] { return selection().endsWith(u'.'); });
}

} // namespace vellumo::test
