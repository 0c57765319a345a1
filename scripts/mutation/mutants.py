"""Small changes of C++ source, as somebody could make them by mistake: another operator, number, text or condition."""

import dataclasses
import hashlib
import re

# Not code to be changed: comments, preprocessor lines, raw strings, and declarations that are checked by the compiler.
PASSED_OVER = re.compile(
    r"""//[^\n]* | /\*.*?\*/ | ^[ \t]*\#[^\n]* | R"(?P<mark>[^(\s]*)\(.*?\)(?P=mark)" | ^\s*template\s*<[^\n]*
      | static_assert\([^;]*;""",
    re.VERBOSE | re.MULTILINE | re.DOTALL)
QUOTED = re.compile(r'"(?:\\.|[^"\\\n])*"|(?<![\w])\'(?:\\.|[^\'\\\n])\'')

OPERATORS = {"<": "<=", "<=": "<", ">": ">=", ">=": ">", "==": "!=", "!=": "==", "&&": "||", "||": "&&",
             "+": "-", "-": "+", "*": "/", "/": "*", "%": "*", "+=": "-=", "-=": "+="}
# clang-format puts spaces around binary operators, and none inside of types.
OPERATOR = re.compile(r"(?<=\s)(%s)(?=\s)" % "|".join(map(re.escape, sorted(OPERATORS, key=len, reverse=True))))
STEP = re.compile(r"\+\+|--")
TRUTH = re.compile(r"\b(true|false)\b")
NEGATION = re.compile(r"!(?=[\w(*])")
CONDITION = re.compile(r"\bif \((?=[^;\n]*\))")
COMPARED = re.compile(r"\s[=!]=\s")
NUMBER = re.compile(r"(?<![\w.'])\d+(?:\.\d+)?(?![\w.'])")


@dataclasses.dataclass(frozen=True)
class Mutant:
    file: str
    offset: int
    before: str
    after: str
    line: int
    digest: str  # of the whole file before the change

    def applied(self, text):
        return text[:self.offset] + self.after + text[self.offset + len(self.before):]


def blanked(pattern, text):
    """The text with spaces in place of what the pattern matches."""
    return pattern.sub(lambda match: re.sub(r"[^\n]", " ", match.group()), text)


def other_number(text):
    return str(int(text) + 1) if "." not in text else f"{float(text) * 1.5 + 0.01:.6g}"


def closing(code, start):
    """Where the parenthesis closes whose inside begins here."""
    depth = 1
    for at in range(start, len(code)):
        depth += {"(": 1, ")": -1}.get(code[at], 0)
        if depth == 0:
            return at
    return None


def other_text(quoted):
    """One letter in the middle becomes another; letters of {formats} and \\escapes stay."""
    bare = re.sub(r"\\.|\{[^}]*\}", lambda match: " " * len(match.group()), quoted)
    letters = [at for at, letter in enumerate(bare) if letter.isascii() and letter.isalpha()]
    if not letters:
        return None
    at = letters[len(letters) // 2]
    return quoted[:at] + ("b" if quoted[at] in "aA" else "a") + quoted[at + 1:]


def changes(text):
    """The possible changes of a source file: offset, before, after."""
    kept = blanked(PASSED_OVER, text)
    code = blanked(QUOTED, kept)
    for match in OPERATOR.finditer(code):
        yield match.start(), match.group(), OPERATORS[match.group()]
    for match in STEP.finditer(code):
        yield match.start(), match.group(), "--" if match.group() == "++" else "++"
    for match in TRUTH.finditer(code):
        yield match.start(), match.group(), "false" if match.group() == "true" else "true"
    for match in NEGATION.finditer(code):
        yield match.start(), "!", ""
    for match in NUMBER.finditer(code):
        yield match.start(), match.group(), other_number(match.group())
    for match in CONDITION.finditer(code):
        end = closing(code, match.end())
        condition = code[match.end():end]
        if end is not None and ";" not in condition and not COMPARED.search(condition):
            inside = text[match.end():end]
            yield match.end(), inside, f"!({inside})"
    for match in QUOTED.finditer(kept):
        changed = other_text(match.group())
        if changed:
            yield match.start(), match.group(), changed


def mutants_of(root, file):
    text = (root / file).read_text()
    digest = hashlib.sha256(text.encode()).hexdigest()[:16]
    return [Mutant(file, offset, before, after, text.count("\n", 0, offset) + 1, digest)
            for offset, before, after in changes(text)]
