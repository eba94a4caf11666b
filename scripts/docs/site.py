"""What mkdocs adds to docs/: pages of reference made from the headers and the Python module, and the files outside of docs/
that pages link to, as pages. Links are written for the repository and are turned into the site's."""
import os
import pathlib
import posixpath
import re
import sys

from mkdocs.structure.files import File

ROOT = pathlib.Path(__file__).parents[2]
sys.path.insert(0, str(ROOT / "scripts/docs"))
import reference  # noqa: E402

CPP = ["orvella.hpp", "cpp/frame.hpp", "cpp/converter.hpp", "cpp/formats.hpp", "cpp/result.hpp", "exceptions.hpp"]
GENERATED = ROOT / "build/docs"
LINK = re.compile(r"\]\(([^)\s]+)\)")
# Files of the repository and the pages that show them; other files that are linked to are added.
shown_by = {"README.md": "README.md", "include/orvella/orv.h": "reference/orv.md", "include/orvella/zeb.h": "reference/zeb.md",
            "include/orvella/orvella.hpp": "reference/cpp.md", "include/orvella/exceptions.hpp": "reference/cpp.md"}
origin = {}  # page: the file whose links it has


def header(name):
    return (ROOT / "include/orvella" / name).read_text()


def page_of(path):
    """The site's page for a file of the repository, or None."""
    if path.startswith("docs/"):
        return path[len("docs/"):]
    return shown_by.get(path)


def add_linked(path, pages):
    """Follows the links of a page to files outside of docs/."""
    for target in LINK.findall((ROOT / path).read_text()):
        file = posixpath.normpath(posixpath.join(posixpath.dirname(path), target.split("#")[0]))
        if "://" in target or page_of(file) or not (ROOT / file).is_file() or file.startswith(".."):
            continue
        text = (ROOT / file).read_text()
        if file.endswith(".md"):
            shown_by[file] = file
            pages[file] = text
            origin[file] = file
            add_linked(file, pages)
        else:
            shown_by[file] = f"source/{file}.md"
            pages[shown_by[file]] = f"# {file}\n\n```{pathlib.Path(file).suffix[1:]}\n{text}```\n"


def on_files(files, config):
    pages = {
        "reference/orv.md": reference.c_page(header("orv.h"), "orv.h"),
        "reference/zeb.md": reference.c_page(header("zeb.h"), "zeb.h"),
        "reference/cpp.md": reference.cpp_page([(f"orvella/{name}", header(name)) for name in CPP], "C++"),
        "reference/python.md": reference.python_page(ROOT / "python/orvella"),
    }
    for path in ["CHANGELOG.md", *(str(page.relative_to(ROOT)) for page in (ROOT / "docs").rglob("*.md"))]:
        if not path.startswith("docs/"):
            shown_by[path] = origin[path] = path
            pages[path] = (ROOT / path).read_text()
        add_linked(path, pages)
    for path, text in pages.items():
        place = GENERATED / path
        place.parent.mkdir(parents=True, exist_ok=True)
        place.write_text(text)
        files.append(File(path, str(GENERATED), config["site_dir"], config["use_directory_urls"]))
    return files


def on_page_markdown(markdown, page, config, files):
    here = page.file.src_path
    source = origin.get(here, f"docs/{here}")

    def moved(match):
        target, _, anchor = match[1].partition("#")
        file = posixpath.normpath(posixpath.join(posixpath.dirname(source), target))
        shown = page_of(file) if target else None
        if not shown or "://" in target:
            return match[0]
        link = os.path.relpath(shown, posixpath.dirname(here) or ".")
        return f"]({link}{'#' + anchor if anchor else ''})"
    return LINK.sub(moved, markdown)
