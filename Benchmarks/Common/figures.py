"""Turns samples into the figures that the benchmarks print."""
import math
import os

PERCENTILES = (("median", 50), ("p95", 95), ("p99", 99), ("max", 100))


def percentile(samples, percent):
    """The smallest sample that so many percent of all do not exceed."""
    ordered = sorted(samples)
    return ordered[max(math.ceil(len(ordered) * percent / 100), 1) - 1]


def figures(samples):
    return {name: percentile(samples, percent) for name, percent in PERCENTILES}


def print_table(first_title, rows):
    """Rows are (name, number of samples, figures, further columns by their titles); figures are in
    microseconds and printed in milliseconds."""
    further = list(rows[0][3]) if rows else []
    titles = [first_title, "samples", *(name for name, _ in PERCENTILES), *further]
    lines = [titles]
    for name, count, values, more in rows:
        lines.append(
            [name, str(count), *(f"{value / 1000:.3f}" for value in values.values()), *map(str, more.values())]
        )
    print_aligned(lines)


def print_aligned(lines):
    widths = [max(len(line[column]) for line in lines) for column in range(len(lines[0]))]
    for line in lines:
        first = line[0].ljust(widths[0])
        rest = (cell.rjust(width) for cell, width in zip(line[1:], widths[1:]))
        print("  ".join([first, *rest]), flush=True)


def load():
    """How busy the machine is, in words."""
    return f"load {os.getloadavg()[0]:.2f} on {os.cpu_count()} cores"
