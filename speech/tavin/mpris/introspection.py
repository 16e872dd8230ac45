"""What the player's object is, for whoever asks it."""

from tavin.mpris.player import PLAYER, PROGRAM

READ_WRITE = {"Rate", "Volume"}
PLAYER_METHODS = ("Next", "Previous", "Pause", "PlayPause", "Stop", "Play")
WITH_ARGUMENTS = """<method name="Seek"><arg type="x" name="Offset" direction="in"/></method>
<method name="SetPosition"><arg type="o" name="TrackId" direction="in"/>
<arg type="x" name="Position" direction="in"/></method>
<method name="OpenUri"><arg type="s" name="Uri" direction="in"/></method>
"""
STANDARD = """<interface name="org.freedesktop.DBus.Properties">
<method name="Get"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="out"/></method>
<method name="GetAll"><arg type="s" direction="in"/><arg type="a{sv}" direction="out"/></method>
<method name="Set"><arg type="s" direction="in"/><arg type="s" direction="in"/><arg type="v" direction="in"/></method>
<signal name="PropertiesChanged"><arg type="s"/><arg type="a{sv}"/><arg type="as"/></signal>
</interface>
<interface name="org.freedesktop.DBus.Introspectable">
<method name="Introspect"><arg type="s" direction="out"/></method>
</interface>
"""


def interface(name, methods, properties, more=""):
    lines = [f'<interface name="{name}">']
    lines += [f'<method name="{method}"/>' for method in methods]
    for known, (kind, _) in properties.items():
        access = "readwrite" if known in READ_WRITE else "read"
        lines.append(f'<property name="{known}" type="{kind}" access="{access}"/>')
    return "\n".join([*lines, more + "</interface>\n"])


def introspection(player):
    return (
        "<node>\n"
        + interface(PROGRAM, ("Raise", "Quit"), player.properties(PROGRAM))
        + interface(PLAYER, PLAYER_METHODS, player.properties(PLAYER), WITH_ARGUMENTS)
        + STANDARD
        + "</node>\n"
    )
