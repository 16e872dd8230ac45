"""How a desktop is made to look, as its settings would."""

import os

# A part of each: what windows, fields, buttons and chosen things are drawn in, and their text.
DARK = {"Window": ("35,38,41", "252,252,252"), "View": ("27,30,32", "252,252,252"),
        "Button": ("49,54,59", "252,252,252"), "Selection": ("61,174,233", "252,252,252")}
HIGH_CONTRAST = {"Window": ("0,0,0", "255,255,255"), "View": ("0,0,0", "255,255,255"),
                 "Button": ("0,0,0", "255,255,0"), "Selection": ("255,255,0", "0,0,0")}


def set_plasma_look(session, colours, font_size=10):
    """Returns the variables by which Qt's programs look for it."""
    lines = [f"[General]\nfont=Noto Sans,{font_size},-1,5,50,0,0,0,0,0\n"]
    for group, (ground, text) in colours.items():
        lines.append(f"[Colors:{group}]\nBackgroundNormal={ground}\nForegroundNormal={text}\n"
                     f"ForegroundInactive={text}\nForegroundLink={text}\nForegroundVisited={text}\n"
                     f"BackgroundAlternate={ground}\n")
    with open(os.path.join(session.env["XDG_CONFIG_HOME"], "kdeglobals"), "w",
              encoding="utf-8") as f:
        f.writelines(lines)
    return {"XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true", "KDE_SESSION_VERSION": "5"}
