# SPDX-FileCopyrightText: 2026 The vellumo authors
# SPDX-License-Identifier: MIT
"""Finds the places of a C++ source that can take a fault. Looks at tokens only; the compiler
rejects what is not valid."""
import ast
import collections
import re

# text replaces source[start:end], and @ in it is the fault's switch; after is the source with the
# fault on.
Place = collections.namedtuple("Place", "kind start end text after")

TOKEN = re.compile(r"""
    (?P<skip>\s+|//[^\n]*|/\*.*?\*/|^[ \t]*\#(?:[^\n\\]|\\.)*)
  | (?P<text>(?:u8|[uUL])?(?:R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)"
                            |"(?:[^"\\\n]|\\.)*"|'(?:[^'\\\n]|\\.)+')\w*)
  | (?P<number>\.?\d(?:[eE][+-]|'?[\w.])*)
  | (?P<name>[A-Za-z_]\w*)
  | (?P<mark_>->\*?|<<=|>>=|<=>|\+\+|--|<<|>>|::|&&|\|\||[-+*/%^&|<>=!]=|.)
    """, re.VERBOSE | re.DOTALL | re.MULTILINE)

Token = collections.namedtuple("Token", "kind text start end")

PAIRS = {"(": ")", "[": "]", "{": "}"}
ASSIGNMENTS = {"=", "+=", "-=", "*=", "/=", "%=", "|=", "&=", "^=", "<<=", ">>="}
BOUNDARIES = {"<": "<=", "<=": "<", ">": ">=", ">=": ">"}
EQUALITIES = {"==": "!=", "!=": "=="}
CONNECTIVES = {"&&": "||", "||": "&&"}
SEGMENT_ENDS = ASSIGNMENTS | {",", ";", "?", ":", "return"}
DECLARING = set("const auto static constexpr using typedef struct class enum union template friend "
                "namespace goto delete throw public private protected".split())
BEFORE_BLOCK = set(") ] } const noexcept override final mutable else do try".split())
BEFORE_NOT = SEGMENT_ENDS | CONNECTIVES.keys() | PAIRS.keys()
LEAVING = {"return", "break", "continue"}
# Calls whose absence no test can observe.
UNOBSERVABLE = re.compile(r"qC?(Debug|Info|Warning|Critical|Fatal)|printDiagnostic|Q_(?!EMIT)\w+"
                          r"|\w*assert|reserve|squeeze|static_cast|setObjectName|ignore")
NAMED_CONSTANT = re.compile(r"^(?:static )?(?:inline )?constexpr [\w:<>, ]+? (\w+)\s*(?:=|\{)",
                            re.MULTILINE)
NUMBER = re.compile(r"(0[xX][0-9a-fA-F]+|0|[1-9][\d']*|\d+\.\d+)([A-Za-z_]*)")


class Source:
    """A source's tokens, the pairs of its brackets and the blocks that hold statements."""

    def __init__(self, source):
        self.source = source
        self.tokens = []
        for found in TOKEN.finditer(source):
            if found.lastgroup != "skip":
                kind = "text" if found["text"] else found.lastgroup
                self.tokens.append(Token(kind, found[0], found.start(), found.end()))
        self.words = [token.text if token.kind != "text" else '""' for token in self.tokens]
        self.match, self.outer = self.pairs()
        self.blocks = [at for at in self.match if self.words[at] == "{" and self.is_block(at)]
        self.constants = set(NAMED_CONSTANT.findall(source))

    def pairs(self):
        match, outer, open_ = {}, [], []
        for at, word in enumerate(self.words):
            if word in PAIRS.values() and open_:
                match[at] = open_.pop()
                match[match[at]] = at
            outer.append(open_[-1] if open_ else None)
            if word in PAIRS:
                open_.append(at)
        return match, outer

    def word(self, at):
        return self.words[at] if 0 <= at < len(self.words) else ""

    def is_block(self, at):
        """Whether this brace opens statements rather than a class or an initializer."""
        before = self.word(at - 1)
        if before == ":":
            return self.outer[at] is not None and self.words[self.outer[at]] == "{"
        if before in BEFORE_BLOCK:
            return True
        back = at - 1   # the type of a lambda's result
        while re.match(r"\w|::|[<>*&,]", self.word(back)):
            back -= 1
        return self.word(back) == "->" and self.word(back - 1) in (")", "mutable", "noexcept")

    def text(self, first, last):
        return self.source[self.tokens[first].start:self.tokens[last].end]

    def segment(self, at):
        """The tokens of the expression around an operator, up to the next comma or bracket."""
        first = last = at
        while first > 0 and self.word(first - 1) not in SEGMENT_ENDS | PAIRS.keys():
            first = self.match.get(first - 1, first - 1)
        while self.word(last + 1) not in SEGMENT_ENDS | set(PAIRS.values()) and self.word(last + 1):
            last = self.match.get(last + 1, last + 1)
        return first, last

    def is_comparison(self, at):
        token = self.tokens[at]   # the formatter leaves no spaces in brackets of templates
        return (self.source[token.start - 1].isspace() and self.source[token.end].isspace()
                and self.word(at - 1) != "template")

    def follows_condition(self, block):
        """The keyword before the parentheses before this block, if there are such."""
        if self.word(block - 1) != ")" or block - 1 not in self.match:
            return self.word(block - 1)
        before = self.match[block - 1] - 1
        return self.word(before - 1 if self.word(before) == "constexpr" else before)


