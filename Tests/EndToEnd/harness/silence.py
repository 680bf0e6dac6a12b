"""What a receiver still sounds after all that came to it."""

PANIC = [[0xB0 | channel, controller, 0] for channel in range(16) for controller in (123, 120)]


def sounding(messages):
    """Of these messages, as channel and note."""
    notes = set()
    for status, first, *rest in messages:
        channel, kind = status & 0x0F, status & 0xF0
        if kind == 0x90 and rest[0] > 0:
            notes.add((channel, first))
        elif kind in (0x80, 0x90):
            notes.discard((channel, first))
        elif kind == 0xB0 and first in (120, 123):
            notes = {note for note in notes if note[0] != channel}
    return notes
