"""The player's place on the session bus, from the first text that is read to the end of the last.

Runs on the event loop. Each wait for the bus has a deadline; without one, or when it hangs, the engine goes on
as if there were no desktop.
"""

import asyncio

from jeepney import DBusAddress, HeaderFields, MessageFlag, MessageType, new_error, new_method_return, new_signal
from jeepney.auth import BEGIN, Authenticator
from jeepney.bus import get_bus
from jeepney.bus_messages import message_bus
from jeepney.io.asyncio import DBusConnection

from tavin.log import log
from tavin.mpris.introspection import introspection
from tavin.mpris.player import PATH, PLAYER, PROPERTIES, Unknown, nothing, refused, unknown

NAME = "org.mpris.MediaPlayer2.tavin"
PATIENCE = 2.0
# Much more than players are sent, and parsed in some 10 ms. The bus carries 128 MB.
LARGEST_MESSAGE = 1 << 14
# After a message that ends one, and how many for a text: a peer that ends each is left alone.
AGAIN = 1.0
CONNECTIONS = 5
OWNED = 1  # the bus's answer to who has a name now


class Presence:
    def __init__(self, player):
        self._player = player
        self._task = None
        self._left = 0  # connections for this text
        self._changed = asyncio.Event()
        self._trouble = None  # the last, which was told

    def show(self):
        """For a text, also one that takes another's place."""
        self._left = CONNECTIONS
        if not self._task or self._task.done():
            self._task = asyncio.get_running_loop().create_task(self._be_there())

    def hide(self):
        if self._task:
            self._task.cancel()
            self._task = None

    def tell(self):
        """A property may have changed."""
        self._changed.set()

    async def _be_there(self):
        while await self._until_trouble():
            self._left -= 1
            if not self._left:
                return
            await asyncio.sleep(AGAIN)

    async def _until_trouble(self):
        """Whether there was a bus."""
        connection = None
        try:
            async with asyncio.timeout(PATIENCE):
                connection = await connect()
            async with asyncio.TaskGroup() as both:
                both.create_task(self._serve(connection))
                both.create_task(self._tell(connection))
        except* Exception as failures:  # whatever a message that is none makes of its reader too
            self._tell_trouble(f"no player on the session bus ({type(failures.exceptions[0]).__name__})")
        finally:
            if connection:
                connection.writer.transport.abort()  # and the bus takes the name back
        return connection is not None

    def _tell_trouble(self, text):
        if text and text != self._trouble:
            log.info("%s", text)
        self._trouble = text

    async def _serve(self, connection):
        await send(connection, message_bus.Hello())
        wish = next(connection.outgoing_serial)
        await send(connection, message_bus.RequestName(NAME), serial=wish)
        while True:
            message = await receive(connection)
            if message.header.message_type == MessageType.method_call:
                await self._obey(connection, message)
            elif message.header.fields.get(HeaderFields.reply_serial) == wish:
                owned = message.header.message_type == MessageType.method_return and message.body == (OWNED,)
                self._tell_trouble(None if owned else "another program has the player's name on the session bus")
            await asyncio.sleep(0)  # however many have come

    async def _obey(self, connection, call):
        make, arguments, act = await self._answer(call)
        if not call.header.flags & MessageFlag.no_reply_expected:
            await send(connection, make(call, *arguments))
        act()  # only now: a stop ends the connection

    async def _answer(self, call):
        """What kind, with what, and what is to be done then."""
        fields = call.header.fields
        interface, name = fields.get(HeaderFields.interface), fields[HeaderFields.member]
        try:
            if fields[HeaderFields.path] != PATH:
                raise unknown("Object")
            if interface == PROPERTIES:
                values = await self._property(name, fields.get(HeaderFields.signature, ""), call.body)
                return new_method_return, values, nothing
            if (interface, name) == ("org.freedesktop.DBus.Introspectable", "Introspect"):
                return new_method_return, ("s", (introspection(self._player),)), nothing
            return new_method_return, (), self._player.method(interface, name)
        except Unknown as failure:
            error, text = failure.args
            return new_error, (error, "s", (text,)), nothing

    async def _property(self, method, signature, arguments):
        """The answer's type and values."""
        if {"Get": "ss", "GetAll": "s", "Set": "ssv"}.get(method) != signature:
            raise refused("InvalidArgs", "These are not the arguments.")
        if method == "Get":
            return "v", (self._player.property(*arguments),)
        if method == "GetAll":
            return "a{sv}", (self._player.properties(*arguments),)
        await self._player.set(*arguments)
        return None, ()

    async def _tell(self, connection):
        told = self._player.properties(PLAYER)
        while True:
            await self._changed.wait()
            self._changed.clear()
            now = self._player.properties(PLAYER)
            if changed := {name: value for name, value in now.items() if told[name] != value}:
                about = DBusAddress(PATH, interface=PROPERTIES)
                await send(connection, new_signal(about, "PropertiesChanged", "sa{sv}as", (PLAYER, changed, [])))
            told = now


async def connect():
    reader, writer = await asyncio.open_unix_connection(get_bus("SESSION"))
    try:
        login = Authenticator()
        for line in login:
            writer.write(line)
            received = await reader.read(1024)
            if not received:
                raise EOFError
            login.feed(received)
        writer.write(BEGIN)
    except BaseException:
        writer.transport.abort()
        raise
    return DBusConnection(reader, writer)


async def receive(connection):
    """The next message. ValueError for one whose parsing would hold the event loop up."""
    while (message := connection.parser.get_next_message()) is None:
        if connection.parser.bytes_desired() > LARGEST_MESSAGE:
            raise ValueError
        data = await connection.reader.read(4096)
        if not data:
            raise EOFError
        connection.parser.add_data(data)
    return message


async def send(connection, message, serial=None):
    """A bus that takes nothing any more holds nobody up."""
    async with asyncio.timeout(PATIENCE):
        await connection.send(message, serial=serial)
