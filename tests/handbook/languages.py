#!/usr/bin/env python3
"""languages.py FOLDER: the handbooks of all languages in it say the same: block for block the same kind (heading, paragraph, item
of a list, row of a table, code), the same pictures and links, and the same figures. So an edit of one that forgets the
others is found. Every picture is used."""
import pathlib
import re
import sys

# Headings are found by their number, and each language has pictures of its own.
FOLDERS = {"README.md": "img", "handbook.cn.md": "img/cn", "handbook.ru.md": "img/ru"}
HANDBOOK = r"README\.md|handbook\.\w+\.md"


def blocks_of(text):
    """Kind and text of each block; fenced code is one."""
    for fence, part in re.findall(r"^```\w*\n(.*?)^```|(?:\A|\n)(.+?)(?=\n```|\Z)", text, re.M | re.S):
        if fence:
            yield "code", fence
            continue
        for block in re.split(r"\n\s*\n|\n(?=- |[|#]|\d+\. )", part):
            kind = re.match(r"#+ |- |\d+\. |\||!\[|", block.strip()).group()
            if block.strip():
                yield re.sub(r"\d+", "1", kind) or "text", " ".join(block.split())


def facts_of(name, folder, text):
    """What has to be the same in every language, and the text it was found in."""
    anchors = [re.sub(r"[^\w\- ]", "", title.lower()).replace(" ", "-") for title in re.findall(r"^#+ +(.+)$", text, re.M)]
    facts = []
    for kind, block in blocks_of(text):
        targets = re.findall(r"\]\(([^)]+)\)", block)
        links = [anchors.index(link[1:]) if link[1:] in anchors else re.sub(HANDBOOK, "handbook", link) for link in targets]
        links = [str(link).replace(folder + "/", "img/") for link in links]
        plain = re.sub(r"\]\([^)]+\)|(?<=\d)[,. \u00a0\u202f](?=\d{3}\b)", "", block)
        figures = sorted(figure.replace(",", ".") for figure in re.findall(r"\d+(?:[.,:]\d+)*", plain))
        facts.append(((kind, links, block if kind == "code" else figures), block))
    return facts


folder = pathlib.Path(sys.argv[1])
texts = {name: (folder / name).read_text(encoding="utf-8") for name in FOLDERS}
facts = {name: facts_of(name, FOLDERS[name], text) for name, text in texts.items()}
english = facts.pop("README.md")
faults = []
for name, translated in facts.items():
    differing = [(a, b) for a, b in zip(english, translated) if a[0] != b[0]]
    faults += [f"{name}: {a[0]} {a[1][:80]}\n  is here {b[0]} {b[1][:80]}" for a, b in differing[:3]]
    if len(english) != len(translated) and not differing:
        faults.append(f"{name}: {len(translated)} blocks instead of {len(english)}")
for name, text in texts.items():
    used = {folder / link for link in re.findall(r"\]\((img/[^)]+)\)", text)}
    faults += [f"{picture} is {wrong}" for pictures, wrong in (
        (used - set(folder.rglob("*.png")), "missing"), (set((folder / FOLDERS[name]).glob("*.png")) - used, "not used"))
        for picture in pictures]
sys.exit("\n".join(faults) or (None if len(english) > 200 else f"only {len(english)} blocks"))
