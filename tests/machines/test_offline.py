"""Where everything is installed, nothing else is needed: no network, no sudo, no name in ASCII. Two
checkouts stand side by side."""

import pytest
from machine import Machine

FIRST, SECOND = "~/'Meine Übungen/tavin größer'", "~/'Meine Übungen/zweite Fassung'"
HOLDER = """
import socket, sys
holder = socket.create_server(("127.0.0.1", 47632))
print("held", flush=True)
sys.stdin.read()
"""
# In a folder that is not the root of all mounts the kernel gives nobody namespaces.
CONFINED = ("unshare --map-current-user --keep-caps /usr/sbin/chroot /srv "
            "sh -c 'cd \"$0\" && exec \"$@\"' \"$PWD\"")


@pytest.fixture(scope="module")
def machine():
    prepare = f"tools/setup test && git clone -q . {SECOND} && sudo mount --rbind / /srv"
    with Machine("debian12", "--without-sudo", "--without-network", "--prepare", prepare,
                 "--checkout", "Meine Übungen/tavin größer") as made:
        yield made


def at_the_same_time(command):
    """In both checkouts. Ends with 0 where both do."""
    return (f"cd {FIRST}; {command} & first=$!; cd {SECOND}; {command}; second=$?; "
            f"wait $first && [ $second = 0 ]")


def test_the_demonstration_speaks(machine):
    assert " s of speech: /home/user/Meine Übungen/tavin größer/build" in machine.check("make run")


def test_two_checkouts_speak_at_the_same_time(machine):
    printed = machine.check(at_the_same_time("make run"))
    for name in ("tavin größer", "zweite Fassung"):
        assert f" s of speech: /home/user/Meine Übungen/{name}/build" in printed


def test_two_checkouts_are_tested_at_the_same_time(machine):
    machine.check(at_the_same_time("make build-tests"), 900)
    tests = "unit_test|engine_test|real_engine|desktop_terminals|desktop_shortcuts|speech_sound|packaging"
    machine.check(at_the_same_time(
        f"ctest --test-dir build -j2 --no-tests=error --output-on-failure -R '{tests}'"), 900)


def with_the_port_held(command):
    return (f"coproc holder {{ exec python3 -c '{HOLDER}'; }}; read -ru ${{holder[0]}} && "
            f"{{ {command}; }}; code=$?; kill $holder_PID; exit $code")


def test_another_program_on_the_port_does_not_disturb_the_demonstration(machine):
    assert " s of speech: " in machine.check(with_the_port_held("make run"))


def test_where_there_are_no_namespaces_the_demonstration_speaks(machine):
    assert " s of speech: " in machine.check(f"{CONFINED} make run")


def test_where_there_are_no_namespaces_another_program_on_the_port_is_told(machine):
    code, printed = machine.run(with_the_port_held(f"{CONFINED} tools/run build"), 60)
    assert code == 1
    assert printed.splitlines()[-1] == (
        "in-session: another program holds port 47632, and this machine gives tests no network of their own")
