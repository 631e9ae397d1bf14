#!/usr/bin/env python3
"""links.py FOLDER: every relative link of the documents in it (README.md, docs, examples) leads to a file, and
to a heading where it names one. In a checkout and where it is installed."""
import pathlib
import re
import sys


def text_of(document):
    return re.sub(r"```.*?```", "", document.read_text(encoding="utf-8"), flags=re.S)


def headings(document):
    """Anchors as the usual viewers make them."""
    for heading in re.findall(r"^#+ +(.+)$", text_of(document), flags=re.M):
        yield re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")


def broken(document):
    for link in re.findall(r"(?:\]\(|<img[^>]*\ssrc=\")(?![a-z]+:)([^)\"\s]+)", text_of(document)):
        name, _, anchor = link.partition("#")
        target = document.parent / name if name else document
        if not target.exists() or anchor and anchor not in headings(target):
            yield link


root = pathlib.Path(sys.argv[1])
documents = [root / "README.md", *root.glob("docs/**/*.md"), *root.glob("examples/**/*.md")]
faults = [f"{document}: {link}" for document in documents for link in broken(document)]
sys.exit("\n".join(faults) or (f"{root}: only {len(documents)} documents" if len(documents) < 10 else None))
