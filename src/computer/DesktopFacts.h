// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QObject>
#include <QString>

namespace vellumo {

class Accessibility;
class BilingualText;
class DesktopReporting;

/// One feature of the desktop, and what its presence or absence means to the user.
struct DesktopFact {
    Q_GADGET
    Q_PROPERTY(QString name MEMBER name CONSTANT)
    Q_PROPERTY(QString title MEMBER title CONSTANT)
    Q_PROPERTY(QString text MEMBER text CONSTANT)
    Q_PROPERTY(bool isKnown MEMBER isKnown CONSTANT)
    Q_PROPERTY(bool works MEMBER works CONSTANT)
    Q_PROPERTY(bool needsAction MEMBER needsAction CONSTANT)

public:
    QString name; ///< identifies the fact; not shown
    QString title;
    QString text = {};
    bool isKnown = true; ///< false: the desktop has not answered yet
    bool works = true; ///< false: with limits
    bool needsAction = false; ///< the user can remove the limits
};

/// Describes the features of this desktop that vellumo uses.
[[nodiscard]] QList<DesktopFact> desktopFacts(const DesktopReporting &desktop,
                                              const Accessibility &accessibility,
                                              const BilingualText &texts);

} // namespace vellumo
