// SPDX-FileCopyrightText: 2026 The vellumo authors
// SPDX-License-Identifier: MIT

#include "explain/ExplanationPrompt.h"

#include <QJsonDocument>
#include <QJsonObject>

namespace vellumo::ExplanationPrompt {

namespace {

constexpr QStringView englishOpening =
    u"You are vellumo's explanation engine. The user selected a \"";
constexpr QStringView englishRest =
    uR"prompt(" while reading and pressed a shortcut, wanting to understand it or get an answer fast. First judge their real intent, then respond accordingly — don't always talk about "origin".

The intent may be: a question wanting an answer, an unfamiliar word/term, an unparseable sentence — and also these three:
- summarize: a whole page/long passage is selected and they want the key takeaways
- brainstorm: they want ideas or suggestions built on the selection
- ask_help: they want to know what else they can ask vellumo

Reply entirely in English. Return only a single JSON object (no markdown, no extra text):
{
  "intent": "the intent, e.g. question_answer / word_meaning / term_explanation / sentence_meaning / paragraph_gist / summarize / brainstorm / ask_help",
  "translation": "empty string if the selection is already in English; otherwise a faithful rendering in English — a core sense for a word or phrase, a complete translation for a sentence or paragraph, don't drop content or pile up senses",
  "explanation": "answer by intent, kept short: a question → answer it; a word/term → its meaning or origin; a sentence/paragraph → what it means; summarize → the key takeaways; brainstorm → ideas or suggestions; ask_help → briefly what else they can do. Don't restate translation, don't ramble, never invent"
})prompt";

constexpr QStringView chineseOpening = u"你是 vellumo 的解释引擎。用户阅读时选中了一段「";
constexpr QStringView chineseRest =
    uR"prompt(」并按下快捷键,想立刻看懂或得到解答。先判断他的真实意图,再据此作答——不要千篇一律地讲"来源"。

意图可能是:提问要答案、不懂的词或术语、读不通的句子,也可能是这三类:
- summarize:选中一整页/一大段,想要一句话要点总结
- brainstorm:想基于选中内容延展出点子或建议
- ask_help:想知道自己还能问 vellumo 些什么

全程用简体中文,只返回一个 JSON 对象(不要 markdown 或多余文字):
{
  "intent": "意图,如 question_answer / word_meaning / term_explanation / sentence_meaning / paragraph_gist / summarize / brainstorm / ask_help",
  "translation": "若选中内容本身已是中文则留空字符串;否则完整译成通顺的中文——词或短语给核心义项即可,句子或段落要完整翻译、别省略,也别堆砌多个义项",
  "explanation": "按意图作答,尽量简短:是问题就直接答;是词/术语就说意思或来源;是句子/段落就说清在讲什么;想要总结就给要点;想延展就给点子或建议;问能做什么就简短说说还能怎么用。别复述 translation,别啰嗦,没把握别编"
})prompt";

constexpr QStringView englishFollowUp =
    uR"prompt(You are vellumo's explanation assistant. The user selected some text while reading, got an explanation, and is now asking a follow-up about it. Answer in English, conversationally and briefly — two or three sentences, straight to the point, no pleasantries, no markdown, no repeating what was already said.)prompt";

constexpr QStringView chineseFollowUp =
    uR"prompt(你是 vellumo 的解释助手。用户正在阅读时选中了一段内容并得到了解释,现在基于这段内容继续追问。用简体中文口语化地简短作答,两三句以内,直接答到点上,不要客套、不要 markdown、不要重复之前已经说过的话。)prompt";

QString joined(QStringView first, QStringView second, QStringView third)
{
    QString whole;
    whole.reserve(first.size() + second.size() + third.size());
    return whole.append(first).append(second).append(third);
}

} // namespace

Language language(const QString &setting)
{
    const QString lower = setting.toLower();
    const bool isEnglish = lower == u"english" || lower == u"en" || lower == u"en-us";
    return isEnglish ? Language::english : Language::chinese;
}

QString englishSystem(SelectedTextKind kind)
{
    QStringView word;
    switch (kind) {
    case SelectedTextKind::word:
        word = u"word or phrase";
        break;
    case SelectedTextKind::sentence:
        word = u"sentence";
        break;
    case SelectedTextKind::paragraph:
        word = u"paragraph";
        break;
    }
    return joined(englishOpening, word, englishRest);
}

QString chineseSystem(SelectedTextKind kind)
{
    QStringView word;
    switch (kind) {
    case SelectedTextKind::word:
        word = u"单词或短语";
        break;
    case SelectedTextKind::sentence:
        word = u"句子";
        break;
    case SelectedTextKind::paragraph:
        word = u"段落";
        break;
    }
    return joined(chineseOpening, word, chineseRest);
}

QString system(const ExplanationRequest &request)
{
    return language(request.language) == Language::english ? englishSystem(request.kind())
                                                           : chineseSystem(request.kind());
}

QString user(const ExplanationRequest &request)
{
    const QStringView opening = language(request.language) == Language::english
        ? u"Explain the text inside the <selection> tags below:\n<selection>\n"
        : u"请解释下面 <selection> 标签内的文字:\n<selection>\n";
    return joined(opening, request.text, u"\n</selection>");
}

QString followUpSystem(const QString &languageSetting)
{
    const bool isEnglish = language(languageSetting) == Language::english;
    return (isEnglish ? englishFollowUp : chineseFollowUp).toString();
}

std::optional<Payload> Payload::fromJson(const QByteArray &json)
{
    const QJsonObject object = QJsonDocument::fromJson(json).object();
    const QJsonValue intent = object.value(u"intent");
    const QJsonValue translation = object.value(u"translation");
    const QJsonValue explanation = object.value(u"explanation");
    if (!intent.isString() || !translation.isString() || !explanation.isString()) {
        return std::nullopt;
    }
    return Payload{intent.toString(), translation.toString(), explanation.toString()};
}

} // namespace vellumo::ExplanationPrompt
