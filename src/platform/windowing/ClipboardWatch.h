// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

class QObject;

namespace vellumo {

/// Text fields of Qt Quick ask every new owner of the clipboard what it holds, to keep their
/// canPaste right: a question to another process that blocks, for seconds when the owner hangs,
/// although nobody wants to paste. Stops that for every field below `root`. Pasting still works.
void stopWatchingClipboard(QObject &root);

} // namespace vellumo
