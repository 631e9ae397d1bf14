#!/usr/bin/python3
"""english.py CATALOGUE…: the English texts that users know stand as english.tsv has them, odd spellings included."""
import pathlib
import sys
import xml.etree.ElementTree

texts = {(context.findtext("name"), message.findtext("source")): message.findtext("translation")
         for path in sys.argv[1:] for context in xml.etree.ElementTree.parse(path).iter("context")
         for message in context.iter("message")}
known = pathlib.Path(__file__).with_name("english.tsv").read_text().splitlines()
rows = [line.replace("\\n", "\n").split("\t") for line in known]
changed = [f"{context}, {source}: {texts.get((context, source))!r}, not {english!r}"
           for context, source, english in rows if texts.get((context, source)) != english]
sys.exit("\n".join(changed) or (None if rows else "there are no texts"))
