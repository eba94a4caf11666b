"""Pages of reference from the public headers: their comments are the text, their declarations the headings."""
import ast
import re

BREAK = "\v"  # of a line within a cell


class Declarations:
    """A comment and the declarations below it."""

    def __init__(self, comment, code):
        self.comment, self.code = comment, code
        self.names = re.findall(r"\b((?:Orv|ZEB_)\w+)\s*\(", "\n".join(code))
        self.names += re.findall(r"^(?:typedef .*?|\} )(\w+);", "\n".join(code), flags=re.M)


def uncomment(lines):
    return [re.sub(r"^ ?\* ?", "", re.sub(r"^/\* ?|\s*\*/$", "", line)) for line in lines]


def read_comment(lines, start):
    end = start
    while not lines[end].rstrip().endswith("*/"):
        end += 1
    return uncomment(lines[start:end + 1]), end + 1


def parse(text):
    """The file's own comment, and its sections: (title, introduction, declarations)."""
    lines = text.split("\n")
    opening, at = read_comment(lines, 0)
    sections, comment, code = [("", [], [])], [], []

    def close():
        nonlocal comment, code
        if code:
            sections[-1][2].append(Declarations(comment, code))
        elif comment:
            sections[-1][1].extend([*comment, ""])
        comment, code = [], []

    while at < len(lines):
        line = lines[at]
        title = re.match(r"/\* -+ (.*?) -+ \*/", line)
        if title:
            close()
            sections.append((title[1], [], []))
        elif line.startswith("/*"):
            close()
            comment, at = read_comment(lines, at)
            continue
        elif not line.strip():
            close()
        elif not re.match(r'#|extern "C"|\}\s*(/\*.*)?$', line):
            code.append(line)
        at += 1
    close()
    return opening, [section for section in sections[1:] if section[1] or section[2]]


def linked(text, known):
    """Names in the text lead to where they are described; what Markdown would take for its own is escaped."""
    parts = re.split(r"\b((?:Orv[A-Z]|ZEB_)\w+)", text)
    for number, part in enumerate(parts):
        if number % 2 == 0:
            parts[number] = re.sub(r"([*_<>|\[\]`])", r"\\\1", part)
        else:
            parts[number] = f"[`{part}`](#{known[part]})" if part in known else f"`{part}`"
    return "".join(parts)


def as_table(lines, known):
    """Indented lines: a table if they have two columns, a list if they have one, else as they are."""
    indent = min(len(line) - len(line.lstrip()) for line in lines)
    rows = []
    for line in (line[indent:] for line in lines):
        if line.startswith(" ") and rows:
            # What stands further in than the column is a list in it.
            rows[-1][-1] += (BREAK if len(line) - len(line.lstrip()) > column else " ") + line.strip()
        else:
            rows.append(re.split(r"\s{2,}", line, maxsplit=1))
            column = line.index(rows[-1][-1]) if len(rows[-1]) == 2 else len(line)
    if all(len(row) == 1 for row in rows):
        return [*(f"- {linked(row[0], known)}" for row in rows), ""]
    if all(len(row) == 2 and "   " not in row[1] for row in rows):
        return ["| | |", "|---|---|", *("| " + " | ".join(linked(cell, known).replace(BREAK, "<br>") for cell in row) + " |"
                                         for row in rows), ""]
    return ["```text", *(line[indent:] for line in lines), "```", ""]


def prose(lines, known):
    """Paragraphs; what is refused as a list; indented lines as they are, for they are tables."""
    out, paragraph, table = [], [], []

    def flush():
        nonlocal paragraph, table
        if paragraph:
            out.extend([linked(" ".join(paragraph), known), ""])
        if table:
            out.extend(as_table(table, known))
        paragraph, table = [], []

    for line in lines:
        if not line.strip():
            flush()
        elif line.startswith("  "):
            if paragraph:
                flush()
            table.append(line)
        else:
            # Refusals begin with their code.
            if table or (paragraph and re.match(r"(Refusals|OrvError\w+:|THE SOURCE)", line)):
                flush()
            paragraph.append(line)
    flush()
    return out


def without_marks(code):
    """Declarations as users write them, their further lines as far to the left as the first ones."""
    return [re.sub("^ORV_API ", "", re.sub("^ {20}", " " * 12, line)) for line in code]


def anchor(name):
    return name.lower()


