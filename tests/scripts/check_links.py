#!/usr/bin/env python3
"""Every relative link and picture of the Markdown pages leads to a file, and every anchor to a heading."""
import pathlib
import re
import sys

root = pathlib.Path(sys.argv[1])
pages = [*root.glob("*.md"), *root.glob("docs/**/*.md"), *root.glob("tests/**/*.md"), *root.glob("examples/**/*.md"),
         *root.glob("cases/*.md")]
faults = []


def anchors(page):
    headings = re.findall(r"^#+ (.*)$", page.read_text(encoding="utf-8"), re.M)
    return {re.sub(r"[^\w\- ]", "", heading.lower()).replace(" ", "-") for heading in headings}


for page in pages:
    text = re.sub(r"```.*?```|`[^`\n]*`", "", page.read_text(encoding="utf-8"), flags=re.S)
    for link in re.findall(r"\]\(([^)\s]+)\)", text):
        if re.match(r"[a-z]+:", link):
            continue
        path, _, anchor = link.partition("#")
        target = page.parent / path if path else page
        if not target.exists():
            faults.append(f"{page.relative_to(root)}: {link} leads nowhere")
        elif anchor and target.suffix == ".md" and anchor not in anchors(target):
            faults.append(f"{page.relative_to(root)}: {link} has no such heading")
if len(pages) < 10:
    faults.append("the pages were not found")
print("\n".join(faults))
sys.exit(bool(faults))
