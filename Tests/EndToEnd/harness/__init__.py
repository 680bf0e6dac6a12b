"""What the tests from outside share: a sandbox for each test, and the programs that run in it."""
