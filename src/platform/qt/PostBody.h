// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QIODevice>

namespace vellumo {

/// The body of a POST. When a connection ends before the answer, Qt would read the body again and
/// send the request up to four times, and a service might execute and charge it as often. This
/// device allows one repetition, and only if the connection was kept from an earlier request and
/// may have been dead already.
class PostBody final : public QIODevice {
public:
    PostBody(QByteArray bytes, bool mayRepeat);

    void forbidRepetition() { mayRepeat_ = false; }

    [[nodiscard]] qint64 size() const override { return bytes_.size(); }
    bool reset() override;

protected:
    qint64 readData(char *data, qint64 length) override;
    qint64 writeData(const char * /*data*/, qint64 /*length*/) override { return -1; }

private:
    QByteArray bytes_;
    bool mayRepeat_;
};

} // namespace vellumo
