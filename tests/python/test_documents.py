"""What the documents say is so: their examples give what they show, and their links lead somewhere."""

import doctest
import glob
import os
import re

import pytest

ROOT = os.path.join(os.path.dirname(os.path.abspath(__file__)), os.pardir, os.pardir)
PAGES = [os.path.join(ROOT, "README.md")] + sorted(glob.glob(os.path.join(ROOT, "docs", "*.md")))


@pytest.mark.parametrize("page", PAGES, ids=os.path.basename)
def test_document(page):
    assert doctest.testfile(page, module_relative=False, encoding="utf-8").failed == 0
    with open(page, encoding="utf-8") as file:
        links = re.findall(r"\]\((?!\w+:)([^)#]+)", file.read())
    assert [link for link in links if not os.path.exists(os.path.join(os.path.dirname(page), link))] == []
