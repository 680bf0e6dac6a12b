"""Which period the program asks PipeWire for."""

import json
import pathlib
import unittest

from harness.pipewire_session import LONG_PERIOD, PipeWireSession
from harness.pipewire_stage import PipeWireStageTest
from harness.waiting import wait_for


class PeriodTest(PipeWireStageTest):
    def start_server(self):
        session = PipeWireSession(self.sandbox)
        self.asked = self.sandbox.environment.pop("PIPEWIRE_LATENCY")
        return session

    def wait_for_period(self, *asked):
        wait_for(
            lambda: self.server.periods_asked_for("TAVRO") == list(asked),
            lambda: f"{asked}; it asks for {self.server.periods_asked_for('TAVRO')}",
        )

    def test_short_one_by_itself(self):
        self.play()
        self.wait_for_period("128/48000")

    def test_that_of_the_user(self):
        self.sandbox.environment["PIPEWIRE_LATENCY"] = LONG_PERIOD
        self.play()
        self.wait_for_period(LONG_PERIOD)

    def test_none_when_the_systems_own_is_chosen(self):
        file = pathlib.Path(self.sandbox.environment["XDG_CONFIG_HOME"]) / "tavro/tavro.json"
        file.parent.mkdir(parents=True, exist_ok=True)
        chosen = {"TAVRO.TutorialCompleted.v1": True, "TAVRO.MIDIShortPeriod.v1": False}
        file.write_text(json.dumps(chosen), encoding="utf-8")
        self.play()
        self.wait_for_period(None)

    def test_another_choice_is_asked_for_at_once(self):
        self.play()
        self.wait_for_period("128/48000")
        surface = self.application.surface
        surface.toggle_settings()
        # JACK, by the environment; the next entry leaves the period alone.
        surface.choose("MIDI system", 1)
        self.wait_for_period(None)
        surface.choose("MIDI system", -1)
        self.wait_for_period("128/48000")


if __name__ == "__main__":
    unittest.main()
