"""A real Linux kernel for tests: the distribution's own, in a virtual machine of its own."""

from .kernel import MODULES, Kernel
from .result import Result

__all__ = ["MODULES", "Kernel", "Result"]
