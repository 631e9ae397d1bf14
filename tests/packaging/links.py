#!/usr/bin/env python3
"""links.py FOLDER: every relative link of the documents in it (README.md, docs, examples) leads to a file, and
to a heading where it names one. In a checkout and where it is installed."""

import pathlib
import re
import sys

TARGET = re.compile(r"\]\(([^)\s]+)\)|<img[^>]*\ssrc=\"([^\"]+)\"")


def headings(text):
    """Anchors as the usual viewers make them."""
    plain = re.sub(r"```.*?```", "", text, flags=re.S)
    for heading in re.findall(r"^#+ +(.+)$", plain, flags=re.M):
        yield re.sub(r"[^\w\- ]", "", heading.strip().lower()).replace(" ", "-")


def broken(document):
    text = document.read_text(encoding="utf-8")
    for groups in TARGET.findall(re.sub(r"```.*?```", "", text, flags=re.S)):
        link = next(filter(None, groups))
        if re.match(r"[a-z]+:", link):
            continue
        name, _, anchor = link.partition("#")
        target = document.parent / name if name else document
        if not target.exists() or anchor and anchor not in headings(target.read_text(encoding="utf-8")):
            yield link


root = pathlib.Path(sys.argv[1])
documents = [root / "README.md", *sorted(root.glob("docs/**/*.md")), *sorted(root.glob("examples/**/*.md"))]
faults = [f"{document}: {link}" for document in documents for link in broken(document)]
if len(documents) < 10:
    faults.append(f"{root}: only {len(documents)} documents")
sys.exit("\n".join(faults) or None)
