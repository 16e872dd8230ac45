"""What the desktop's players, media keys and headset buttons see of a reading (MPRIS)."""

from tavin.log import log


class Nowhere:
    """For who wants no player, or has no library for one."""

    def show(self):
        pass

    hide = tell = show


def presence_of(player):
    """Where the desktop sees the player. Loading the library may take 30 ms."""
    try:
        from tavin.mpris.presence import Presence
    except ImportError:
        log.info("the desktop shows no player: python3-jeepney is missing")
        return Nowhere()
    return Presence(player)
