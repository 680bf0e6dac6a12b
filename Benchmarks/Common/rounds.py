"""Rounds of key presses, played by several contestants in turns, and their comparison."""
import json
import sys

from figures import figures, load, print_aligned, print_table
from stage import wait_for

# The key between Shift and the letters' row on a us keyboard: a key that all of them play.
KEY_CODE = 52
WARM_UP_PRESSES = 10
MOST_REPETITIONS = 5


class Contestant:
    """A way from the key to a JACK port, and its samples. `prepare` makes the next keys take it."""

    def __init__(self, name, port, prepare):
        self.name = name
        self.port = port
        self.prepare = prepare
        self.arrivals = []
        self.places = []


class Injector:
    def __init__(self, stage, program, gaps, ports):
        self.program = stage.sandbox.start("key_injector", [program, KEY_CODE, *gaps, *ports])
        self._most_seconds = gaps[1] * 2 / 1000 + 0.5
        self.program.ends_with_input = True
        self.ready = self.program.wait_for_object(lambda line: "ready" in line, "the connections")
        self._answers = 0

    def round(self, source, presses):
        self.program.write(f"{source} {presses}")
        self._answers += 1
        lines = wait_for(self._lines, "a round", 10 + presses * self._most_seconds)
        return json.loads(lines[-1])

    def _lines(self):
        lines = [line for line in self.program.lines if line.startswith('{"source"')]
        if len(lines) < self._answers and not self.program.is_running():
            raise AssertionError("the injector ended")
        return lines if len(lines) >= self._answers else None


class Contest:
    """The contestants, and one injector for all of them."""

    def __init__(self, stage, program, gaps, those):
        self._those = those
        self._ports = list(dict.fromkeys(one.port for one in those))
        self._injector = Injector(stage, program, gaps, self._ports)
        for one in those:
            one.prepare()
            self._injector.round(self._source(one), WARM_UP_PRESSES)

    def _source(self, one):
        return self._ports.index(one.port)

    def play(self, rounds, presses):
        """Each contestant plays so many rounds."""
        print(f"{load()} at the start")
        repeated = 0
        for number in range(rounds):
            for step in range(len(self._those)):
                # Another one begins each time.
                repeated += self._play_round(self._those[(number + step) % len(self._those)], presses)
        print(f"{rounds} rounds each, {repeated} repeated for xruns; {load()} at the end\n")

    def _play_round(self, one, presses):
        """A round that counts: one in which the server had an xrun is played again. Returns how often."""
        for repetition in range(MOST_REPETITIONS):
            one.prepare()
            answer = self._injector.round(self._source(one), presses)
            if answer["missing"]:
                print(
                    f"  {one.name}: {answer['missing']} presses without a note; {answer['xruns']} xruns, the receiver "
                    f"missed {answer['absences']} periods",
                    file=sys.stderr,
                )
            # In a period that the server missed a note may go lost between two clients, with any program.
            if answer["xruns"] == 0 and (answer["missing"] or answer["lost"]):
                raise AssertionError(f"{one.name}: {answer['missing']} presses without a note")
            if answer["xruns"] == 0:
                one.arrivals += answer["arrival_us"]
                one.places += answer["placed_us"]
                values = figures(answer["arrival_us"])
                texts = (f"{name} {value / 1000:.2f}" for name, value in values.items())
                print(f"  {one.name}: {', '.join(texts)}; {load()}", file=sys.stderr)
                return repetition
        raise AssertionError(f"{one.name}: {MOST_REPETITIONS} rounds in turn had xruns")

    def print_figures(self, bases):
        """All figures, and the arrivals compared with those of each of the bases."""
        for title, samples in (("arrival", "arrivals"), ("place", "places")):
            rows = [(one.name, len(one.arrivals), figures(getattr(one, samples)), {}) for one in self._those]
            print_table(f"press to {title}, ms", rows)
            print()
        for base in bases:
            self._print_ratios(base)

    def _print_ratios(self, base):
        divisors = figures(base.arrivals)
        lines = [[f"arrival, compared with {base.name}", *divisors]]
        for one in self._those:
            values = figures(one.arrivals)
            lines.append([one.name, *(f"{values[name] / divisors[name]:.3f}" for name in divisors)])
        print_aligned(lines)
        print()

    def samples(self):
        return {one.name: {"arrival_us": one.arrivals, "placed_us": one.places} for one in self._those}


def add_contest_options(parser):
    parser.add_argument("--rounds", type=int, default=5)
    parser.add_argument("--presses", type=int, default=100, help="of each round")
    parser.add_argument(
        "--gaps", type=int, nargs=2, default=[20, 60], metavar=("LEAST", "MOST"), help="ms that the key is down, and up"
    )
