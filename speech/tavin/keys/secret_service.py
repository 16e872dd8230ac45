"""One request to the desktop's Secret Service: `python3 -m tavin.keys.secret_service PARENT-PID`.

The request comes by standard input and the answer goes to standard output, both
JSON, so no key is in a process list. Only `store`, `remove` and a `get` that may
prompt unlock what is locked: the user may see a password dialog, which is waited for.
"""

import json
import os
import sys

from tavin.process import lifetime


class Failure(Exception):
    """Text for the user."""


def attributes(name):
    return {"application": "tavin", "type": "api-key", "engine": name}


def search(service, connection, names, activate):
    """Which keys there are. One by one: a locked keyring finds attributes but does not show them."""
    if not activate and not is_running(connection):
        return {"running": False}
    found = [name for name in names if any(service.search_items(connection, attributes(name)))]
    return {"running": True, "names": found}


def is_running(connection):
    from jeepney import DBusAddress, new_method_call

    bus = DBusAddress("/org/freedesktop/DBus", "org.freedesktop.DBus", "org.freedesktop.DBus")
    question = new_method_call(bus, "NameHasOwner", "s", ("org.freedesktop.secrets",))
    return connection.send_and_get_reply(question).body[0] is True


def get(service, connection, name, prompt):
    items = list(service.search_items(connection, attributes(name)))
    if not items:
        return {"key": None}
    if items[0].is_locked() and not prompt:
        raise Failure("The keyring is locked.")
    unlock(items[0])
    return {"key": items[0].get_secret().decode()}


def store(service, connection, name, label, key):
    collection = service.get_default_collection(connection)
    unlock(collection)
    new = collection.create_item(
        f"{label} API key for Tavin", attributes(name), key.encode(), replace=True
    )
    for item in service.search_items(connection, attributes(name)):
        if item.item_path != new.item_path:  # of a former default collection
            unlock(item)
            item.delete()
    return {}


def remove(service, connection, name):
    for item in service.search_items(connection, attributes(name)):
        unlock(item)
        item.delete()
    return {}


def unlock(locked):
    if locked.is_locked() and locked.unlock():
        raise Failure("The keyring was not unlocked.")


REQUESTS = {request.__name__: request for request in (search, get, store, remove)}


def answer(do, **request):
    try:
        import secretstorage
    except ImportError:
        return absent("Package python3-secretstorage is not installed.")
    try:
        connection = secretstorage.dbus_init()
    except (secretstorage.SecretServiceNotAvailableException, KeyError, OSError, ValueError):
        return absent("Without a session bus, the keyring cannot be reached.")
    try:
        return REQUESTS[do](secretstorage, connection, **request)
    except Failure as failure:
        return {"failure": str(failure)}
    except secretstorage.PromptDismissedException:
        return {"failure": "The keyring was not unlocked."}
    except secretstorage.SecretServiceNotAvailableException:
        return absent("This desktop has no Secret Service, such as GNOME Keyring or KDE Wallet.")
    except Exception as failure:  # its text may quote what was asked
        return {"failure": f"The keyring failed ({type(failure).__name__})."}


def absent(text):
    return {"failure": text, "absent": True}


def main():
    lifetime.end_with_parent(int(sys.argv[1]))
    lifetime.ignore_terminal_signals()
    output = lifetime.claim_output()
    with os.fdopen(output, "w", encoding="utf-8") as file:
        json.dump(answer(**json.load(sys.stdin)), file)


if __name__ == "__main__":
    main()
