import time

# A limit for what never comes, not a measure of speed: on a busy machine everything takes its time.
PATIENCE = 60.0
FIRST_STEP = 0.002
# Many conditions run a program to look; more often than this the looking itself would keep the machine busy.
LONGEST_STEP = 0.05


def wait_for(condition, what, seconds=PATIENCE):
    """Returns the condition's first true value; fails with the words `what` when none comes in time."""
    deadline = time.monotonic() + seconds
    step = FIRST_STEP
    while True:
        value = condition()
        if value:
            return value
        if time.monotonic() > deadline:
            words = what() if callable(what) else what
            raise AssertionError(f"waited {seconds:g} s in vain for {words}")
        time.sleep(step)
        step = min(LONGEST_STEP, 1.3 * step)
