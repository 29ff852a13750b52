#!/usr/bin/env python3
"""Brings CHANGELOG.md into the metainfo and the changelog of the Debian package.

usage: packaging/changelog.py [--check]

With --check it changes nothing, and fails where they differ from what it would write.
"""

import datetime
import pathlib
import re
import sys
import textwrap
from xml.sax.saxutils import escape

TOP = pathlib.Path(__file__).resolve().parent.parent
METAINFO = TOP / "packaging/metainfo/com.ventrel.Tabulet.metainfo.xml"
DEBIAN = TOP / "debian/changelog"
MAINTAINER = "Tabulet contributors <tabulet@ventrel.com>"


class Release:
    """One version with its date, an opening paragraph and a list of changes."""

    def __init__(self, version, date, body):
        self.version = version
        self.date = datetime.date.fromisoformat(date)
        paragraphs, *items = re.split(r"^- ", body, flags=re.MULTILINE)
        self.opening = flow(paragraphs)
        self.items = [flow(item) for item in items]


def flow(text):
    """A text of several lines as one."""
    return " ".join(text.split())


def releases():
    """All releases of the changelog, newest first."""
    parts = re.split(
        r"^## (\S+) - (\d{4}-\d{2}-\d{2})$",
        (TOP / "CHANGELOG.md").read_text(encoding="utf-8"),
        flags=re.MULTILINE,
    )
    return [Release(*parts[i : i + 3]) for i in range(1, len(parts), 3)]


def metainfo(all_releases):
    """The metainfo as it is, with these releases."""
    lines = ["<releases>"]
    for release in all_releases:
        lines.append(f'    <release version="{release.version}" date="{release.date}">')
        lines.append("      <description>")
        if release.opening:
            lines.append(f"        <p>{escape(release.opening)}</p>")
        if release.items:
            lines.append("        <ul>")
            lines += [f"          <li>{escape(item)}</li>" for item in release.items]
            lines.append("        </ul>")
        lines += ["      </description>", "    </release>"]
    lines.append("  </releases>")
    text = METAINFO.read_text(encoding="utf-8")
    pattern = r"<releases/>|<releases>.*</releases>"
    return re.sub(pattern, lambda _: "\n".join(lines), text, flags=re.DOTALL)


def debian(all_releases):
    """The changelog of the Debian package."""
    entries = []
    for release in all_releases:
        lines = [f"tabulet ({release.version}) unstable; urgency=medium", ""]
        for item in [release.opening, *release.items]:
            lines += textwrap.wrap(item, 76, initial_indent="  * ", subsequent_indent="    ")
        lines += ["", f" -- {MAINTAINER}  {release.date:%a, %d %b %Y} 12:00:00 +0000", ""]
        entries.append("\n".join(lines))
    return "\n".join(entries)


def main():
    wanted = {METAINFO: metainfo(releases()), DEBIAN: debian(releases())}
    differing = [
        path
        for path, text in wanted.items()
        if not path.exists() or path.read_text(encoding="utf-8") != text
    ]
    if "--check" in sys.argv[1:]:
        for path in differing:
            print(f"{path.relative_to(TOP)} differs from CHANGELOG.md: run packaging/changelog.py.")
        return 1 if differing else 0
    for path in differing:
        path.parent.mkdir(exist_ok=True)
        path.write_text(wanted[path], encoding="utf-8")
    return 0


if __name__ == "__main__":
    sys.exit(main())
