"""Brings what was measured into docs/benchmarks.md, between the marks of each table."""

import os
import re

PAGE = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, "docs", "benchmarks.md")


def write(name, lines):
    """Replaces what stands between the marks of that name."""
    with open(PAGE, encoding="utf-8") as page:
        text = page.read()
    start, end = "<!-- {} -->\n".format(name), "<!-- end of {} -->\n".format(name)
    between = re.compile(re.escape(start) + ".*?" + re.escape(end), re.DOTALL)
    text, count = between.subn(lambda _: start + "\n" + "\n".join(lines) + "\n\n" + end, text)
    assert count == 1, "docs/benchmarks.md has no place for " + name
    with open(PAGE, "w", encoding="utf-8") as page:
        page.write(text)
