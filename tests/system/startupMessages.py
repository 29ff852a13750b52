#!/usr/bin/python3
"""Prints the messages by which launchers and programs speak of starts (Startup Notification
Protocol), one a line, until it is ended. The first line is "listening"."""

from Xlib import X, display


def main():
    server = display.Display()
    begin = server.intern_atom("_NET_STARTUP_INFO_BEGIN")
    more = server.intern_atom("_NET_STARTUP_INFO")
    server.screen().root.change_attributes(event_mask=X.PropertyChangeMask)
    server.sync()
    print("listening", flush=True)
    parts = {}
    while True:
        event = server.next_event()
        if event.type != X.ClientMessage or event.client_type not in (begin, more):
            continue
        sender = event.window.id
        if event.client_type == begin:
            parts[sender] = b""
        parts[sender] = parts.get(sender, b"") + bytes(event.data[1])
        if b"\0" in parts[sender]:
            message = parts.pop(sender).split(b"\0")[0]
            print(message.decode("utf-8", "replace"), flush=True)


main()
