"""From what was written to what is said: mark-up silent, signs and numbers in words.

In two steps. `blocks` goes before the sentences are found and is about lines: code, tables, lists, and
addresses, whose question marks end no sentence. It hands on a text that is still as it was written
otherwise, so that its language can be told by it. `rules` then make words of what is left, sentence by
sentence, each in its own language (`languages`). What no rule knows is read as it stands.
"""
