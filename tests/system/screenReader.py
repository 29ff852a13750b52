"""Reads and works a window of the program from outside, as a screen reader does.

usage: screenReader.py NAME-OF-THE-DOCUMENT
"""

import subprocess
import sys
import time

import pyatspi
from gi.repository import GLib

PATIENCE = 30  # seconds until something that does not happen is given up

heard = []


def hear(event):
    if event.type.startswith("object:property-change:accessible-description"):
        heard.append(f"{event.source.name}: {event.source.description}")
    elif event.detail1:
        heard.append(f"focus {event.source.getRoleName()} {event.source.name}")


def wait_for(what, condition):
    """Lets events come in until the condition gives something, which is the result."""
    end = time.monotonic() + PATIENCE
    while time.monotonic() < end:
        while GLib.MainContext.default().iteration(False):
            pass
        try:
            result = condition()
        except (GLib.Error, LookupError, NotImplementedError):
            result = None  # What was asked had just gone.
        if result:
            return result
        time.sleep(0.05)
    sys.exit("After %d seconds still not: %s\nHeard:\n%s" % (PATIENCE, what, "\n".join(heard)))


def wait_to_hear(words):
    wait_for("to hear “%s”" % words, lambda: words in heard)


def below(parent, role, name):
    """The first of this role and name that is shown below."""
    for child in parent:
        if child is None:
            continue
        if child.getRoleName() == role and child.name == name:
            return child
        found = below(child, role, name)
        if found:
            return found
    return None


def window_of(document):
    for application in pyatspi.Registry.getDesktop(0):
        for window in application or []:
            if window.getRoleName() == "frame" and document in window.name:
                return window
    return None


def act(accessible, name):
    action = accessible.queryAction()
    for number in range(action.nActions):
        if action.getName(number) == name:
            action.doAction(number)
            return
    sys.exit("“%s” cannot be done with “%s”." % (name, accessible.name))


def press(key):
    subprocess.run(["xdotool", "key", key], check=True)


class Outline:
    def __init__(self, table):
        self.table = table.queryTable()

    def keys(self):
        return [self.cell(row, 0).name for row in range(self.table.nRows)]

    def cell(self, row, column):
        return self.table.getAccessibleAt(row, column)

    def key(self, key):
        return self.cell(self.keys().index(key), 0)

    def value(self, key):
        return self.cell(self.keys().index(key), 2)


def wait_for_the_bus(outline):
    """The program hears some time later that somebody listens."""

    def hears_the_focus():
        for row in (1, 0):
            act(outline.cell(row, 0), "SetFocus")
        return heard

    wait_for("the bus to pass on what happens", hears_the_focus)


def expand(outline):
    authors = outline.key("Authors")
    assert authors.description == "level 1, collapsed", authors.description
    act(authors, "Expand")
    wait_to_hear("Authors: level 1, expanded")
    wait_for("the items of the array", lambda: "Item 0" in outline.keys())
    assert outline.key("Item 0").description == "level 2"
    act(authors, "Collapse")
    wait_to_hear("Authors: level 1, collapsed")


def move_by_keys(outline):
    act(outline.key("Title"), "SetFocus")
    wait_to_hear("focus table cell Title")
    press("Down")
    wait_to_hear("focus table cell Edition")


def delete(outline):
    act(outline.key("Title"), "SetFocus")
    rows = outline.table.nRows
    heard.clear()
    press("Delete")
    wait_to_hear("focus table cell Edition")
    press("ctrl+z")
    wait_for("the item to come back", lambda: outline.table.nRows == rows)


def toggle(outline):
    act(outline.value("In print"), "Toggle")
    wait_for("the other truth", lambda: outline.value("In print").name == "false")


def edit(outline):
    act(outline.value("Title"), "Edit")
    field = wait_for("the field", lambda: outline.value("Title")[0])
    wait_to_hear("focus text Value of Title")
    field.queryEditableText().setTextContents("Lamps")
    press("Return")
    wait_for("the new title", lambda: outline.value("Title").name == "Lamps")


def refuse(outline):
    act(outline.value("Edition"), "Edit")
    field = wait_for("the field", lambda: outline.value("Edition")[0])
    wait_to_hear("focus text Value of Edition")
    field.queryEditableText().setTextContents("three")
    press("Return")
    wait_to_hear("Value of Edition: “three” is not a valid Integer.")
    press("Escape")
    wait_for("the old edition", lambda: outline.value("Edition").name == "3")


def main(document):
    pyatspi.Registry.registerEventListener(
        hear, "object:property-change:accessible-description", "object:state-changed:focused"
    )
    window = wait_for("the window", lambda: window_of(document))
    table = wait_for("the table", lambda: below(window, "table", "Property list"))
    outline = Outline(table)
    wait_for("the rows", lambda: outline.table.nRows > 1)
    headers = [outline.table.getColumnHeader(column).name for column in range(3)]
    assert headers == ["Key", "Type", "Value"], headers

    wait_for_the_bus(outline)
    expand(outline)
    move_by_keys(outline)
    delete(outline)
    toggle(outline)
    edit(outline)
    refuse(outline)
    rows = outline.table.nRows
    act(below(window, "push button", "Add Item"), "Press")
    wait_for("the new item", lambda: outline.table.nRows == rows + 1)
    wait_to_hear("focus text Key")
    press("Return")
    wait_to_hear("focus table cell New Item")
    act(below(window, "push button", "Delete"), "Press")
    wait_for("the item to go", lambda: outline.table.nRows == rows)
    act(below(window, "menu item", "Save"), "Press")


main(sys.argv[1])
