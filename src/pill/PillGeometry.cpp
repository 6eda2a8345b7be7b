// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#include "pill/PillGeometry.h"

#include <algorithm>
#include <cmath>

namespace vellumo::pillGeometry {

namespace {

constexpr double edgeMargin = 8;
constexpr double defaultMargin = 32;
constexpr double rowHeight = 72;
constexpr double headerHeight = 52;
constexpr double bottomPadding = 14;
constexpr double highestList = 480;
constexpr double emptyList = 130;
constexpr double menuRow = 36;
constexpr double menuPadding = 10;

constexpr double fingerSize = 52;
constexpr Point fingerBelowPill{6, -38}; ///< from the pill's centre to the finger's
constexpr Point fingerStart{-150, 110}; ///< relative to its end

} // namespace

Rect clamped(const Rect &rect, const Rect &visible)
{
    return {std::min(std::max(rect.x, visible.minX() + edgeMargin),
                     visible.maxX() - rect.width - edgeMargin),
            std::min(std::max(rect.y, visible.minY() + edgeMargin),
                     visible.maxY() - rect.height - edgeMargin),
            rect.width, rect.height};
}

Point defaultOrigin(const Rect &visible)
{
    return {visible.maxX() - pillWidth - defaultMargin, visible.minY() + defaultMargin};
}

std::optional<Point> storedOrigin(const QVariant &value)
{
    if (!value.canConvert<QVariantList>() || value.typeId() == QMetaType::QString) {
        return std::nullopt;
    }
    const QVariantList numbers = value.toList();
    if (numbers.size() != 2) {
        return std::nullopt;
    }
    bool isX = false;
    bool isY = false;
    const Point origin{numbers[0].toDouble(&isX), numbers[1].toDouble(&isY)};
    if (!isX || !isY || !std::isfinite(origin.x) || !std::isfinite(origin.y)) {
        return std::nullopt;
    }
    return origin;
}

QVariant storableOrigin(Point origin)
{
    return QVariantList{origin.x, origin.y};
}

bool isReachable(const Rect &pill, const QList<Screen> &screens)
{
    return std::ranges::any_of(screens, [&pill](const Screen &screen) {
        return screen.visibleFrame.contains({pill.midX(), pill.midY()});
    });
}

double listHeight(qsizetype notes, double textScale)
{
    if (notes == 0) {
        return std::min(emptyList * textScale, highestList);
    }
    return std::min((((static_cast<double>(notes) * rowHeight) + headerHeight) * textScale)
                        + bottomPadding,
                    highestList);
}

double menuHeight(double textScale)
{
    return (menuEntries * std::round(menuRow * textScale)) + (2 * menuPadding);
}

Rect menuFrame(const Rect &pill, double textScale, const Rect &visible)
{
    const double width = std::round(menuWidth * textScale);
    return clamped({pill.maxX() - width, pill.minY(), width, menuHeight(textScale)}, visible);
}

Rect listFrame(const Rect &pill, double height, const Rect &visible)
{
    return clamped({pill.maxX() - listWidth, pill.minY(), listWidth, height}, visible);
}

FingerPath fingerPath(const Rect &pill)
{
    const Point to{pill.midX() + fingerBelowPill.x - (fingerSize / 2),
                   pill.midY() + fingerBelowPill.y - (fingerSize / 2)};
    return {{to.x + fingerStart.x, to.y + fingerStart.y, fingerSize, fingerSize},
            {to.x, to.y, fingerSize, fingerSize}};
}

} // namespace vellumo::pillGeometry
