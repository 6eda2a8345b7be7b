// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "account/AuthError.h"

#include "ui/BilingualText.h"

#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace vellumo {

QString describe(const AuthError &error, const BilingualText &texts)
{
    switch (error.kind) {
    case AuthError::Kind::server:
        return error.message;
    case AuthError::Kind::notConfigured:
        return texts.pick(u"Firebase is not configured."_s, u"Firebase 未配置。"_s);
    case AuthError::Kind::Network:
        return texts.pick(u"The sign-in service cannot be reached."_s, u"无法连接登录服务。"_s);
    case AuthError::Kind::Unreadable:
        return texts.pick(u"The sign-in service sent an unexpected answer."_s,
                          u"登录服务的响应异常。"_s);
    case AuthError::Kind::NoBrowser:
        return texts.pick(u"The browser could not be opened."_s, u"无法打开浏览器。"_s);
    case AuthError::Kind::Superseded:
        return texts.pick(u"Another sign-in was started."_s, u"已开始另一次登录。"_s);
    case AuthError::Kind::Unfinished:
        return texts.pick(u"Sign-in did not finish."_s, u"登录未完成"_s);
    case AuthError::Kind::OtherAccount:
        return texts.pick(u"Sign-in was refused: the browser named another account than the "
                          "sign-in service. Please try again."_s,
                          u"登录被拒绝：浏览器给出的账号与登录服务确认的不一致，请重试。"_s);
    case AuthError::Kind::Cancelled:
        return texts.pick(u"Sign-in was cancelled."_s, u"登录已取消"_s);
    }
    Q_UNREACHABLE();
}

QString summary(const AuthError &error)
{
    switch (error.kind) {
    case AuthError::Kind::server: {
        static const QRegularExpression code(u"^(?:[A-Z_]{3,60}|HTTP \\d{3})(?= |$)"_s);
        const QString known = code.match(error.message).captured();
        return known.isEmpty() ? u"refused"_s : u"server said "_s + known;
    }
    case AuthError::Kind::notConfigured:
        return u"not configured"_s;
    case AuthError::Kind::Network:
        return describe(error.network);
    case AuthError::Kind::Unreadable:
        return u"answer cannot be read"_s;
    case AuthError::Kind::OtherAccount:
        return u"another account"_s;
    case AuthError::Kind::NoBrowser:
    case AuthError::Kind::Superseded:
    case AuthError::Kind::Unfinished:
    case AuthError::Kind::Cancelled:
        return u"not finished"_s;
    }
    Q_UNREACHABLE();
}

} // namespace vellumo
