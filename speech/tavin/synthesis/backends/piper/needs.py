"""What Piper needs on the disk: its libraries, and the files of the voice that was chosen.

The voices are those of its makers' catalogue; each voice has a model, its configuration
and a card that names its licence. Cheap to import.
"""

import json
from pathlib import Path

from tavin.setup.needs import File, Libraries
from tavin.synthesis.voices import VOICE_LANGUAGE

HERE = Path(__file__).parent
CATALOGUE = json.loads((HERE / "catalogue.json").read_text("utf-8"))
# Its phonemes need libraries that are not fetched.
NOT_OFFERED = ("zh",)
QUALITIES = {"x_low": "very simple", "low": "simple", "medium": "", "high": "high quality"}

libraries = Libraries("piper", HERE / "requirements.txt", **CATALOGUE["libraries"])


def files(voice):
    """The voice's model, configuration and card; none of a voice that is not in the catalogue."""
    entry = CATALOGUE["voices"].get(voice)
    if not entry:
        return []
    language, name, quality = voice.split("-")
    place = f"{CATALOGUE['address']}{language.split('_')[0]}/{language}/{name}/{quality}/"
    wanted = {"model": f"{voice}.onnx", "config": f"{voice}.onnx.json", "card": "MODEL_CARD"}
    return [
        File("piper", "Piper", kept_as(voice, file), place + file, size=entry[part][0], md5=entry[part][1])
        for part, file in wanted.items()
    ]


def kept_as(voice, file):
    return file if file.startswith(voice) else f"{voice}.{file}"


def voices():
    """All of the catalogue, whether they are here or not."""
    return [described(voice) for voice in CATALOGUE["voices"] if voice.split("_")[0] not in NOT_OFFERED]


def described(voice):
    language, name, quality = voice.split("-")
    family, region = language.lower().split("_")
    return {
        "id": voice,
        "name": name.replace("_", " ").title(),
        "language": f"{VOICE_LANGUAGE.get(family, family)}-{region}",
        "traits": QUALITIES[quality],
        "best": quality in ("medium", "high"),
        "here": all(file.path.exists() for file in files(voice)),
    }


def licence(voice):
    """What the voice's card says of its licence; None where it says nothing."""
    try:
        card = files(voice)[-1].path.read_text("utf-8", errors="replace")
    except (OSError, IndexError):
        return None
    lines = (line.strip("* ").partition(":") for line in card.splitlines())
    return next((told.strip() for name, _, told in lines if name.lower() == "license"), None)
