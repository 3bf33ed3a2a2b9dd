"""Makes mutants by the usual operators. It reads the code as text and relies on its format: blanks around a binary
operator, none inside a template's brackets, each statement on its own lines."""

import re
from pathlib import Path
from typing import NamedTuple

REPOSITORY = Path(__file__).resolve().parents[2]
FOLDERS = ("astro", "forms", "report", "runtime", "start", "tray")
# Only the tests under Wine run these.
WINDOWS = re.compile(r"_win\.|/frm|^start/|/form_description\.h$")


class Mutant(NamedTuple):
    """A change of a file's text: `replacement` for what is from `begin` to `end`."""
    name: str
    file: str
    begin: int
    end: int
    replacement: str

    @property
    def windows(self):
        return bool(WINDOWS.search(self.file))


UNSEEN = re.compile(r"""//.*|L?"(?:\\.|[^"\\])*"|(?<!\d)'(?:\\.|[^'\\])+'|^ *\#.*|\bstatic_assert[^;]*;""", re.M)

EXCHANGED = [  # a pattern, and what replaces what
    (r"(?<= )(?:[<>]=?|[=!]=)(?= )",
     {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "=="}),
    (r"(?<= )[-+*/](?==? )", {"+": "-", "-": "+", "*": "/", "/": "*"}),
    (r"(?<= )[|&](?= )", {"|": "&", "&": "|"}),
    (r"(?<= )(?:&&|\|\|)(?= )|\b(?:true|false)\b", {"&&": "||", "||": "&&", "true": "false", "false": "true"}),
    (r"(?<![\w-])[-!](?=[\w(])", {"-": "", "!": ""}),
]
NUMBER = re.compile(r"(?<![\w.])(\d+)(\.\d+)?(?=[UF]?(?![\w.]))")
CONDITION = re.compile(r"\b(?:if|while) \((?!auto|const)")
STATEMENT = re.compile(r"(?<=[;{}:])[ \n]*\n +(?=throw |return;|(?:\w|::)+(?:\(|\.|->|\[|<[\w:*]+>\(| [-+|]?= ))")
FUNCTION = re.compile(r"\) (?:\w+ )*(?::[^{]*)?\{|= (?:delete|default);")
RETURN = re.compile(r"\breturn (?!\{\};|0;|nullptr;|false;|FALSE;|std::nullopt;)")


def visible(text):
    """The text with comments, directives, static assertions and literals blanked; its length stays the same."""
    return UNSEEN.sub(lambda match: re.sub(".", "x" if '"' in match[0] else " ", match[0]), text)


def end_of(code, begin, ends):
    """Finds the first of the marks outside brackets, or the end of the bracket around `begin`."""
    depth = 0
    for place in range(begin, len(code)):
        if depth == 0 and code.startswith(ends, place):
            return place
        depth += (code[place] in "([{") - (code[place] in ")]}")
        if depth < 0:
            return place
    return len(code) - 1


def changes(text):
    """(begin, end, replacement) for each operator at each place."""
    code = visible(text)
    for pattern, others in EXCHANGED:
        for match in re.finditer(pattern, code):
            yield *match.span(), others[match[0]]
    for match in NUMBER.finditer(code):
        decimals = len(match[2] or ".") - 1
        number = int(match[0].replace(".", ""))
        for other in (number - 1, number + 1)[number == 0:]:  # in the last digit
            digits = str(other).zfill(decimals + 1)
            yield *match.span(), f"{digits[:-decimals]}.{digits[-decimals:]}" if decimals else digits
    for match in CONDITION.finditer(code):
        end = end_of(code, match.end(), (")", ";"))
        if code[end] == ")":
            yield match.end(), end, f"!({text[match.end():end]})"
    for match in re.finditer(r"(?<= )\? ", code):  # swap the branches
        colon = end_of(code, match.end(), " : ")
        end = end_of(code, colon + 3, (";", ","))
        yield match.end(), end, f"{text[colon + 3:end]} : {text[match.end():colon]}"
    for match in STATEMENT.finditer(code):
        end = end_of(code, match.end(), ";")
        if code[end] == ";" and not FUNCTION.search(code, match.end(), end + 1):
            yield match.end(), end + 1, ""
    for match in RETURN.finditer(code):
        yield match.end(), end_of(code, match.end(), ";"), "{}"


def mutants_of(file, text):
    """The mutants of a file's text. A mutant's name is its changed line: it stays the same if the line moves."""
    for begin, end, replacement in changes(text):
        first, last = text.rfind("\n", 0, begin) + 1, text.find("\n", end)
        lines = (text[first:last], text[first:begin] + replacement + text[end:last])
        now, then = (" ".join(re.sub("//.*", "", line).split()) for line in lines)
        yield Mutant(f"{file}: {now} -> {then}", file, begin, end, replacement)


def generated():
    """All mutants of the program. The order depends on the sources alone."""
    for folder in FOLDERS:
        for path in sorted((REPOSITORY / folder).glob("*")):
            if path.suffix in (".cpp", ".h"):
                yield from mutants_of(path.relative_to(REPOSITORY).as_posix(), path.read_text(encoding="utf-8"))
