"""Ready-made services for a host."""

from kiv._kiv.host import *  # noqa: F403
