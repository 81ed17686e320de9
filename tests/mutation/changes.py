"""Small changes to the code under src, each of them a fault that a test suite must notice.

A change is one of these: another literal, operator or log level, a size that is too small, a negated condition, a
missing statement, or a missing row of a table.
"""

import re
from dataclasses import dataclass
from pathlib import Path

TOP = Path(__file__).resolve().parents[2]
EXCUSES = Path(__file__).with_name("excuses.txt")


@dataclass(frozen=True)
class Change:
    file: str
    line_number: int
    line: str  # as it was, without leading and trailing spaces
    description: str
    result: str  # the whole file

    def __str__(self) -> str:
        return f"{self.file}:{self.line_number}: {self.line}\n    {self.description}"

    @property
    def key(self) -> tuple[str, str, str]:
        return self.file, self.line, self.description


def all_changes() -> list[Change]:
    """All changes, file by file."""
    files = [file for pattern in ("*.cpp", "*.c", "*.h") for file in TOP.glob(f"src/*/{pattern}")]
    names = sorted(str(file.relative_to(TOP)) for file in files if file.parent.name != "juce")
    return [change for name in names for change in changes_of(name, (TOP / name).read_text())]


def changes_of(file: str, code: str) -> list[Change]:
    extents = [*tokens(code), *conditions(code)]

    if file.endswith(".cpp"):
        extents += left_out(code)

    changes = []

    for start, end, replacement, description in sorted(extents):
        line = code[code.rfind("\n", 0, start) + 1 : code.find("\n", start)].strip()
        result = code[:start] + replacement + code[end:]
        changes.append(Change(file, code.count("\n", 0, start) + 1, line, description, result))

    return changes


def excuses() -> dict[tuple[str, str, str], str]:
    """The reason why a change need not be noticed, by its key."""
    text = "".join(line for line in EXCUSES.read_text().splitlines(True) if not line.startswith("#"))
    blocks = [block.strip().splitlines() for block in text.split("\n\n")]
    return {(file, line, change): " ".join(reason) for file, line, change, *reason in filter(None, blocks)}


TOKEN = re.compile(
    r"""(?P<comment>//[^\n]*|/\*.*?\*/)
      | (?P<directive>^[ ]*\#[^\n]*)
      | (?P<string>"(?:[^"\\\n]|\\.)*")
      | (?P<char>'(?:[^'\\\n]|\\.)+')
      | (?P<number>\b(?:0x[0-9a-fA-F]+|[0-9]+)\b)
      | (?P<size>\bsizeof\ \(\w+\))
      | (?P<word>[A-Za-z_]\w*)
      | (?P<operator>==|!=|<=|>=|&&|\|\||\+\+|--|\+=|->|<<|>>|::|[-+*/<>!=?:])""",
    re.VERBOSE | re.DOTALL | re.MULTILINE,
)

OTHER = (
    {"true": "false", "false": "true"}
    | {"Debug": "Info", "Info": "Warning", "Warning": "Critical", "Critical": "Warning"}
    | {"ofThisStep": "ofStepBefore", "ofStepBefore": "ofThisStep"}
    | {"==": "!=", "!=": "==", "<": "<=", "<=": "<", ">": ">=", ">=": ">", "&&": "||", "||": "&&"}
    | {"++": "--", "--": "++", "+=": "-=", "+": "-", "!": "", "?": "== false ?"}
)


def tokens(code: str):
    """Yields the extent of a token that can be replaced, its replacement and a description."""
    for token in TOKEN.finditer(code):
        other = other_text(token)

        if other is not None:
            yield *token.span(), other, f"{token[0]} becomes {other or 'nothing'}"


def other_text(token: re.Match) -> str | None:
    text = token[0]
    before, after = token.string[: token.start()], token.string[token.end() :]

    if before.endswith((") = ", ") const = ", "LogLevel ")):
        return None  # a pure virtual function, the name of a level

    if text in ("<", ">") and not (before.endswith(" ") and after.startswith(" ")):
        return None  # the brackets of a template

    if text == "+" and not re.match(r" \d", after):
        return None  # strings can only be joined

    match token.lastgroup:
        case "string":
            return text[:-1] + '~"'
        case "char":
            return "'~'"
        case "number":
            return hex(int(text, 16) + 1) if text.startswith("0x") else str(int(text) + 1)
        case "size":
            return f"{text} / 32"
        case "word" | "operator":
            return OTHER.get(text)


def blanked(code: str) -> str:
    """The code with spaces for comments and directives, and with other letters in string literals."""

    def blank(token: re.Match) -> str:
        if token.lastgroup in ("comment", "directive"):
            return re.sub(r"[^\n]", " ", token[0])

        if token.lastgroup in ("string", "char"):
            return token[0][0] + "x" * (len(token[0]) - 2) + token[0][-1]

        return token[0]

    return TOKEN.sub(blank, code)


def conditions(code: str):
    """Yields the extent of a condition, its opposite and a description."""
    plain = blanked(code)

    for keyword in re.finditer(r"\bif (?=\()(?!\(auto\* )", plain):
        start = keyword.end()
        end = next(i + 1 for i in range(start, len(plain)) if balanced(plain[start : i + 1]))
        yield start, end, f"(! {code[start:end]})", "the condition is negated"


def balanced(text: str) -> bool:
    return sum(text.count(c) for c in "([{") == sum(text.count(c) for c in ")]}")


NO_STATEMENT = re.compile(r"(?:if|for|else|while|do|case|default|using|struct|enum|template|static_assert)\b|[{}#]|$")
DECLARATION = re.compile(r"(?!return\b|[^\n]*<<)(?:[\w:<>]+[&*]*(?: const)? )+[&*]*\w+(?: =|;| \{|\[)")
ROW = re.compile(r"^ +(\{ .* \},)(?: *//.*)?$", re.MULTILINE)


def left_out(code: str):
    """Yields the extent of a statement or a row, the rest without it and a description."""
    for start, end in [*statements(code), *(row.span(1) for row in ROW.finditer(code))]:
        text = code[start:end]
        last_return = text.startswith("return ") and re.match(r"\s*\}", code[end:])

        # Without a declaration, or without its return value, a function does not compile.
        if not DECLARATION.match(text) and not last_return:
            yield start, end, ";" if text.endswith(";") else "", f"left out: {' '.join(text.split())}"


def statements(code: str):
    """Yields the extents of the statements in functions."""
    lines = blanked(code).splitlines(keepends=True)
    offset = 0

    while lines:
        text = lines.pop(0)
        body = re.match(r"\S.*\) (?:const )?\{ (.*;) \}$", text)
        indented = text.startswith("    ") and not NO_STATEMENT.match(text.strip())

        while indented and lines and (not balanced(text) or text.rstrip()[-1] not in ";,{"):
            text += lines.pop(0)

        if body:
            yield offset + body.start(1), offset + body.end(1)
        elif indented and text.rstrip().endswith(";"):
            yield offset + len(text) - len(text.lstrip()), offset + len(text.rstrip())

        offset += len(text)
