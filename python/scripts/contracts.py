#!/usr/bin/env python3
"""Reads the public names of the C++ headers with their contracts, and writes them as a C++ table.

contracts.py OUTPUT HEADER...

A contract holds for all declarations below it, up to the next blank line or comment, as on the API site.
"""

import re
import sys

SPACES = {"Kiv_v4": "", "host": "host::", "kit": "kit::", "memory": "memory::", "assimp": "assimp::",
          "document": "document::", "conformance": "conformance::"}
WORDS = {"null": "None", "nullptr": "None", "std::nullopt": "None", "true": "True", "false": "False",
         "std::invalid_argument": "ValueError", "std::runtime_error": "RuntimeError",
         "std::logic_error": "RuntimeError", "std::out_of_range": "IndexError"}


def snake(word):
    if not re.match(r"[a-z][a-z0-9]*[A-Z]", word):
        return word
    if re.match(r"k[A-Z]", word):
        return re.sub(r"(?<=[a-z0-9])(?=[A-Z])", "_", word[1:]).upper()
    return re.sub(r"(?<=[a-z0-9])(?=[A-Z])", "_", word).lower()


def in_python(text):
    """The contract with the names that Python has, and without the examples in C++."""
    lines = [line for line in text.split("\n") if not line.startswith("    ")]

    def code(match):
        inner = match.group(1)
        if inner in WORDS:
            return f"`{WORDS[inner]}`"
        inner = re.sub(r"[A-Za-z_]\w*", lambda word: WORDS.get(word[0]) or snake(word[0]), inner)
        return "`" + inner.replace("::", ".").replace("->", ".") + "`"

    text = re.sub(r"`([^`]*)`", code, "\n".join(lines))
    text = re.sub(r"\b[Nn]ull\b(?! component)", "None", text)
    return re.sub(r"\n{3,}", "\n\n", text).strip()


class Reader:
    """Walks one header by its braces; `found` gets a pair of key and contract for each name."""

    def __init__(self, found):
        self.found = found
        self.scopes = []  # of kind, prefix, access
        self.statement = ""
        self.doc = []
        self.reading = False
        self.trailing = None
        self.parentheses = 0
        self.skipped = 0  # depth of braces of a body that is skipped
        self.last = None

    def hidden(self):
        return any(scope[0] == "other" or scope[2] == "private" for scope in self.scopes)

    def prefix(self):
        return self.scopes[-1][1] if self.scopes else ""

    def emit(self, name):
        if self.hidden() or not name:
            return
        key = self.prefix() + name
        self.last = self.found.setdefault(key, [])
        text = "\n".join(self.doc) if self.trailing is None else self.trailing
        if text and text not in self.last:
            self.last.append(text)

    def line(self, line):
        stripped = line.strip()
        if stripped.startswith("///<"):
            if self.last:
                self.last[-1] += " " + stripped[4:].strip()
            return
        if stripped.startswith("///"):
            if not self.reading:
                self.doc = []
            self.reading = True
            self.doc.append(stripped[4:])
            return
        self.reading = False
        if not stripped or stripped.startswith("//"):
            self.doc = []
            return
        if stripped.startswith("#"):
            return
        code, _, trailing = line.partition("///<")
        self.trailing = trailing.strip() or None
        code = re.sub(r"//.*", "", code)
        for c in code:
            self.character(c)
        self.statement += " "
        self.trailing = None

    def character(self, c):
        if self.skipped:
            self.skipped += {"{": 1, "}": -1}.get(c, 0)
            if not self.skipped and "(" in self.statement:
                self.end()
            return
        self.parentheses += {"(": 1, ")": -1}.get(c, 0)
        if self.parentheses:
            self.statement += c
        elif c == "{":
            self.open()
        elif c == "}":
            if self.scopes and self.scopes[-1][0] == "enum":
                self.enumerator()
            self.scopes.pop()
            self.statement = ""
            self.closing = True
        elif c == ";":
            self.end()
        elif c == "," and self.scopes and self.scopes[-1][0] == "enum":
            self.enumerator()
        elif c == ":" and self.statement.strip() in ("public", "protected", "private"):
            self.scopes[-1][2] = self.statement.strip()
            self.statement = ""
        else:
            self.statement += c

    def enumerator(self):
        match = re.match(r"\s*(\w+)", self.statement)
        self.emit(match.group(1) if match else "")
        self.statement = ""

    def open(self):
        text = " ".join(self.statement.split())
        text = re.sub(r"^template <.*?> (?=class|struct)", "", text)
        if text.startswith("namespace"):
            names = text[9:].strip().split("::")
            inner = SPACES.get(names[-1])
            self.scopes.append(["other" if inner is None else "namespace", inner or "", "public"])
        elif text.startswith("extern") or "std::hash" in text:
            self.scopes.append(["other", "", "public"])
        elif match := re.match(r"(class|struct|enum(?: class)?) (?:KIV_EXPORT )?([\w:]+)(?![\w<])", text):
            kind, name = match.groups()
            self.emit(name)
            kind = "enum" if kind.startswith("enum") else "class"
            access = "private" if text.startswith("class") else "public"
            hidden = "<" in text.split(":")[0] and kind == "class" and "template" in self.statement and \
                re.match(r"(class|struct) [\w:]+<", text)
            self.scopes.append(["other" if hidden else kind, self.prefix() + name + "::", access])
        else:
            self.skipped = 1
            return
        self.statement = ""

    def end(self):
        text = " ".join(self.statement.split())
        self.statement = ""
        text = re.sub(r"^template <.*?>+ (?=[\w\[])", "", text)
        text = re.sub(r"\[\[\w+\]\] ?", "", text)
        text = re.sub(r"= default|KIV_EXPORT |decltype\(auto\) ", "", text).strip()
        if re.match(r"[^(=]*\w>?::\w+ ?\(", text):
            return  # the definition of what was declared before
        if (not text or re.match(r"(friend|static_assert|extern|class|struct|enum|explicit operator)\b", text)
                or "= delete" in text or "~" in text.split("(")[0] or "KIV_HIDDEN" in text or "operator=(" in text):
            return
        if match := re.match(r"using (\w+) =", text):
            self.emit(match.group(1))
        elif text.startswith("using"):
            return
        elif match := re.search(r"operator ?(\(\)|[^\s(\w]+)", text.split(" noexcept")[0]):
            self.emit("operator" + match.group(1))
        elif match := re.match(r"[^(=]*?(\w+) ?\(", text):
            self.emit(match.group(1))
        elif match := re.match(r"[^=]*?(\w+)(\[\w*\])?( =.*)?$", text):
            self.emit(match.group(1))


def read(headers):
    found = {}
    for header in headers:
        reader = Reader(found)
        with open(header, encoding="utf-8") as lines:
            for line in lines:
                reader.line(line.rstrip("\n"))
    return {key: in_python("\n\n".join(texts)) for key, texts in found.items() if not key.startswith("other")}


def main():
    output, *headers = sys.argv[1:]
    contracts = read(headers)
    with open(output, "w", encoding="utf-8") as file:
        file.write('#include "contracts.h"\n\nnamespace bound {\n\nconst Contract kContracts[] = {\n')
        for key in sorted(contracts, key=lambda text: text.encode()):
            file.write(f'    {{"{key}", R"doc({contracts[key]})doc"}},\n')
        file.write(f"}};\n\nconst std::size_t kNbContracts = {len(contracts)};\n\n}} // namespace bound\n")


if __name__ == "__main__":
    main()
