"""The copy keys are where the user's layout has them."""

import pytest
from driver import Tavin
from kwin_desktop import KwinDesktop
from kwin_session import KwinSession

TEXT = "only a copy brings this text"
SYMBOLS = """xkb_symbols "{name}" {{
    include "us"
    replace key <INS> {{ [ Delete ] }};
    replace key <SCLK> {{ [ {scroll} ] }};
}};
"""


@pytest.fixture
def under(tmp_path, build):
    """A session whose Insert key deletes, and whose Scroll Lock key has that symbol."""
    sessions = []

    def start(scroll):
        folder = tmp_path / "home/.config/xkb/symbols"
        folder.mkdir(parents=True)
        (folder / "tavin_test").write_text(SYMBOLS.format(name="basic", scroll=scroll))
        session = KwinSession(str(tmp_path), build, native=True, layout=("tavin_test", "basic"))
        sessions.append(session.__enter__())
        return KwinDesktop(session)
    yield start
    for session in sessions:
        session.__exit__()


@pytest.mark.parametrize(("scroll", "read"), [("Insert", [TEXT]), ("Scroll_Lock", [])])
def test_insert_is_pressed_where_it_is(under, engine, build, scroll, read):
    desktop = under(scroll)
    tavin = Tavin(desktop, engine, build)
    desktop.own("clipboard", "copied before")
    desktop.open_bare_field(build, TEXT)
    try:
        assert tavin.press() == read
        assert desktop.clipboard_text() == "copied before"
    finally:
        desktop.close()
