# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
"""Finds texts of the interface that are missing in one language, and Chinese ones with ASCII
punctuation, which reads as a mistake.

Texts that keep it are listed below: they are the same on every platform, or parts of exported files.
"""
import pathlib
import re
import sys

FIXED = (
    "」,这里会给出简短的追问解答。",
    "不登录,直接使用",
    "你在哪个行业?",
    "你是从哪里知道我们的?",
    "可以了,继续",
    "哪个最符合你的角色?",
    "就像现在这样 —— 答案直接来找你,不用切走正在读的页面。",
    "没弹出?打开系统设置 →",
    "看到了,继续",
    "看到按键亮了吗?",
    "看到顶部的解释了吗?",
    "读取选中文字和 Option-Option 手势需要辅助功能权限。请在 系统设置 → "
    "隐私与安全性 → 辅助功能 里重新勾选 vellumo,开启后会自动恢复,无需重启。",
    "还没有笔记 —— 选中文字,按两下 Option。",
    "vellumo 是 Mac 上的阅读助手:选中看不懂的文字,双击 Option,解释立刻出现。",
    "选中,双击 Option —— 每次解释都会存在这里。",
    "auth 是 authentication 的常见缩写,指身份验证。",
    "来自 middle(中间)+ ware(软件),指夹在两端之间的一层。",
    "选中的内容:",  # for models
    # exported notes
    "**追问:** ",
    "**回答:** ",
    "%1 条笔记,导出于 %2",
)
# Prompts are written for models.
WITHOUT = ("src/explain/ExplanationPrompt.cpp", "src/explain/FollowUpPrompt.cpp")

# The same in both languages.
ONE_LANGUAGE = {
    "vellumo", "vellumo ", "Notes", "Ask a follow-up…",
    "vellumo needs a readable selection to continue.",
    # what is selected in the first run
    "vellumo is a reading assistant for your Mac. Select any text you don't understand, "
    "double-tap Option, and a short explanation appears at the top of your screen.",
    # names of languages, and of files
    "中文", "Chinese", "English", "en",
}

LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
CHINESE = re.compile("[\u3400-\u9fff]")
# a question mark that is quoted, and paths with a line, are no punctuation
ASCII = re.compile(
    r",(?!\d{3})|[;!()]|(?<! )\?|:(?=[\u3400-\u9fff%])|(?<=[\u3400-\u9fff]):|(?<=%\d):(?!\d)")


def is_wrong(text):
    for fixed in FIXED:
        if text in fixed:
            return False
        text = text.replace(fixed, "")
    return CHINESE.search(text) is not None and ASCII.search(text) is not None


# One text, perhaps of several literals: "…", or u"…"_s in C++, joined by + in QML.
TEXT = r'''((?:(?:u8?|_L1)?"(?:[^"\\\n]|\\.)*"(?:_s)?[\s+]*)+)'''
PAIRS = (
    re.compile(r"(?:\benglish|\bisEnglish(?:\(\))?)\s*\?\s*\(?" + TEXT + r"\)?\s*:\s*\(?" + TEXT),
    re.compile(r"\bpick\(\s*" + TEXT + r",\s*" + TEXT + r"\)"),
)
# a property that is shown or spoken, with a text of its own
SHOWN = re.compile(
    r"^\s*(?:text|title|message|detail|explanation|placeholder|accessibleName|Accessible\.name|"
    r'Accessible\.description)\s*:\s*"((?:[^"\\\n]|\\.)*)"', re.M)


def letters(text):
    return re.sub(r"%\d|\\[nu]\w*|[^A-Za-z]", "", text)


def missing(path, content):
    """Yields texts without a translation, each with its place."""
    for pattern in PAIRS:
        for pair in pattern.finditer(content):
            english, chinese = ("".join(LITERAL.findall(text)) for text in pair.groups())
            is_missing = CHINESE.search(english) or (letters(chinese)
                                                   and not CHINESE.search(chinese))
            if is_missing and english not in ONE_LANGUAGE:
                yield pair.start(), f"{english} / {chinese}"
    if path.suffix == ".qml":
        for shown in SHOWN.finditer(content):
            text = shown.group(1)
            if (letters(text) or CHINESE.search(text)) and text not in ONE_LANGUAGE:
                yield shown.start(), text


def findings():
    for path in sorted(pathlib.Path("src").rglob("*")):
        if path.suffix not in (".cpp", ".h", ".qml") or str(path) in WITHOUT:
            continue
        content = path.read_text(encoding="utf-8")
        for place, text in missing(path, content):
            yield f"{path}:{content.count(chr(10), 0, place) + 1}: in one language only: {text}"
        for number, line in enumerate(content.splitlines(), 1):
            if line.lstrip().startswith(("//", "*")):
                continue
            for literal in LITERAL.finditer(line):
                if is_wrong(literal.group(1)):
                    yield f"{path}:{number}: {literal.group(1)}"


def packaged():
    """The same for what is installed beside the program: a text between tags, or after a key."""
    for path in sorted(pathlib.Path("packaging").glob("*.in")):
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            text = re.sub(r"<[^>]*>|^[\w-]+(?:\[\w+\])?=", "", line)
            if not line.startswith("Keywords") and is_wrong(text):
                yield f"{path}:{number}: {text.strip()}"


wrong = [*findings(), *packaged()]
print("\n".join(wrong))
sys.exit(1 if wrong else 0)
