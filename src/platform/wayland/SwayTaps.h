// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/TapSource.h"
#include <QJsonDocument>

namespace vellumo {

class SwayConnection;

/// Hears taps of a lone Alt through key bindings of sway that do nothing. They are added at run
/// time, so that they end with the session, and removed when they are not needed any more. sway
/// reports a tap at the release, and none when another key was pressed meanwhile. Applications see
/// the key as well.
///
/// The bindings differ from ordinary ones by a flag, so that sway keeps a binding of the user for
/// the same key and prefers it.
class SwayTaps : public TapSource {
    Q_OBJECT

public:
    /// `sway` must outlive this object.
    explicit SwayTaps(SwayConnection &sway);
    ~SwayTaps() override;
    Q_DISABLE_COPY_MOVE(SwayTaps)

    /// Adds the bindings while the connection is open, or removes them.
    void setListening(bool isListening);

    /// Returns whether sway has accepted the bindings, and the user has not been seen to use a
    /// binding for the same key.
    [[nodiscard]] bool hearsEveryWindow() const override { return isBound_; }

private:
    void follow();
    void bind();
    void unbind();
    void setBound(bool isBound);
    void handleEvent(quint32 type, const QJsonDocument &content);

    SwayConnection &sway_;
    bool isListening_ = false;
    bool isBound_ = false;
};

} // namespace vellumo