class Finder:
    """All places of one source."""

    def __init__(self, source):
        self.at = Source(source)
        self.places = []
        for block in self.at.blocks:
            self.statements(block)
        self.operators()

    def add(self, kind, first, last, text, after):
        start, end = self.at.tokens[first].start, self.at.tokens[last].end
        self.places.append(Place(kind, start, end, text, after))

    def statements(self, block):
        at, words = self.at, self.at.words
        here, end = block + 1, at.match[block]
        while here < end:
            word = words[here]
            if word in ("if", "while", "for", "switch", "catch"):
                is_static = at.word(here + 1) == "constexpr"
                opening = here + (2 if is_static else 1)
                if word in ("if", "while") and not is_static:
                    self.condition(opening)
                here = at.match[opening] + 1
            elif word in ("else", "do", "try", ";"):
                here += 1
            elif word in ("case", "default"):
                while words[here] != ":":
                    here += 1
                here += 1
            elif word == "{":
                here = at.match[here] + 1
            else:
                last = here
                while last < end and words[last] != ";":
                    last = at.match.get(last, last) + 1
                if last < end:
                    self.statement(block, here, last)
                here = last + 1

    def condition(self, opening):
        """Negates what an `if` or `while` asks for, unless it declares something."""
        first, last = opening + 1, self.at.match[opening] - 1
        here, top = first, set()
        while here <= last:
            top.add(self.at.words[here])
            here = self.at.match.get(here, here) + 1
        if not ASSIGNMENTS & top:
            text = self.at.text(first, last)
            self.add("condition negated", first, last, f"@ != static_cast<bool>({text})",
                     f"!({text})")

    def statement(self, block, first, last):
        """Leaves out a statement, if it is one to leave out. The last token is its semicolon."""
        kind = self.leaving(block, first) if self.at.words[first] in LEAVING else \
            self.expression(first, last)
        if kind:
            text = f"{{ if (!@) {{ {self.at.text(first, last)} }} }}"
            self.add(kind, first, last, text, "")

    def leaving(self, block, first):
        """A `return` or the like that an `if` leads to, and after which something follows."""
        at = self.at
        following = at.word(at.match[block] + 1)
        loops = at.follows_condition(at.outer[block] or 0) in ("for", "while")
        if at.follows_condition(block) == "if" and following != "else" and \
                (following != "}" or loops):
            return f"{at.words[first]} left out"
        return None

    def expression(self, first, last):
        """A call or an assignment, told from a declaration by its beginning."""
        at, here, called = self.at, first, ""
        is_step = at.words[first] in ("++", "--")
        if at.words[first] in DECLARING:
            return None
        if is_step or at.words[first] in ("Q_EMIT", "*"):
            here += 1
        while here < last:
            word = at.words[here]
            if word == "<" and not at.source[at.tokens[here].start - 1].isspace():
                here = self.after_template(here, last)
            elif at.tokens[here].kind == "name":
                if at.tokens[here - 1].kind == "name" and at.words[here - 1] != "Q_EMIT":
                    return None
                called = word
                here += 1
            elif word in ("(", "["):
                here = at.match[here] + 1
            elif word in ("::", ".", "->"):
                here += 1
            else:
                break
        if UNOBSERVABLE.fullmatch(called):
            return None
        if at.words[here] in ASSIGNMENTS | {"++", "--"} or is_step and here == last:
            return "assignment left out"
        return "call left out" if here == last and at.words[last - 1] == ")" else None

    def after_template(self, here, last):
        depth = 0
        while here < last:
            depth += {"<": 1, ">": -1, ">>": -2}.get(self.at.words[here], 0)
            here += 1
            if depth <= 0:
                break
        return here

    def operators(self):
        at = self.at
        covered = [False] * len(at.words)
        for block in at.blocks:
            for here in range(block, at.match[block]):
                covered[here] = True
        for here, word in enumerate(at.words):
            if not covered[here]:
                continue
            token = at.tokens[here]
            if word in BOUNDARIES and at.is_comparison(here):
                self.swap("boundary moved", here, BOUNDARIES[word])
            elif word in EQUALITIES:
                self.swap("comparison negated", here, EQUALITIES[word])
            elif word in CONNECTIVES and at.is_comparison(here):
                self.swap("&& and || exchanged", here, CONNECTIVES[word])
            elif word == "?":
                first, last = at.segment(here)[0], here - 1
                text = at.text(first, last)
                self.add("second of two taken", first, last, f"!@ && ({text})",
                         f"false && ({text})")
            elif word == "!" and at.word(here - 1) in BEFORE_NOT:
                self.add("! left out", here, here, "@ != !", "")
            elif word in ("true", "false"):
                other = "false" if word == "true" else "true"
                self.add("true and false exchanged", here, here, f"(@ ? {other} : {word})", other)
            elif token.kind == "number":
                self.number(here)
            elif word in at.constants and at.word(here - 1) not in ("::", ".", "->", "constexpr"):
                self.add("constant doubled", here, here, f"(@ ? 2 * {word} : {word})",
                         f"2 * {word}")

    def swap(self, kind, here, other):
        at = self.at
        first, last = at.segment(here)
        if first == here or last == here:
            return
        start, end = at.tokens[first].start, at.tokens[last].end
        text, token = at.source[start:end], at.tokens[here]
        changed = at.source[start:token.start] + other + at.source[token.end:end]
        self.add(kind, first, last, f"(@ ? ({changed}) : ({text}))", changed)

    def number(self, here):
        word = self.at.words[here]
        found = NUMBER.fullmatch(word)
        if not found or self.at.word(here - 1) == "case":
            return
        value = ast.literal_eval(found[1].replace("'", ""))
        faults = {"constant doubled": 2 * value, "constant zeroed": 0} if value else {"0 made 1": 1}
        for kind, other in faults.items():
            other = f"{other}{found[2]}"
            self.add(kind, here, here, f"(@ ? {other} : {word})", other)


def places_of(source):
    return Finder(source).places
