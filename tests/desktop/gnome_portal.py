"""GNOME from 48 on: its portal gives shortcuts, after one dialog, and remembers its answer."""

import contextlib
import os
import shutil

from gnome_desktop import GnomeDesktop, NativeGnome, WillingDesktop
from session import SessionError, wait_until

DAEMON = "org.gnome.settings-daemon.global-shortcuts"
PROGRAM = "app.tavin.Tavin"
PERMISSION = "tavin/remote-desktop-token"
PROGRAM_SHORTCUTS = f"{DAEMON}.application:/org/gnome/settings-daemon/global-shortcuts/{PROGRAM}/"


class PortalGnome(NativeGnome):
    """Tavin is installed: the portal asks for its desktop file."""

    def __init__(self, folder, build, **kwargs):
        super().__init__(folder, **kwargs)
        applications = os.path.join(self.env["XDG_DATA_HOME"], "applications")
        os.makedirs(applications)
        shutil.copy(os.path.join(build, "share/applications", PROGRAM + ".desktop"), applications)

    def forget_shortcuts(self):
        """The next registration is the first."""
        self.run(["gsettings", "reset", PROGRAM_SHORTCUTS, "shortcuts"])
        self.set(DAEMON, "applications", "[]")

    def granted_shortcuts(self):
        return self.get(PROGRAM_SHORTCUTS, "shortcuts")


class GrantedGnome(PortalGnome):
    """The user has answered the dialog about Alt+Escape in an earlier session."""

    def _start_compositor(self):
        super()._start_compositor()
        granted = ", ".join(
            f"('{name}', {{'shortcuts': <['{key}']>, 'description': <'Tavin'>}})"
            for name, key in (("speak-alt-escape", "<Alt>Escape"),
                              ("pause-alt-shift-escape", "<Shift><Alt>Escape")))
        self.set(PROGRAM_SHORTCUTS, "shortcuts", f"[{granted}]")
        self.set(DAEMON, "applications", f"['{PROGRAM}']")


class PortalDesktop(GnomeDesktop):
    """The user has allowed no copies yet."""

    SHORTCUT_DIALOG = "Add Keyboard Shortcuts"
    DIALOG, ALLOW, SHARE = "Remote Desktop", (575, 157), (612, 23)

    def __init__(self, session):
        super().__init__(session)
        self.forget_permission()

    def share_again(self):
        """The user has chosen to be asked once."""

    def forget_permission(self):
        with contextlib.suppress(FileNotFoundError):
            os.unlink(os.path.join(self.session.env["XDG_CONFIG_HOME"], PERMISSION))

    def shortcut_dialogs(self):
        return [w["id"] for w in self.all_windows()
                if w["title"] == self.SHORTCUT_DIALOG and w["focused"] and w["rect"][2]]

    def _answer(self, act):
        """It takes clicks a moment after it is shown."""
        def gone():
            for dialog in self.shortcut_dialogs():
                act(dialog)
            with contextlib.suppress(SessionError):
                return wait_until(lambda: not self.titled(self.SHORTCUT_DIALOG), 1.5)
            return False
        wait_until(self.shortcut_dialogs, 15, "the dialog about shortcuts")
        wait_until(gone, 20, "its end")

    def add_shortcuts(self):
        self._answer(lambda dialog: self.click(dialog, self.window(dialog)["rect"][2] - 40, 23))

    def cancel_shortcuts(self):
        self._answer(lambda dialog: self.click(dialog, 50, 23))


class WillingPortalDesktop(PortalDesktop, WillingDesktop):
    """The user whom the portal's other dialog is shown to as well."""
