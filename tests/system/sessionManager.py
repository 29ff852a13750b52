#!/usr/bin/env python3
"""A session manager of X11 for one program (XSMP), by the library of the X Window System.

usage: sessionManager.py COMMANDS ANSWERS

COMMANDS and ANSWERS are named pipes. At first its address, for SESSION_MANAGER, stands in ANSWERS.
"end" in COMMANDS ends the session: the program saves itself, its restart command comes, one word a
line and then an empty line, and it is told to quit.
"""

import ctypes
import select
import sys
from ctypes import CFUNCTYPE, POINTER, Structure, byref, c_char_p, c_int, c_ulong, c_void_p

SAVE_BOTH, INTERACT_NONE = 2, 0
CONNECT_PENDING, CONNECT_ACCEPTED = 0, 1
REGISTER_CLIENT, SAVE_DONE, CLOSE_CONNECTION, SET_PROPERTIES = 0, 5, 6, 7

ice = ctypes.CDLL("libICE.so.6")
sm = ctypes.CDLL("libSM.so.6")
ice.IceAcceptConnection.restype = c_void_p
ice.IceComposeNetworkIdList.restype = c_char_p
sm.SmsGenerateClientID.restype = c_void_p


class Value(Structure):
    _fields_ = [("length", c_int), ("bytes", c_void_p)]


class Property(Structure):
    _fields_ = [("name", c_char_p), ("type", c_char_p), ("count", c_int), ("values", POINTER(Value))]


class Callback(Structure):
    _fields_ = [("function", c_void_p), ("data", c_void_p)]


NewClient = CFUNCTYPE(c_int, c_void_p, c_void_p, POINTER(c_ulong), POINTER(Callback),
                      POINTER(c_char_p))
RegisterClient = CFUNCTYPE(c_int, c_void_p, c_void_p, c_void_p)
SaveDone = CFUNCTYPE(None, c_void_p, c_void_p, c_int)
CloseConnection = CFUNCTYPE(None, c_void_p, c_void_p, c_int, POINTER(c_char_p))
SetProperties = CFUNCTYPE(None, c_void_p, c_void_p, c_int, POINTER(POINTER(Property)))
Anyone = CFUNCTYPE(c_int, c_char_p)


class Session:
    def __init__(self, answers):
        self.answers = answers
        self.program = None
        self.restart = []
        self.is_ending = False
        self.connections = {}
        # What the library calls must live as long as it may call.
        self.calls = {
            REGISTER_CLIENT: RegisterClient(self.register_client),
            SAVE_DONE: SaveDone(self.save_done),
            CLOSE_CONNECTION: CloseConnection(self.close_connection),
            SET_PROPERTIES: SetProperties(self.set_properties),
        }
        self.ignore = CFUNCTYPE(None)(lambda: None)
        self.new_client = NewClient(self.add_client)
        self.anyone = Anyone(lambda host: 1)

    def listen(self):
        """The addresses to listen to, by their descriptors."""
        text = ctypes.create_string_buffer(256)
        if not sm.SmsInitialize(b"test", b"1", self.new_client, None, self.anyone, 256, text):
            sys.exit(text.value.decode())
        count, listeners = c_int(), POINTER(c_void_p)()
        if not ice.IceListenForConnections(byref(count), byref(listeners), 256, text):
            sys.exit(text.value.decode())
        found = [c_void_p(listeners[index]) for index in range(count.value)]
        for listener in found:
            ice.IceSetHostBasedAuthProc(listener, self.anyone)
        self.tell(ice.IceComposeNetworkIdList(count, listeners).decode())
        return {ice.IceGetListenConnectionNumber(listener): listener for listener in found}

    def tell(self, *lines):
        for line in lines:
            print(line, file=self.answers)
        self.answers.flush()

    def accept(self, listener):
        status = c_int()
        connection = c_void_p(ice.IceAcceptConnection(listener, byref(status)))
        while ice.IceConnectionStatus(connection) == CONNECT_PENDING:
            ice.IceProcessMessages(connection, None, None)
        if ice.IceConnectionStatus(connection) != CONNECT_ACCEPTED:
            sys.exit("A connection was refused.")
        self.connections[ice.IceConnectionNumber(connection)] = connection

    def add_client(self, program, data, mask, callbacks, reason):
        mask[0] = (1 << 10) - 1
        for index in range(10):
            call = self.calls.get(index, self.ignore)
            callbacks[index].function = ctypes.cast(call, c_void_p)
        return 1

    def register_client(self, program, data, previous):
        self.program = c_void_p(program)
        sm.SmsRegisterClientReply(self.program, c_void_p(sm.SmsGenerateClientID(self.program)))
        return 1

    def set_properties(self, program, data, count, properties):
        for index in range(count):
            found = properties[index].contents
            if found.name == b"RestartCommand":
                values = [found.values[word] for word in range(found.count)]
                self.restart = [ctypes.string_at(value.bytes, value.length).decode("latin-1")
                                for value in values]

    def save_done(self, program, data, has_succeeded):
        if self.is_ending:
            self.tell(*self.restart, "")
            sm.SmsDie(self.program)

    def close_connection(self, program, data, count, reasons):
        sm.SmsCleanUp(self.program)
        self.connections.clear()
        self.is_ending = False

    def end(self):
        self.is_ending = True
        sm.SmsSaveYourself(self.program, SAVE_BOTH, 1, INTERACT_NONE, 0)

    def run(self, commands):
        listeners = self.listen()
        while True:
            ready, _, _ = select.select([commands, *listeners, *self.connections], [], [])
            for source in ready:
                if source is commands:
                    if commands.readline() != "end\n":
                        return
                    self.end()
                elif source in listeners:
                    self.accept(listeners[source])
                elif source in self.connections:
                    ice.IceProcessMessages(self.connections[source], None, None)


def main():
    with open(sys.argv[2], "w", encoding="utf-8") as answers, \
            open(sys.argv[1], encoding="utf-8") as commands:
        Session(answers).run(commands)


main()
