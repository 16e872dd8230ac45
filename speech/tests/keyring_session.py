"""A session bus of the tests' own with the real GNOME Keyring on it, and nothing that could ask the user."""

import contextlib
import signal
import subprocess

import secretstorage
from jeepney import DBusAddress, new_method_call
from jeepney.io.blocking import open_dbus_connection
from sound import WITH_US, until

BUS = """<!DOCTYPE busconfig PUBLIC "-//freedesktop//DTD D-BUS Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig><type>session</type><listen>unix:path={socket}</listen><servicedir>{services}</servicedir><auth>EXTERNAL</auth>
<policy context="default"><allow send_destination="*" eavesdrop="true"/><allow eavesdrop="true"/>
<allow own="*"/></policy></busconfig>
"""


class KeyringSession:
    def __init__(self, folder, environment, password="secret of the session"):
        self.folder = folder
        self._password = password
        self._log = open(folder / "keyring.log", "wb")
        bus = folder / "bus"
        config = folder / "bus.conf"
        self._services = folder / "services"
        self._services.mkdir()
        config.write_text(BUS.format(socket=bus, services=self._services))
        self.environment = {"DBUS_SESSION_BUS_ADDRESS": f"unix:path={bus}"}
        self._environment = {
            **environment,
            **self.environment,
            "HOME": str(folder),
            "XDG_DATA_HOME": str(folder / "keys"),
            "XDG_RUNTIME_DIR": str(folder),
        }
        self._bus = self._start("dbus-daemon", f"--config-file={config}", "--nofork")
        until(self._listening, 10, "the bus")
        self.start_keyring()

    def start_keyring(self):
        self.keyring = self._start(
            *("gnome-keyring-daemon", "--foreground", "--components=secrets", "--unlock"),
            f"--control-directory={self.folder}",
        )
        self.keyring.stdin.write(self._password.encode())
        self.keyring.stdin.close()
        until(self._ready, 10, "the keyring")

    def stored(self, name):
        """The keys of one back-end, as everybody with access to the keyring sees them."""
        with self.connected() as connection:
            items = secretstorage.search_items(connection, {"application": "tavin", "engine": name})
            return [item.get_secret().decode() for item in items]

    def lock(self):
        with self.connected() as connection:
            secretstorage.Collection(connection).lock()

    def locked(self):
        with self.connected() as connection:
            return secretstorage.Collection(connection).is_locked()

    def freeze(self, frozen):
        self.keyring.send_signal(signal.SIGSTOP if frozen else signal.SIGCONT)

    @contextlib.contextmanager
    def connected(self):
        connection = open_dbus_connection(self.environment["DBUS_SESSION_BUS_ADDRESS"])
        try:
            yield connection
        finally:
            connection.close()

    def install_service(self):
        """Have the bus start something that is no keyring; the file that shows that it did."""
        marker = self.folder / "started"
        service = f"[D-BUS Service]\nName=org.freedesktop.secrets\nExec=/usr/bin/touch {marker}\n"
        (self._services / "org.freedesktop.secrets.service").write_text(service)
        with self.connected() as connection:
            bus = DBusAddress("/org/freedesktop/DBus", "org.freedesktop.DBus", "org.freedesktop.DBus")
            connection.send_and_get_reply(new_method_call(bus, "ReloadConfig"))
        return marker

    def end_keyring(self):
        self.keyring.kill()
        self.keyring.wait()

    def freeze_bus(self, frozen=True):
        self._bus.send_signal(signal.SIGSTOP if frozen else signal.SIGCONT)

    def end_bus(self):
        self._bus.kill()
        self._bus.wait()

    def end(self):
        for process in (self.keyring, self._bus):
            process.kill()
            process.wait()
        self._log.close()

    def _start(self, *command):
        return subprocess.Popen(
            [*WITH_US, *command],
            env=self._environment,
            stdin=subprocess.PIPE,
            stdout=self._log,
            stderr=self._log,
        )

    def _listening(self):
        try:
            with self.connected():
                return True
        except OSError:
            return False

    def _ready(self):
        try:
            return not self.locked()
        except (secretstorage.SecretServiceNotAvailableException, secretstorage.ItemNotFoundException):
            return False
