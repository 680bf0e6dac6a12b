from .sandbox import built_program
from .waiting import wait_for

SOURCE = "TAVRO:TAVRO Out"


class Recorder:
    """A JACK client that tells what arrives: from sources it connects to, and at inputs of its own."""

    def __init__(self, sandbox, sources=(SOURCE,), inputs=(), name="Recorder", pretty=None):
        arguments = [built_program("TAVRO_JACK_RECORDER"), "--name", name]
        for source in sources:
            arguments += ["--connect", source]
        for port in inputs:
            arguments += ["--input", port]
            if pretty is not None:
                arguments += ["--pretty", pretty]
        self.program = sandbox.start(name, arguments)
        self.program.ends_with_input = True
        self.program.wait_for_object(lambda line: "ready" in line, "being ready")

    def connections(self, port=SOURCE):
        found = [line for line in self.program.objects if "connections" in line and line["port"] == port]
        return found[-1]["connections"] if found else []

    def connections_made(self, port=SOURCE):
        found = [line["made"] for line in self.program.objects if "made" in line and line["port"] == port]
        return max(found, default=0)

    def wait_for_connection(self, port=SOURCE):
        wait_for(lambda: self.connections(port), f"a connection at {port}")

    def wait_for_clock(self, **wanted):
        """Waits until the server's "rate" or "period" is this."""

        def look():
            last = [line for line in self.program.objects if "period" in line][-1]
            return all(last[key] == value for key, value in wanted.items())

        wait_for(look, lambda: f"{wanted} from {self.program.name}")

    def xruns(self):
        return max((line["xruns"] for line in self.program.objects if "xruns" in line), default=0)

    def events(self, port=SOURCE):
        return [line for line in self.program.objects if "bytes" in line and line["port"] == port]

    def messages(self, port=SOURCE):
        return [event["bytes"] for event in self.events(port)]

    def wait_for_events(self, count, port=SOURCE):
        """All events so far, once there are so many."""
        self.wait_for_messages(count, port)
        return self.events(port)

    def wait_for_messages(self, count, port=SOURCE):
        """All messages so far, once there are so many."""
        wait_for(
            lambda: len(self.messages(port)) >= count,
            lambda: f"{count} messages at {port}; there are {self.messages(port)}, "
            f"and the server missed {self.xruns()} periods, with what was in them",
        )
        return self.messages(port)
