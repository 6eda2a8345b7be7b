# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
"""Finds Chinese texts of the interface with ASCII punctuation, which reads as a mistake.

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

LITERAL = re.compile(r'"((?:[^"\\\n]|\\.)*)"')
CHINESE = re.compile("[\u3400-\u9fff]")
# a question mark that is quoted, and paths with a line, are no punctuation
ASCII = re.compile(r",(?!\d{3})|[;!()]|(?<! )\?|:(?=[\u3400-\u9fff])|(?<=[\u3400-\u9fff]):")


def is_wrong(text):
    for fixed in FIXED:
        if text in fixed:
            return False
        text = text.replace(fixed, "")
    return CHINESE.search(text) is not None and ASCII.search(text) is not None


def findings():
    for path in sorted(pathlib.Path("src").rglob("*")):
        if path.suffix not in (".cpp", ".h", ".qml") or str(path) in WITHOUT:
            continue
        for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
            if line.lstrip().startswith(("//", "*")):
                continue
            for literal in LITERAL.finditer(line):
                if is_wrong(literal.group(1)):
                    yield f"{path}:{number}: {literal.group(1)}"


wrong = list(findings())
print("\n".join(wrong))
sys.exit(1 if wrong else 0)
