"""A small C preprocessor, just enough for avr-libc's <avr/io.h>.

It follows #include, #if/#ifdef/#ifndef/#elif/#else/#endif and #define for one
device (the macro __AVR_<DEVICE>__ and __AVR_ARCH__ set as avr-gcc would), and
records every active line in file order: defines with their raw value, comment
lines and blank lines. Later stages read register, bit and vector facts from
that record, so the comment that stands above a group of bit numbers is kept.
"""

import os
import re

INCLUDE_DIR = os.environ.get("AVR_INCLUDE_DIR", "/usr/lib/avr/include")


class Line:
    """One active logical line of a header."""

    def __init__(self, kind, filename, number, name="", value="", comment=""):
        self.kind = kind          # "define", "comment" or "blank"
        self.filename = filename  # base name of the header
        self.number = number      # line number in that header, from 1
        self.name = name          # macro name for a define
        self.value = value        # raw replacement text for a define
        self.comment = comment    # comment text on this line (trailing for a define)

    def __repr__(self):
        return f"Line({self.kind}, {self.filename}:{self.number}, {self.name}={self.value!r}, {self.comment!r})"


def _logical_lines(text):
    """Splits a file into (first line number, code, comment) with comments taken out.

    Backslash continuations are joined; a block comment spanning lines belongs to
    the line on which it starts.
    """
    out = []
    i, n = 0, len(text)
    line_no = 1
    code, comment, start = [], [], 1
    while i < n:
        c = text[i]
        if c == "/" and i + 1 < n and text[i + 1] == "*":
            end = text.find("*/", i + 2)
            end = n if end < 0 else end
            body = text[i + 2:end]
            comment.append(body)
            line_no += body.count("\n")
            i = end + 2
            code.append(" ")
            continue
        if c == "/" and i + 1 < n and text[i + 1] == "/":
            end = text.find("\n", i)
            end = n if end < 0 else end
            comment.append(text[i + 2:end])
            i = end
            continue
        if c == "\\" and i + 1 < n and text[i + 1] == "\n":
            i += 2
            line_no += 1
            continue
        if c == "\n":
            out.append((start, "".join(code).strip(), " ".join(x.strip() for x in comment).strip()))
            code, comment = [], []
            line_no += 1
            start = line_no
            i += 1
            continue
        code.append(c)
        i += 1
    if code or comment:
        out.append((start, "".join(code).strip(), " ".join(x.strip() for x in comment).strip()))
    return out


_TOKEN = re.compile(r"\s*(0[xX][0-9a-fA-F]+|\d+|[A-Za-z_]\w*|&&|\|\||==|!=|<=|>=|<<|>>|[-+*/%()<>!~&|^?:])")


class Preprocessor:
    def __init__(self, defines):
        self.macros = dict(defines)
        self.lines = []
        self.poisoned = set()

    # --- expressions of #if -------------------------------------------------
    def _expand(self, tokens, depth=0):
        out = []
        i = 0
        while i < len(tokens):
            t = tokens[i]
            if t == "defined":
                j = i + 1
                if j < len(tokens) and tokens[j] == "(":
                    name = tokens[j + 1]
                    i = j + 3
                else:
                    name = tokens[j]
                    i = j + 1
                out.append("1" if name in self.macros else "0")
                continue
            if re.match(r"[A-Za-z_]", t):
                if t in self.macros and depth < 20:
                    out.extend(self._expand(self._tokens(self.macros[t]), depth + 1))
                else:
                    out.append("0")
            else:
                out.append(t)
            i += 1
        return out

    @staticmethod
    def _tokens(text):
        text = re.sub(r"(\d)[uUlL]+\b", r"\1", text)
        tokens, pos = [], 0
        while pos < len(text):
            if text[pos:].strip() == "":
                break
            m = _TOKEN.match(text, pos)
            if not m:
                raise ValueError(f"cannot read expression {text!r}")
            tokens.append(m.group(1))
            pos = m.end()
        return tokens

    def arithmetic(self, text):
        """Value of a constant expression, macros expanded, unknown names 0."""
        tokens = self._expand(self._tokens(text))
        python = []
        for t in tokens:
            python.append({"&&": " and ", "||": " or ", "!": " not ", "/": "//"}.get(t, t))
        expr = " ".join(python)
        return int(eval(expr, {"__builtins__": {}}, {}))  # tokens are numbers and operators only

    def evaluate(self, text):
        return bool(self.arithmetic(text))

    # --- files --------------------------------------------------------------
    def run_file(self, path):
        with open(path, encoding="latin-1") as f:
            text = f.read()
        base = os.path.basename(path)
        # Each entry: (taking this branch, some branch already taken, parent active)
        stack = []

        def active():
            return all(s[0] for s in stack)

        for number, code, comment in _logical_lines(text):
            if code.startswith("#"):
                directive = code[1:].strip()
                m = re.match(r"(\w+)\s*(.*)", directive)
                word, rest = (m.group(1), m.group(2).strip()) if m else ("", "")
                if word in ("if", "ifdef", "ifndef"):
                    parent = active()
                    if not parent:
                        stack.append([False, True])
                        continue
                    if word == "if":
                        take = self.evaluate(rest)
                    elif word == "ifdef":
                        take = rest.split()[0] in self.macros
                    else:
                        take = rest.split()[0] not in self.macros
                    stack.append([take, take])
                    continue
                if word == "elif":
                    top = stack[-1]
                    stack.pop()
                    parent = active()
                    if parent and not top[1] and self.evaluate(rest):
                        stack.append([True, True])
                    else:
                        stack.append([False, top[1] or not parent])
                    continue
                if word == "else":
                    top = stack.pop()
                    stack.append([not top[1] and active(), True])
                    continue
                if word == "endif":
                    stack.pop()
                    continue
                if not active():
                    continue
                if word == "define":
                    dm = re.match(r"([A-Za-z_]\w*)(\([^)]*\))?\s*(.*)", rest)
                    name, params, value = dm.group(1), dm.group(2), dm.group(3).strip()
                    if params is None:
                        self.macros[name] = value
                    self.lines.append(Line("define", base, number, name, value, comment))
                elif word == "undef":
                    self.macros.pop(rest.split()[0], None)
                elif word == "include":
                    im = re.match(r"[<\"](?:avr/)?([^>\"]+)[>\"]", rest)
                    if im:
                        target = os.path.join(INCLUDE_DIR, "avr", im.group(1))
                        if os.path.exists(target):
                            self.run_file(target)
                elif word == "pragma" and rest.startswith("GCC poison"):
                    # Deprecated names: gone for a program, so gone for us.
                    for name in rest.split()[2:]:
                        self.macros.pop(name, None)
                        self.poisoned.add(name)
                elif word == "error":
                    raise RuntimeError(f"{base}:{number}: #error {rest}")
                continue
            if not active():
                continue
            if code:
                continue  # C declarations of the headers carry no facts we need
            self.lines.append(Line("comment" if comment else "blank", base, number, comment=comment))


def preprocess(device_macro, arch):
    """Runs <avr/io.h> for one device; returns (the preprocessor with its macros, active lines without poisoned names)."""
    pre = Preprocessor({device_macro: "1", "__AVR_ARCH__": str(arch), "__AVR__": "1"})
    pre.run_file(os.path.join(INCLUDE_DIR, "avr", "io.h"))
    lines = [x for x in pre.lines if x.kind != "define" or x.name not in pre.poisoned]
    return pre, lines
