// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "platform/x11/X11Problems.h"

#include "platform/Diagnostics.h"

using namespace Qt::StringLiterals;

namespace vellumo {

void X11Problems::add(const QString &problem)
{
    if (!problems_.contains(problem)) {
        problems_.append(problem);
    }
}

void X11Problems::print() const
{
    if (!problems_.isEmpty()) {
        printDiagnostic(u"X11: "_s + problems_.join(u"; "));
    }
}

void X11Problems::connectionLost()
{
    if (!lost_) {
        lost_ = true;
        printDiagnostic(u"X11: the connection to the X server is lost"_s);
    }
}

} // namespace vellumo
