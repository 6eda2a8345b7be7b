// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace vellumo {

/// Collects what the X server lacks, so that one line is printed instead of one for each class that
/// needs it.
class X11Problems {
public:
    /// Adds a problem found during construction of the classes of this folder.
    void add(const QString &problem);

    /// Prints the problems as one line; nothing when there are none.
    void print() const;

    /// Suppresses the report of a lost connection, for an additional connection whose loss another
    /// one reports.
    void muteLoss() { lost_ = true; }

    /// Reports that the connection to the server is lost. Printed at once, and only the first time.
    void connectionLost();

private:
    QStringList problems_;
    bool lost_ = false;
};

} // namespace vellumo
