#!/usr/bin/env python3
"""Lengths of functions and files: lengths.py FILE...

A function of more than 60 lines, signature and closing brace included, is an error. Functions above 40 and
files above 600 lines are reported for a second look.
"""
import re
import sys

LOOK_LINES = 40
MAX_LINES = 60
FILE_LINES = 600

# Comments and literals; the alternatives are tried in order, raw strings before plain ones.
OPAQUE = re.compile(
    r"""//[^\n]*
      | /\*.*?\*/
      | \bR"(?P<mark>[^()\\\s]{0,16})\(.*?\)(?P=mark)"
      | "(?:\\.|[^"\\\n])*"
      | (?<![0-9A-Fa-f])'(?:\\.|[^'\\\n])+'
    """,
    re.DOTALL | re.VERBOSE,
)
DIRECTIVE = re.compile(r"^[ \t]*\#(?:[^\n]*\\\n)*[^\n]*", re.MULTILINE)
SCOPE = re.compile(r"^(?:export |inline |static |typedef |constexpr |const )*"
                   r"(?:namespace|class|struct|union|enum)\b[^()]*$")
AFTER_PARAMETERS = {"const", "noexcept", "override", "final", "mutable", "try"}


def blank(match):
    """Same lines, no text."""
    return re.sub(r"[^\n]", " ", match.group(0))


def bare(text):
    """The code without comments, literals and preprocessor lines; every line stays where it is."""
    return DIRECTIVE.sub(blank, OPAQUE.sub(blank, text))


def without_templates(head):
    """The head of a declaration without a leading template<...>."""
    while head.startswith("template"):
        depth = 0
        for position, char in enumerate(head):
            depth += {"<": 1, ">": -1}.get(char, 0)
            if depth == 0 and char == ">":
                head = head[position + 1:].strip()
                break
        else:
            return head
    return head


def kind_of(head):
    """What an opening brace opens: a scope, a function or an initializer."""
    head = without_templates(" ".join(head.split()))
    if not head or head == "extern" or SCOPE.match(head):
        return "scope"
    if ")" not in head or head[-1] in "=,([":
        return "initializer"
    tail = head[head.rindex(")") + 1:].strip()
    word = re.search(r"\w+$", tail)
    if word and word.group(0) not in AFTER_PARAMETERS and "->" not in tail and "requires" not in tail:
        return "initializer"
    return "function"


def functions(text):
    """(first line, lines, head) of every function; nested ones count as part of the outer one."""
    code = bare(text)
    found = []
    kinds = []  # what the open braces opened
    heads = []  # (head, its first line) to return to after an initializer
    head, first, line, depth = "", 0, 1, 0
    for char in code:
        if depth:  # inside a function only the braces matter
            depth += {"{": 1, "}": -1}.get(char, 0)
            if depth == 0:
                found.append((first, line - first + 1, " ".join(head.split())))
                head = ""
        elif char == "{":
            kind = kind_of(head)
            if kind == "function":
                depth = 1
            else:
                kinds.append(kind)
                heads.append((head, first))
                head = ""
        elif char == "}":
            kind = kinds.pop() if kinds else "scope"
            outer, start = heads.pop() if heads else ("", line)
            head, first = (outer + "{}", start) if kind == "initializer" else ("", line)
        elif char == ";":
            head = ""
        else:
            if not head.strip() and not char.isspace():
                head, first = "", line
            head += char
            if re.fullmatch(r"\s*(public|private|protected|signals|public slots|private slots)\s*:", head):
                head = ""
        line += char == "\n"
    return found


def main(names):
    failed = False
    for name in names:
        with open(name, encoding="utf-8") as file:
            text = file.read()
        for first, count, head in functions(text):
            if count > MAX_LINES:
                failed = True
                print(f"{name}:{first}: error: {count} lines, {MAX_LINES} are the end: {head[:80]}")
            elif count > LOOK_LINES:
                print(f"{name}:{first}: {count} lines: {head[:80]}")
        lines = text.count("\n")
        if lines > FILE_LINES:
            print(f"{name}: {lines} lines: is it still one thing?")
    return 1 if failed else 0


if __name__ == "__main__":
    sys.exit(main(sys.argv[1:]))
