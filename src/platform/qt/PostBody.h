// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT
#pragma once

#include <QIODevice>

namespace vellumo {

/// The body of a POST. When a connection ends before the answer, Qt would read the body again and
/// send the request up to four times, and a service might execute and charge it as often. This
/// device allows that only while the request has had no connection but those kept from earlier
/// requests, which may have been dead already. Two repetitions are needed: Qt reports the end of a
/// TLS connection more than once, and may write to the ended connection in between.
class PostBody final : public QIODevice {
public:
    PostBody(QByteArray bytes, bool mayRepeat);

    void forbidRepetition() { repetitions_ = 0; }

    [[nodiscard]] qint64 size() const override { return bytes_.size(); }
    bool reset() override;

protected:
    qint64 readData(char *data, qint64 length) override;
    qint64 writeData(const char * /*data*/, qint64 /*length*/) override { return -1; }

private:
    QByteArray bytes_;
    int repetitions_; ///< the number that is still allowed
};

} // namespace vellumo
