// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Screens.h"

namespace vellumo {

/// Screens that a test sets up; the first is the main one unless another is named.
class FakeScreens : public Screens {
public:
    QList<Screen> list = {{{0, 0, 1440, 900}, {0, 0, 1440, 876}, 0}};
    std::optional<Screen> main;
    Point pointer{700, 400};

    [[nodiscard]] QList<Screen> screens() const override { return list; }
    [[nodiscard]] std::optional<Screen> mainScreen() const override
    {
        return main || list.isEmpty() ? main : std::optional(list.constFirst());
    }
    [[nodiscard]] Point pointerLocation() const override { return pointer; }
};

} // namespace vellumo