def c_page(text, title):
    """Markdown for a C header."""
    opening, sections = parse(text)
    known = {name: anchor(name) for _, _, blocks in sections for block in blocks for name in block.names}
    out = [f"# {title}", "", *prose(opening, known)]
    for heading, introduction, blocks in sections:
        out += [f"## {heading}", "", *prose(introduction, known)]
        for block in blocks:
            out += [f'<a id="{anchor(name)}"></a>' for name in block.names] + [""]
            out += ["```c", *without_marks(block.code), "```", ""]
            out += prose(block.comment, known)
    return "\n".join(out)


def without(text, opening):
    """Takes away what stands between braces after the opening, these included."""
    while True:
        match = re.search(opening, text)
        if not match:
            return text
        depth, at = 1, match.end()
        while depth:
            depth += {"{": 1, "}": -1}.get(text[at], 0)
            at += 1
        text = text[:match.start()] + text[at:]


def synopsis(text):
    """A C++ header without what its users need not read: bodies, private parts, the namespace detail."""
    text = re.sub(r"\A(//.*\n)+", "", text)
    text = re.sub(r"^(#.*|(\} // )?namespace (orvella|kel|thread|system)( \{)?)\n", "", text, flags=re.M)
    text = re.sub(r"^ // namespace detail\n", "", without(text, r"namespace detail \{"), flags=re.M)
    text = re.sub(r"^(private:\n)(?:(?!^\};).*\n)*", "", text, flags=re.M)
    text = re.sub(r"(FormatInfo formats\[\]) = \{\n.*?^\};", r"\1;", text, flags=re.M | re.S)
    return re.sub(r"\n{3,}", "\n\n", without_bodies(text)).replace("ORV_API ", "").replace("\n\n};", "\n};").strip()


def without_bodies(text):
    """Functions end behind their argument list: bodies go, and what initialises members."""
    head = re.compile(r"\)((?: const)?(?: noexcept)?)\s*(?=\{|:[^:])")
    at = 0
    while match := head.search(text, at):
        end, depth, before = match.end(), 0, ")"
        # The body is the first brace outside of parentheses that follows a closing bracket.
        while not (text[end] == "{" and depth == 0 and before in ")}"):
            depth += {"(": 1, ")": -1, "{": 1, "}": -1}.get(text[end], 0)
            before = before if text[end].isspace() else text[end]
            end += 1
        depth, end = 1, end + 1
        while depth:
            depth += {"{": 1, "}": -1}.get(text[end], 0)
            end += 1
        text = text[:match.start()] + f"){match[1]};" + text[end:]
        at = match.start() + 1
    return text


def cpp_page(headers, title):
    """Markdown for C++ headers: (path, text) pairs."""
    out = [f"# {title}", ""]
    for path, text in headers:
        comment = re.match(r"(//.*\n)+", text)
        out += [f"## {path}", ""]
        if comment:
            lines = [re.sub(r"^// ?", "", line) for line in comment[0].rstrip().split("\n")]
            out += prose([f"  {line}" if re.match(r"\S.*\S {3,}\S", line) else line for line in lines], {})
        code = synopsis(text)
        if code:
            out += ["```cpp", code, "```", ""]
    return "\n".join(out)


def python_page(module):
    """Markdown for the public names of a Python package: signatures and docstrings."""
    trees = {path.stem: ast.parse(path.read_text()) for path in sorted(module.glob("*.py"))}
    package = trees["__init__"]
    out = ["# Python", "", "```text", ast.get_docstring(package), "```", ""]
    for imported in (node for node in package.body if isinstance(node, ast.ImportFrom)):
        for name in (alias.name for alias in imported.names):
            for node in trees[imported.module].body:
                if getattr(node, "name", None) == name and isinstance(node, (ast.FunctionDef, ast.ClassDef)):
                    out += [f"## {name}", "", "```python", signature(node), "```", ""]
                    out += ["```text", ast.get_docstring(node), "```", ""] if ast.get_docstring(node) else []
    return "\n".join(out)


def signature(node):
    if isinstance(node, ast.ClassDef):
        return f"class {node.name}({', '.join(map(ast.unparse, node.bases))})".replace("()", "")
    arguments = ast.unparse(node.args)
    if len(arguments) > 80:
        arguments = "\n    " + ",\n    ".join(re.split(r", (?=\w+:|\*)", arguments)) + "\n"
    return f"{node.name}({arguments}) -> {ast.unparse(node.returns)}"
