"""A device that is suspended for a while, as PulseAudio does with that of a user who was switched away from."""

from spoken import expected, without_silence
from tree import Tree


def test_a_suspended_device_holds_the_sound_back_for_as_long_as_it_is(new_engine, recorder, sound_server, tmp_path):
    tree = Tree(tmp_path / "tree")
    tree.change("sound/stream.py", "ANSWER_SECONDS = 2.5", "ANSWER_SECONDS = 1.5")
    engine = new_engine(tree=tree.folder).start()
    text = "This sentence is interrupted for a moment. It goes on."
    engine.speak(text)
    recorder.loud_for(0.5)
    sound_server.suspend("test", True)
    recorder.quiet_for(2.5)
    assert (engine.status()["state"], engine.status()["error"]) == ("speaking", None)
    sound_server.suspend("test", False)
    assert engine.wait_for("idle")["error"] is None
    recorder.quiet_for(0.3)
    heard = without_silence(recorder.samples)
    # What was on its way to the device may be lost with that.
    assert len(heard) > 0.9 * len(without_silence(expected(text)))
