// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "computer/FailureText.h"

#include "ui/BilingualText.h"

using namespace Qt::StringLiterals;

namespace vellumo {

namespace {

QString ofStatus(int status, const BilingualText &texts)
{
    switch (status) {
    case 401:
        return texts.pick(
            u"The key is missing or was rejected (401). Enter a complete, valid key."_s,
            u"服务需要密钥，或拒绝了收到的密钥（401）。请填写完整、仍然有效的密钥。"_s);
    case 402:
        return texts.pick(u"Payment required (402). Check your balance with the service."_s,
                          u"需要付费（402）。请查看该服务的账户余额。"_s);
    case 403:
        return texts.pick(
            u"The key may not use this service or model (403). Choose another model, or "
            "check what the key is allowed to use."_s,
            u"这个密钥无权使用该服务或模型（403）。请换一个模型，或在服务方查看密钥的权限。"_s);
    case 404:
        return texts.pick(
            u"The service does not know this model or address (404). Check the "
            "model's name, and whether the address ends as the service says, often "
            "in /v1."_s,
            u"服务中没有这个模型或地址（404）。请核对模型名称，以及地址结尾是否与服务说明一"
            "致（通常是 /v1）。"_s);
    case 429:
        return texts.pick(
            u"Too many requests, or the quota is used up (429). Wait a moment, or check "
            "your quota with the service."_s,
            u"请求过多，或额度已用完（429）。请稍等片刻，或在服务方查看额度。"_s);
    default:
        break;
    }
    if (status >= 500) {
        return texts
            .pick(u"The service has a problem (%1). Try again later."_s,
                  u"服务自身出了问题（%1）。请稍后再试。"_s)
            .arg(status);
    }
    return texts
        .pick(u"The service did not accept the request (%1). Check address and model."_s,
              u"服务没有接受请求（%1）。请检查地址和模型。"_s)
        .arg(status);
}

QString of(HttpError::Kind kind, const BilingualText &texts)
{
    using Kind = HttpError::Kind;
    switch (kind) {
    case Kind::TimedOut:
        return texts.pick(u"The service did not answer in time. Check the connection, or try a "
                          "quicker model."_s,
                          u"服务没有及时响应。请检查网络，或换一个更快的模型。"_s);
    case Kind::CannotResolve:
        return texts.pick(u"The server could not be found. Check the address and the connection."_s,
                          u"找不到这个服务的地址。请检查地址和网络。"_s);
    case Kind::Refused:
        return texts.pick(
            u"No server answers at this address. Check that it is running, and the port."_s,
            u"这个地址没有服务在运行。请确认服务器已启动，端口正确。"_s);
    case Kind::Untrusted:
        return texts.pick(
            u"No trusted connection: the service's certificate is not known here. "
            "Check the address and this computer's clock."_s,
            u"无法建立可信的连接：这台电脑不认可该服务的证书。请检查地址和系统时间。"_s);
    case Kind::CutShort:
        return texts.pick(u"The connection ended before the answer did. Try again."_s,
                          u"回答还没传完，连接就断了。请再试一次。"_s);
    case Kind::TooLarge:
        return texts.pick(u"The answer was far too long. Check the address and the model."_s,
                          u"回答过长。请检查地址和模型。"_s);
    case Kind::Insecure:
        return texts.pick(
            u"Not sent: the address must begin with https, otherwise others on the network "
            "could read it."_s,
            u"没有发送：地址必须以 https 开头，否则途中的人都能看到内容。"_s);
    case Kind::NoAddress:
        return texts.pick(
            u"Not sent: the service's address is no web address. It looks like "
            "https://example.org/v1."_s,
            u"没有发送：服务的地址不是网址。它应该像 https://example.org/v1 这样。"_s);
    case Kind::Unsendable:
        return texts.pick(
            u"Not sent: the key contains characters that cannot be sent. Enter it again."_s,
            u"没有发送：密钥里有无法发送的内容。请重新填写。"_s);
    case Kind::Cancelled:
    case Kind::Other:
        break;
    }
    return texts.pick(u"The service could not be reached. Check the connection."_s,
                      u"无法连接到服务。请检查网络。"_s);
}

QString of(KeyError::Kind kind, const BilingualText &texts)
{
    switch (kind) {
    case KeyError::Kind::Late:
        return texts.pick(u"The keyring has not given the key yet. Try again in a moment."_s,
                          u"密钥环还没有给出密钥。请稍后再试。"_s);
    case KeyError::Kind::Locked:
        return texts.pick(u"The key is in the keyring, which is locked. Unlock it."_s,
                          u"密钥在密钥环里，而密钥环已锁定。请先解锁。"_s);
    case KeyError::Kind::Missing:
        return texts.pick(u"There is no key for this address. Enter one."_s,
                          u"没有用于这个地址的密钥。请填写。"_s);
    case KeyError::Kind::Unavailable:
        return texts.pick(
            u"The keyring holding the key is not available. Start it, or enter the key for "
            "this session."_s,
            u"保存密钥的密钥环不可用。请启动它，或为本次会话重新填写密钥。"_s);
    }
    Q_UNREACHABLE();
}

} // namespace

QString failureText(const ExplanationFailure &failure, const BilingualText &texts)
{
    if (const auto *network = std::get_if<HttpError::Kind>(&failure.kind)) {
        return of(*network, texts);
    }
    if (const auto *key = std::get_if<KeyError::Kind>(&failure.kind)) {
        return of(*key, texts);
    }
    const auto *service = std::get_if<ServiceError::Kind>(&failure.kind);
    if (service && *service == ServiceError::Kind::badStatus) {
        return ofStatus(failure.status, texts);
    }
    if (service) {
        return texts.pick(
            u"The model answered, but not in the format vellumo needs. Try another model."_s,
            u"模型有回答，但格式不是 vellumo 要求的。请换一个模型。"_s);
    }
    return texts.pick(u"This address is not a chat-completions service. Check the address."_s,
                      u"该地址不是 chat-completions 服务。请检查地址。"_s);
}

QString faultText(const ConfigurationFault &fault, const BilingualText &texts)
{
    using Kind = ConfigurationFault::Kind;
    switch (fault.kind) {
    case Kind::Unopenable:
        return texts
            .pick(u"%1 cannot be opened, so nothing in it counts. Check who may read it."_s,
                  u"无法打开 %1，其中的设置都不起作用。请检查文件权限。"_s)
            .arg(fault.path);
    case Kind::Malformed:
        return texts
            .pick(u"%1 has a mistake in line %2, so nothing in it counts. Put the line right and "
                  "start vellumo again."_s,
                  u"%1 第 %2 行有错误，其中的设置都不起作用。请改正后重新启动 vellumo。"_s)
            .arg(fault.path)
            .arg(fault.line);
    case Kind::Entry:
        return texts
            .pick(
                u"%1: the value of %2 does not count, since it is no text in quotation marks. Put "
                "it right and start vellumo again."_s,
                u"%1：%2 的值没有写成引号里的文字，因此不起作用。请改正后重新启动 vellumo。"_s)
            .arg(fault.path, fault.entry);
    case Kind::Address:
        return texts
            .pick(
                u"%1 is no web address. It looks like https://example.org/v1. Put it right where "
                "it is set, in the environment or in Info.json, and start vellumo again."_s,
                u"%1 不是网址。它应该像 https://example.org/v1 这样。请在设置它的地方（环境变量或 "
                "Info.json）改正，然后重新启动 vellumo。"_s)
            .arg(fault.entry);
    }
    Q_UNREACHABLE();
}

} // namespace vellumo
