import dataclasses


@dataclasses.dataclass(frozen=True)
class Result:
    """How a script inside ended."""

    status: int
    # What it wrote to its standard output and standard error.
    output: str
    # What the kernel and the first process wrote.
    console: str
