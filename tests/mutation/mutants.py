"""Mutants of a C++ file: each is its text with one token changed, or with one call taken out.

What is no code stays as it is: comments, literals, preprocessor lines, assertions, heads of templates. The texts are
those of clang-format, which has blanks around a binary operator, and none around the brackets of template arguments.
"""

import hashlib
import random
import re
from dataclasses import dataclass

NOT_CODE = re.compile(
    r"""//[^\n]*|/\*.*?\*/                      # comments
    |"(?:\\.|[^"\\\n])*"|u?'(?:\\.|[^'\\\n])+'  # literals
    |^\#[^\n]*                                  # preprocessor lines
    |\b(?:static_)?assert\([^;]*\);             # assertions
    |\btemplate\ <[^\n]*>$""",                  # the head of a template
    re.VERBOSE | re.MULTILINE | re.DOTALL)

# A pattern, and what may stand in its place.
SWAPS = [
    (r"(?<= )<(?= )", ["<=", ">"]),
    (r"(?<= )<=(?= )", ["<", ">="]),
    (r"(?<= )>(?= )", [">=", "<"]),
    (r"(?<= )>=(?= )", [">", "<="]),
    (r"(?<= )==(?= )", ["!="]),
    (r"(?<= )!=(?= )", ["=="]),
    (r"(?<= )&&(?=\s)", ["||"]),
    (r"(?<= )\|\|(?=\s)", ["&&"]),
    (r"!(?=[\w(*])", [""]),
    (r"(?<= )\+ 1\b", ["- 1", "+ 0"]),
    (r"(?<= )- 1\b", ["+ 1", "- 0"]),
    (r"\+\+", ["--"]),
    (r"--", ["++"]),
    (r"\btrue\b", ["false"]),
    (r"\bfalse\b", ["true"]),
    (r"\bcontinue;", ["break;"]),
    (r"(?<=\.)(r?)begin(?=\(\))", [r"\1end"]),
    (r"(?<=\.)(r?)end(?=\(\))", [r"\1begin"]),
    (r"(?<![\w.])0(?![\w.])", ["1"]),
    (r"(?<![\w.])1(?![\w.])", ["0"]),
]
SAME_AS_NOTHING = {"", "{}", "0", "false", "nullptr", "boost::none"}
SWAPPED_ANYWAY = {"true"}
KEYWORDS = {"return", "if", "while", "for", "switch", "catch", "throw", "sizeof", "co_return"}


@dataclass(frozen=True)
class Mutant:
    file: str
    line: int
    original: str  # the lines that change, as one
    mutated: str
    text: str  # the whole file, mutated

    @property
    def id(self):
        """Another one when anything in the file is another."""
        return hashlib.sha1(f"{self.file}\n{self.text}".encode()).hexdigest()[:12]

    @property
    def key(self):
        return self.file, self.original, self.mutated

    def described(self):
        return f"{self.file}:{self.line}\n- {self.original}\n+ {self.mutated}"


def code_of(text):
    """The text with blanks for what is no code: a position means the same in both."""
    return NOT_CODE.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), text)


def after_bracket(code, opening):
    """The position after the bracket that closes the one at `opening`."""
    depth = 0
    for position in range(opening, len(code)):
        depth += {"(": 1, ")": -1}.get(code[position], 0)
        if depth == 0:
            return position + 1
    raise ValueError("a bracket is not closed")


def swaps(code):
    for pattern, others in SWAPS:
        for match in re.finditer(pattern, code):
            for other in others:
                yield match.start(), match.end(), match.expand(other)


def empty_returns(code):
    for match in re.finditer(r"\breturn\s+([^;{}]*);", code):
        if match.group(1) not in SAME_AS_NOTHING | SWAPPED_ANYWAY:
            yield match.start(), match.end(), "return {};"


def negated_conditions(code, text):
    """Not of an `if` that declares something, nor of a lone comparison or negation, which are swapped anyway."""
    for match in re.finditer(r"\bif \(", code):
        end = after_bracket(code, match.end() - 1)
        condition = text[match.end():end - 1]
        is_swapped = re.search(r" [<>=!]=? |^!", condition) and not re.search(r" (&&|\|\|)\s", condition)
        if " = " not in condition and not is_swapped:
            yield match.start(), end, f"if (!({condition}))"


def missing_calls(code):
    """Without a statement that is nothing but a call."""
    for match in re.finditer(r"(?<=[;{})\n])\s*(?!\s)(\w[\w:.>\[\]-]*)\(", code):
        if match.group(1) in KEYWORDS:
            continue
        end = after_bracket(code, match.end() - 1)
        if code.startswith(";", end) and not code.startswith(";)", end):
            yield match.start(1), end, ""


def mutants_of(file, text):
    """All mutants of a file, in the order of the text."""
    code = code_of(text)
    found = {}
    changes = [*swaps(code), *empty_returns(code), *negated_conditions(code, text), *missing_calls(code)]
    for begin, end, other in changes:
        first = text.rfind("\n", 0, begin) + 1
        last = text.find("\n", end)
        original = text[first:last]
        changed = text[first:begin] + other + text[end:last]
        mutant = Mutant(file, text.count("\n", 0, begin) + 1, " ".join(original.split()), " ".join(changed.split()),
                        text[:begin] + other + text[end:])
        found.setdefault(mutant.text, (begin, mutant))
    return [mutant for _, mutant in sorted(found.values(), key=lambda each: each[0])]


def shuffled(mutants_by_file, seed):
    """Of each file one, then of each another, and so on; the same for the same seed."""
    left = []
    for file in sorted(mutants_by_file):
        mutants = list(mutants_by_file[file])
        random.Random(f"{seed} {file}").shuffle(mutants)
        left.append(mutants)
    while any(left):
        for mutants in left:
            if mutants:
                yield mutants.pop()
