#!/usr/bin/env python3
"""Checks that includes run one way, by the table of folders below.

A folder may use itself and what stands behind its colon; an include that no line allows fails, and
so does a line that lets two folders use each other. Folders that are not named belong to the one
around them. A public header of PlistCore belongs to the folder of its source.
"""

import pathlib
import re
import sys

TABLE = """
PlistCore/memory:
PlistCore/text: PlistCore/memory
PlistCore/value: PlistCore/text PlistCore/memory
PlistCore/xml: PlistCore/value PlistCore/text PlistCore/memory
PlistCore/binary: PlistCore/value PlistCore/text PlistCore/memory
PlistCore/openstep: PlistCore/value PlistCore/text PlistCore/memory
PlistCore/search: PlistCore/value PlistCore/text PlistCore/memory
PlistCore/codec: PlistCore/xml PlistCore/binary PlistCore/openstep PlistCore/value PlistCore/text PlistCore/memory
PlistCore: PlistCore/codec PlistCore/search PlistCore/value PlistCore/text PlistCore/memory

app/model/runtime:
app/model/tree: app/model/runtime
app/model/editing: app/model/tree app/model/runtime
app/model/outline: app/model/editing app/model/tree app/model/runtime
app/model/search: app/model/editing app/model/tree app/model/runtime
app/model/actions: app/model/outline app/model/search app/model/editing app/model/tree app/model/runtime

app/desktop/files: app/model
app/desktop/saving: app/desktop/files app/model
app/desktop/watching: app/desktop/files app/model
app/desktop/session: app/desktop/files app/model
app/desktop/recovery: app/desktop/saving app/desktop/files app/model
app/desktop/document: app/desktop/recovery app/desktop/saving app/desktop/watching app/desktop/files app/model
app/desktop/pasteboard: app/model

app/ui/look: app/model app/desktop
app/ui/text: app/model app/desktop
app/ui/dialogs: app/ui/look app/ui/text app/model app/desktop
app/ui/notices: app/ui/look app/ui/text app/model app/desktop
app/ui/editors: app/ui/dialogs app/ui/notices app/ui/look app/ui/text app/model app/desktop
app/ui/table/view: app/ui/editors app/ui/dialogs app/ui/notices app/ui/look app/ui/text app/model app/desktop
app/ui/table/editing: app/ui/table/view app/ui/editors app/ui/dialogs app/ui/notices app/ui/look app/ui/text app/model app/desktop
app/ui/table/drag: app/ui/table/view app/ui/editors app/ui/dialogs app/ui/notices app/ui/look app/ui/text app/model app/desktop
app/ui/table/accessibility: app/ui/table/view app/ui/editors app/ui/dialogs app/ui/notices app/ui/look app/ui/text app/model app/desktop
app/ui/table: app/ui/table/editing app/ui/table/drag app/ui/table/accessibility app/ui/table/view app/ui/editors app/ui/dialogs app/ui/notices app/ui/look app/ui/text app/model app/desktop
app/ui/document: app/ui/table app/ui/editors app/ui/dialogs app/ui/notices app/ui/look app/ui/text app/model app/desktop
app/ui/menus: app/ui/document app/ui/table app/ui/editors app/ui/dialogs app/ui/notices app/ui/look app/ui/text app/model app/desktop
app/ui/window: app/ui/menus app/ui/document app/ui/table app/ui/editors app/ui/dialogs app/ui/notices app/ui/look app/ui/text app/model app/desktop
app/ui/app: app/ui/window app/ui/menus app/ui/document app/ui/table app/ui/editors app/ui/dialogs app/ui/notices app/ui/look app/ui/text app/model app/desktop
"""

# Of PlistCore a folder may use the public headers and nothing else.
USES_PUBLIC_HEADERS = ("app/",)

# Public headers that need no source.
HEADERS_ALONE = {
    "PlistCore": "PlistCore",
    "PlistEntry": "PlistCore/value",
    "PlistFile": "PlistCore/codec",
    "PlistFormat": "PlistCore/text",
    "PlistResult": "PlistCore/text",
    "PlistStep": "PlistCore/value",
    "PlistVersion": "PlistCore/memory",
}

# What each room must not include of the system.
FOREIGN = {
    "PlistCore": r"Q[A-Z]|Qt|q[a-z]+\.h",
    "app/model": r"Qt(Gui|Widgets|Network|DBus)|fcntl\.h|sys/stat\.h",
    "app/desktop": r"QtWidgets",
}

INCLUDE = re.compile(r'^\s*#\s*include\s*[<"]([^>"]+)[>"]', re.MULTILINE)


def read_table():
    table = {}
    for line in TABLE.split("\n"):
        if line:
            folder, uses = line.split(":")
            table[folder] = uses.split()
    return table


def folder_of(path, table):
    """The folder of the table that holds the file, or nothing."""
    path = pathlib.PurePosixPath(path)
    if str(path.parent) == "PlistCore":
        sources = list(pathlib.Path("PlistCore").glob(f"*/{path.stem}.cpp"))
        return str(sources[0].parent) if sources else HEADERS_ALONE.get(path.stem)
    return next((str(folder) for folder in path.parents if str(folder) in table), None)


def is_allowed(source, target, header, table):
    if source == target:
        return True
    if source.startswith(USES_PUBLIC_HEADERS) and target.startswith("PlistCore"):
        return pathlib.PurePosixPath(header).parent.name == "PlistCore"
    return any(target == use or target.startswith(use + "/") for use in table[source])


def forbidden_includes(path, table):
    source = folder_of(path, table)
    if source is None:
        yield f"{path}: no folder of the table holds this file"
        return
    foreign = next((FOREIGN[room] for room in FOREIGN if source.startswith(room)), r"(?!)")
    for header in INCLUDE.findall(path.read_text()):
        if re.match(foreign, header):
            yield f"{path}: {source} must not include {header}"
        elif header.startswith(("PlistCore/", "app/")):
            target = folder_of(header, table)
            if target is None or not is_allowed(source, target, header, table):
                yield f"{path}: {source} must not include {header}"


def two_way_arrows(table):
    for folder, uses in table.items():
        for other in uses:
            if folder in table.get(other, []):
                yield f"{folder} and {other} use each other"


def main():
    table = read_table()
    problems = list(two_way_arrows(table))
    for room in ("PlistCore", "app"):
        for path in sorted(pathlib.Path(room).rglob("*")):
            if path.suffix in (".h", ".cpp"):
                problems += forbidden_includes(path, table)
    print("\n".join(problems))
    return 1 if problems else 0


sys.exit(main())
