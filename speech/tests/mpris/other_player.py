"""Another program's player, which writes each thing that it is asked for into a file."""

import sys
from pathlib import Path

from jeepney import DBusAddress, HeaderFields, MessageType, new_error, new_method_return, new_signal
from jeepney.bus_messages import message_bus
from jeepney.io.blocking import open_dbus_connection

PATH, PROGRAM = "/org/mpris/MediaPlayer2", "org.mpris.MediaPlayer2"
PLAYER = PROGRAM + ".Player"
PROPERTIES = "org.freedesktop.DBus.Properties"
PLAYING = {
    "PlaybackStatus": ("s", "Playing"),
    "CanControl": ("b", True),
    **{f"Can{ability}": ("b", True) for ability in ("Play", "Pause", "GoNext", "GoPrevious")},
    "Metadata": ("a{sv}", {"mpris:trackid": ("o", "/song"), "xesam:title": ("s", "A song")}),
}


def answer(call):
    name = call.header.fields[HeaderFields.member]
    if name == "GetAll" and call.body[0] in (PLAYER, PROGRAM):
        return new_method_return(call, "a{sv}", (PLAYING if call.body[0] == PLAYER else {"Identity": ("s", "Other")},))
    if name == "GetAll":
        return new_error(call, "org.freedesktop.DBus.Error.UnknownInterface")
    if name == "Get":
        return new_method_return(call, "v", (PLAYING.get(call.body[1], ("s", "")),))
    return new_method_return(call)


def serve(connection, asked):
    connection.send_and_get_reply(message_bus.RequestName("org.mpris.MediaPlayer2.other"))
    begins = new_signal(DBusAddress(PATH, interface=PROPERTIES), "PropertiesChanged", "sa{sv}as", (PLAYER, PLAYING, []))
    connection.send(begins)
    while True:
        call = connection.receive()
        if call.header.message_type == MessageType.method_call:
            if call.header.fields.get(HeaderFields.interface) == PLAYER:
                with asked.open("a", encoding="utf-8") as file:
                    file.write(call.header.fields[HeaderFields.member] + "\n")
            connection.send(answer(call))


if __name__ == "__main__":
    serve(open_dbus_connection(), Path(sys.argv[1]))
