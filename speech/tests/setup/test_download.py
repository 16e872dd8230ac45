"""Getting the neural voice's files from servers good and bad."""

import hashlib
import random
import resource
import time

import file_server as does
import pytest
from tavin.setup import download
from tavin.setup.download import DownloadError, fetch, is_whole
from tavin.setup.needs import File

CONTENT = random.Random(1).randbytes(300_000)
STALL = 0.3


@pytest.fixture
def server(server):
    server.files["model.onnx"] = CONTENT
    return server


@pytest.fixture
def file(server, tmp_path, monkeypatch):
    monkeypatch.setenv("XDG_DATA_HOME", str(tmp_path))
    digest = hashlib.sha256(CONTENT).hexdigest()
    return File("kokoro", "Kokoro", "model.onnx", server.url("model.onnx"), len(CONTENT), digest)


def get(file):
    sizes = []
    fetch(file, sizes.append, stall=STALL, pause=0.001)
    assert file.path.read_bytes() == CONTENT
    assert is_whole(file.path, file)
    assert [path.name for path in file.path.parent.iterdir()] == ["model.onnx"]
    return sizes


def refused(file):
    with pytest.raises(DownloadError) as caught:
        fetch(file, lambda size: None, stall=STALL, pause=0.001)
    assert not file.path.exists()
    assert "Kokoro again" in str(caught.value)
    return str(caught.value)


def part(file):
    return file.path.with_name("model.onnx.part")


def leave_part(file, content):
    file.path.parent.mkdir(parents=True)
    part(file).write_bytes(content)


def test_a_good_server(server, file, tmp_path):
    sizes = get(file)
    assert file.path == tmp_path / "tavin" / "kokoro" / "model.onnx"
    assert sizes == sorted(sizes)
    assert sizes[-1] == len(CONTENT)
    assert server.requests == [("model.onnx", 0)]


@pytest.mark.parametrize("spoil", [does.cut_after, does.stall_after])
def test_after_a_cut_or_a_stall_it_goes_on_where_it_was(server, file, spoil):
    server.plans = [spoil(100_000), spoil(50_000)]
    get(file)
    assert server.requests == [("model.onnx", begin) for begin in (0, 100_000, 150_000)]


def test_after_a_restart_it_goes_on_where_it_was(server, file):
    leave_part(file, CONTENT[:200_000])
    assert get(file)[0] == 200_000
    assert server.requests == [("model.onnx", 200_000)]


def test_a_whole_part_needs_no_network(server, file):
    leave_part(file, CONTENT)
    get(file)
    assert server.requests == []


def test_a_rotten_part_costs_a_second_download_and_no_more(server, file):
    leave_part(file, b"rot" * 10_000)
    get(file)
    assert server.requests == [("model.onnx", 30_000), ("model.onnx", 0)]


def test_a_part_that_is_too_long_is_dropped(server, file):
    leave_part(file, CONTENT + b"more")
    get(file)
    assert server.requests == [("model.onnx", 0)]


@pytest.mark.parametrize(
    "plans",
    [
        [does.ignore_range],
        [does.other_place],
        [does.refuse(416)],
        [does.refuse(503), does.refuse(429)],
        [does.garbage, does.hang_up],
        [does.claim_length(1000)],
        [does.page()],
        [does.without_length],
        [does.redirect_to("model.onnx")],
    ],
)
def test_what_can_be_mended_is_mended(server, file, plans):
    leave_part(file, CONTENT[:100_000])
    server.plans = plans
    get(file)


def test_a_redirected_request_keeps_its_range(server, file):
    leave_part(file, CONTENT[:100_000])
    server.plans = [does.redirect_to("model.onnx")]
    get(file)
    assert server.requests == [("model.onnx", 100_000)] * 2


def test_a_length_that_is_too_great_is_another_file(server, file):
    server.plans = [does.claim_length(len(CONTENT) + 1)]
    assert "another file" in refused(file)
    assert len(server.requests) == 1


def test_an_endless_answer_fills_no_disk(server, file):
    server.plans = [does.endless]
    get(file)
    assert len(server.requests) == 1


def test_wrong_bytes_never_reach_the_files_place(server, file):
    server.plans = [does.wrong_bytes]
    assert "other files" in refused(file)
    assert list(file.path.parent.iterdir()) == []
    get(file)  # choosing it again


@pytest.mark.parametrize("code", [403, 404, 410])
def test_a_refusal_is_told_at_once(server, file, code):
    server.plans = [does.refuse(code)]
    assert str(code) in refused(file)
    assert len(server.requests) == 1


@pytest.mark.parametrize(
    "plan",
    [
        does.stall_after(0),
        does.hang_up,
        does.garbage,
        does.refuse(503),
        does.cut_after(0),
        does.page(),
        does.trickle,
        does.stall_after(13),
    ],
)
def test_a_server_that_gives_nothing_is_given_up(server, file, plan):
    server.plans = [plan] * 100
    begin = time.monotonic()
    assert "Check the network" in refused(file)
    assert len(server.requests) == 5
    assert time.monotonic() - begin < 10


def test_what_came_is_kept_after_a_failure(server, file):
    server.plans = [does.cut_after(120_000), *[does.hang_up] * 5]
    refused(file)
    assert part(file).read_bytes() == CONTENT[:120_000]
    server.requests.clear()
    get(file)
    assert server.requests == [("model.onnx", 120_000)]


@pytest.mark.parametrize("plan", [does.page(), does.page(length=False), does.claim_length(1000)])
def test_what_came_is_not_lost_to_another_answer(server, file, plan):
    leave_part(file, CONTENT[:100_000])
    server.plans = [plan] * 5
    assert "Check the network" in refused(file)
    assert part(file).read_bytes() == CONTENT[:100_000]


def test_a_slow_but_steady_server_is_slow_and_no_failure(server, file, monkeypatch):
    monkeypatch.setattr(download, "SLOWEST", 10)
    monkeypatch.setattr(download, "has_sum", lambda path, file: True)
    file.path.parent.mkdir(parents=True)
    part(file).write_bytes(CONTENT[:-40])  # the last 40 bytes take longer than a stall may
    server.plans = [does.trickle]
    fetch(file, lambda size: None, stall=STALL, pause=0.001)
    assert len(server.requests) == 1


def test_nobody_listens(server, file):
    server.end()
    assert "Check the network" in refused(file)


def test_a_folder_that_cannot_be_made(file, tmp_path):
    (tmp_path / "tavin").write_text("a file where a folder should be")
    assert str(tmp_path) in refused(file)


def test_a_full_disk(file):
    before = resource.getrlimit(resource.RLIMIT_FSIZE)
    resource.setrlimit(resource.RLIMIT_FSIZE, (100_000, before[1]))
    try:
        assert "cannot be written" in refused(file)
    finally:
        resource.setrlimit(resource.RLIMIT_FSIZE, before)
    get(file)
