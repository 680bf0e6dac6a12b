"""Fetches and unpacks the kernel into the folder that TAVRO_KERNEL_CACHE names."""

import os

from .package import unpacked_kernel, version_of

folder = unpacked_kernel(os.environ["TAVRO_KERNEL_CACHE"])
print(f"{version_of(folder)} in {folder}")
