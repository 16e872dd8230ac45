"""KWin that ends and is started again. Plasma 6's session keeps its socket meanwhile and tells Qt to
connect anew, so that programs live on."""

import os
import socket

import pytest
from kwin_session import SOCKET, GlobalAccel, KwinSession
from session import stop, wait_until

TEXT, LATER = "read before", "read afterwards"


class LastingSession(KwinSession):
    _socket = None

    def _files_to_inherit(self):
        if not self._socket:
            self._socket = socket.socket(socket.AF_UNIX)
            self._socket.bind(os.path.join(self.env["XDG_RUNTIME_DIR"], SOCKET))
            self._socket.listen()
        return [self._socket.fileno()]

    def __exit__(self, *_):
        super().__exit__()
        if self._socket:
            self._socket.close()


@pytest.fixture
def session(tmp_path, build):
    with LastingSession(str(tmp_path), build, native=True) as private:
        private.env["QT_WAYLAND_RECONNECT"] = "1"
        yield private


@pytest.mark.parametrize("bare", [False, True], ids=["accessibility", "copy"])
def test_the_next_press_reads(session, desktop, tavin, build, bare):
    def field(text):
        if bare:
            desktop.open_bare_field(build, text)
        else:
            desktop.open([os.path.join(build, "bin/qt6_field"), text], "Qt 6 field")
            desktop.select_until(text, lambda: desktop.key("ctrl+a"))

    field(TEXT)
    assert tavin.press() == [TEXT]
    stop(desktop.last_program)
    session.kill_kwin()
    session.start_kwin()
    accel = GlobalAccel(session)
    wait_until(lambda: len(accel.actions("app.tavin.Tavin")) == 2, 10, "the shortcuts")
    field(LATER)
    assert tavin.press() == [LATER]
    assert tavin.press() == [LATER]
    assert tavin.quit()[0] == 0
