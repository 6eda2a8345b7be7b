// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace vellumo {

/// Collects what the X server cannot do for this program, so that the user reads one line about it
/// instead of one from every class that misses something.
class X11Problems {
public:
    /// Notes a problem found while the classes of this folder are being built.
    void add(const QString &problem);

    /// Prints the noted problems as one line; nothing when there are none.
    void print() const;

    /// For a connection beside another one, which reports the loss of the server for both.
    void muteLoss() { lost_ = true; }

    /// The server ended or threw us out. Printed at once, and only the first time.
    void connectionLost();

private:
    QStringList problems_;
    bool lost_ = false;
};

} // namespace vellumo
