#!/usr/bin/env python3
"""No link leads nowhere: in the Markdown files as they are read in the repository, and in the site made of them.

    links_test.py <repository> [mkdocs]
"""
import html.parser
import pathlib
import re
import subprocess
import sys
import urllib.parse

repository = pathlib.Path(sys.argv[1]).resolve()
dead = []


def check(page, target, anchors_of):
    path, _, anchor = urllib.parse.unquote(target).partition("#")
    if re.match(r"\w+:", target):
        return
    file = (page.parent / path).resolve() if path else page
    if not file.exists():
        dead.append(f"{page}: {target}")
    elif anchor and file.suffix in (".md", ".html") and anchor not in anchors_of(file):
        dead.append(f"{page}: {target}, an anchor that is not there")


def without_code(text):
    return re.sub(r"`[^`\n]*`", "", re.sub(r"^```.*?^```$", "", text, flags=re.M | re.S))


def markdown_anchors(file):
    headings = re.findall(r"^#+ (.*)$", re.sub(r"^```.*?^```$", "", file.read_text(), flags=re.M | re.S), re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


class Page(html.parser.HTMLParser):
    def __init__(self, file):
        super().__init__()
        self.links, self.anchors = [], set()
        self.feed(file.read_text())

    def handle_starttag(self, tag, attributes):
        for name, value in attributes:
            if name in ("href", "src") and value:
                self.links.append(value)
            elif name in ("id", "name"):
                self.anchors.add(value)


# Whatever lies deeper than docs and their like is made, not written.
written = [file for depth in ("*", "*/*", "*/*/*") for file in repository.glob(f"{depth}.md")]
for file in (file for file in written if "build" not in file.relative_to(repository).parts):
    for target in re.findall(r"\]\(([^)\s]+)\)", without_code(file.read_text())):
        check(file, target, markdown_anchors)

if len(sys.argv) > 2:
    made = subprocess.run([sys.argv[2], "build", "--quiet", "--strict"], cwd=repository, capture_output=True, text=True)
    if made.returncode != 0 or made.stderr:
        sys.exit(made.stdout + made.stderr)
    pages = {file: Page(file) for file in (repository / "build/site").rglob("*.html") if file.name != "404.html"}
    for file, page in pages.items():
        for target in page.links:
            check(file, target, lambda other: pages[other].anchors)

sys.exit("\n".join(dead) or 0)
