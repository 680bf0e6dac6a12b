import time

PATIENCE = 20.0
STEP = 0.01


def wait_for(condition, what, seconds=PATIENCE):
    """Returns the condition's first true value; fails with the words `what` when none comes in time."""
    deadline = time.monotonic() + seconds
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            words = what() if callable(what) else what
            raise AssertionError(f"waited {seconds:g} s in vain for {words}")
        time.sleep(STEP)
