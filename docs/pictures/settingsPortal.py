#!/usr/bin/python3
"""Stands on the session bus as a desktop that prefers dark windows, or light ones.

usage: settingsPortal.py dark|light COMMAND [ARGUMENT…]

Runs the command when it is there, and gives its exit code.
"""

import subprocess
import sys
import threading

import dbus
import dbus.mainloop.glib
import dbus.service
from gi.repository import GLib

INTERFACE = "org.freedesktop.portal.Settings"
SETTING = ("org.freedesktop.appearance", "color-scheme")
ANSWERS = {"dark": 1, "light": 2}


class SettingsPortal(dbus.service.Object):
    def __init__(self, bus, scheme):
        super().__init__(bus, "/org/freedesktop/portal/desktop")
        self.scheme = scheme

    @dbus.service.method(INTERFACE, in_signature="ss", out_signature="v")
    def Read(self, group, key):
        if (group, key) != SETTING:
            raise dbus.exceptions.DBusException("There is no such setting.")
        return dbus.UInt32(ANSWERS[self.scheme], variant_level=2)


def main():
    dbus.mainloop.glib.DBusGMainLoop(set_as_default=True)
    bus = dbus.SessionBus()
    name = dbus.service.BusName("org.freedesktop.portal.Desktop", bus, do_not_queue=True)
    portal = SettingsPortal(bus, sys.argv[1])
    loop = GLib.MainLoop()
    status = []

    def run():
        status.append(subprocess.call(sys.argv[2:]))
        loop.quit()

    threading.Thread(target=run).start()
    loop.run()
    return status[0]


sys.exit(main())
