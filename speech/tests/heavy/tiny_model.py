"""A model and a voice file with the inputs, outputs and shapes of the real ones, written by hand.

The model hums: each token is a tone of its own, for SAMPLES samples at normal
speed, as loud as the voice's style says. Token 0, which pads a text, is silence.
"""

import io
import struct
import zipfile

SAMPLES = 1200
LOUDNESS = 0.3
VOICES = ["af_heart", "am_adam", "bf_emma", "ff_siwis", "jf_alpha", "zf_xiaobei"]
FLOAT, INT64 = 1, 7
INT_ATTRIBUTE = 2


def number(value):
    data = bytearray()
    while value > 127:
        data.append(value & 127 | 128)
        value >>= 7
    return bytes([*data, value])


def field(tag, value):
    """One field of a protocol buffer: a number or a length and bytes."""
    if isinstance(value, int):
        return number(tag << 3) + number(value % 2**64)
    value = value.encode() if isinstance(value, str) else value
    return number(tag << 3 | 2) + number(len(value)) + value


def message(*fields):
    return b"".join(field(tag, value) for tag, value in fields)


def tensor(name, kind, shape, *values):
    raw = struct.pack(f"<{len(values)}{'f' if kind == FLOAT else 'q'}", *values)
    return message(*((1, size) for size in shape), (2, kind), (8, name), (9, raw))


def node(operation, inputs, output, **attributes):
    described = (message((1, name), (3, value), (20, INT_ATTRIBUTE)) for name, value in attributes.items())
    return message(
        *((1, name) for name in inputs), (2, output), (4, operation), *((5, entry) for entry in described)
    )


def value_info(name, kind, *shape):
    sizes = (message((2, size) if isinstance(size, str) else (1, size)) for size in shape)
    tensor_type = message((1, kind), (2, message(*((1, size) for size in sizes))))
    return message((1, name), (2, message((1, tensor_type))))


def work_nodes(work):
    """Computation of which nothing is heard: `work` products of big matrices for each text."""
    yield node("Expand", ["speed", "matrix"], "speeds")
    yield node("Mul", ["speeds", "share"], "work0")
    for step in range(work):
        yield node("MatMul", [f"work{step}", "work0"], f"work{step + 1}")
    yield node("ReduceMean", [f"work{work}"], "mean", keepdims=0)
    yield node("Mul", ["mean", "zero"], "nothing")


def model(work=0):
    nodes = [
        node("Cast", ["tokens"], "numbers", to=FLOAT),
        node("Reshape", ["numbers", "column"], "tones"),
        node("Div", ["samples", "speed"], "length"),
        node("Squeeze", ["length"], "end"),
        node("Range", ["zero", "end", "one"], "times"),
        node("Mul", ["times", "step"], "phases"),
        node("Mul", ["tones", "phases"], "angles"),
        node("Sin", ["angles"], "waves"),
        node("ReduceMax", ["style"], "loudness", keepdims=0),
        *work_nodes(work),
        node("Add", ["loudness", "nothing"], "gain"),
        node("Mul", ["waves", "gain"], "scaled"),
        node("Reshape", ["scaled", "flat"], "audio"),
    ]
    constants = [
        tensor("column", INT64, [2], -1, 1),
        tensor("flat", INT64, [1], -1),
        tensor("matrix", INT64, [2], 700, 700),
        tensor("samples", FLOAT, [1], SAMPLES),
        tensor("step", FLOAT, [], 0.005),
        tensor("share", FLOAT, [], 1 / 700),  # keeps the products small
        tensor("zero", FLOAT, [], 0.0),
        tensor("one", FLOAT, [], 1.0),
    ]
    graph = message(
        *((1, entry) for entry in nodes),
        (2, "hum"),
        *((5, entry) for entry in constants),
        (11, value_info("tokens", INT64, 1, "count")),
        (11, value_info("style", FLOAT, 1, 256)),
        (11, value_info("speed", FLOAT, 1)),
        (12, value_info("audio", FLOAT, "samples")),
    )
    return message((1, 8), (7, graph), (8, message((1, ""), (2, 17))))


def voice_file():
    header = "{'descr': '<f4', 'fortran_order': False, 'shape': (510, 1, 256), }"
    header = header.ljust(128 - 11) + "\n"
    style = struct.pack("<f", LOUDNESS) * (510 * 256)
    array = b"\x93NUMPY\x01\x00" + struct.pack("<H", len(header)) + header.encode() + style
    made = io.BytesIO()
    with zipfile.ZipFile(made, "w") as archive:
        for name in VOICES:
            archive.writestr(f"{name}.npy", array)
    return made.getvalue()
