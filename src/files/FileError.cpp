// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "files/FileError.h"

using namespace Qt::StringLiterals;

namespace vellumo {

QString FileError::reason() const
{
    return qt_error_string(code);
}

QString FileError::text() const
{
    return u"cannot %1 %2: %3"_s.arg(action, path, reason());
}

} // namespace vellumo
