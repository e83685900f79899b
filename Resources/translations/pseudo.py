#!/usr/bin/python3
"""Makes an artificial language out of the English texts, for checking layouts.

usage: pseudo.py xl|xb ENGLISH.ts RESULT.ts

xl: twice as long, with accents above and below. xb: in Hebrew letters, so from right to left.
"""

import re
import sys
import xml.etree.ElementTree as ElementTree
from collections.abc import Callable

PLACEHOLDER = re.compile(r"%(?:n|\d)")
LATIN = "abcdefghijklmnopqrstuvwxyz"
ACCENTED = str.maketrans(LATIN + LATIN.upper(), "ábçďéfğĥîĵķļmñöþqŕşţûvŵxýžÁBÇĎÉFĞĤÎĴĶĻMÑÖÞQŔŞŢÛVŴXÝŽ")
HEBREW = str.maketrans(LATIN + LATIN.upper(), "אבגדהופזיחכלמנסעצקרשתטךםןף" * 2)


def outside_placeholders(text: str, change: Callable[[str], str]) -> str:
    words = PLACEHOLDER.split(text)
    kept = PLACEHOLDER.findall(text)
    return "".join(change(word) + placeholder for word, placeholder in zip(words, [*kept, ""]))


def longer(text: str) -> str:
    again = PLACEHOLDER.sub("", text)
    return f"{outside_placeholders(text, lambda word: word.translate(ACCENTED))} {again.translate(ACCENTED)}".strip()


def from_right_to_left(text: str) -> str:
    return outside_placeholders(text, lambda word: word.translate(HEBREW))


def main() -> None:
    language, english, result = sys.argv[1:]
    change = {"xl": longer, "xb": from_right_to_left}[language]
    # The language of the file stays English, and with it the number of plural forms.
    tree = ElementTree.parse(english)
    for translation in tree.iter("translation"):
        for text in translation.findall("numerusform") or [translation]:
            text.text = change(text.text or "")
    tree.write(result, encoding="utf-8", xml_declaration=True)


if __name__ == "__main__":
    main()
