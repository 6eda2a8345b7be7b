// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/Screens.h"
#include "platform/windowing/x11/StrutWatch.h"
#include <QTimer>

class QScreen;

namespace vellumo {

/// The screens of Qt; the main screen is the primary one.
class QtScreens final : public Screens {
    Q_OBJECT

public:
    explicit QtScreens(QObject *parent = nullptr);

    [[nodiscard]] QList<Screen> screens() const override;
    [[nodiscard]] std::optional<Screen> mainScreen() const override;
    /// Queries the display server, since motion outside of our windows is not delivered.
    [[nodiscard]] Point pointerLocation() const override;

private:
    void watch(const QScreen &screen);

    StrutWatch struts_;
    QTimer settling_; ///< combines the changes of one new layout
};

} // namespace vellumo
