from .sandbox import built_program
from .waiting import wait_for


class Probe:
    """A program of its own that is driven by commands: here the adapter alone."""

    VARIABLE = "TAVRO_JACK_ADAPTER_PROBE"
    FIRST_WORD = "client"

    def __init__(self, sandbox):
        self.program = sandbox.start("JackProbe", [built_program(self.VARIABLE)])
        self.program.ends_with_input = True
        self.creations = self.program.wait_for_object(lambda line: self.FIRST_WORD in line, "its beginning")

    def tell(self, *words):
        self.program.write(" ".join(str(word) for word in words))

    def ask(self, answer, *words):
        count = len(self.answers(answer))
        self.tell(*words)
        wait_for(lambda: len(self.answers(answer)) > count, f"the answer to {words}")
        return self.answers(answer)[-1]

    def destinations(self):
        return self.ask("destinations", "destinations")

    def changes(self):
        return len(self.answers("changed"))

    def answers(self, name):
        return [line[name] for line in self.program.objects if name in line]


class ConnectionProbe(Probe):
    """The program's MIDI output over the adapter."""

    VARIABLE = "TAVRO_JACK_CONNECTION_PROBE"
    FIRST_WORD = "ready"

    def wait_until(self, **wanted):
        """Waits until the last notice of the connection says this."""

        def look():
            last = [line for line in self.program.objects if "ready" in line][-1]
            return all(last[key] == value for key, value in wanted.items())

        wait_for(look, lambda: f"{wanted}; the probe wrote {self.program.lines}")

    def lost_messages(self):
        return [line for line in self.program.objects if "ready" in line][-1]["dropped"]
