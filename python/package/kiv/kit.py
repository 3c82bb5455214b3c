"""What authors of run-times build on."""

from kiv._kiv.kit import *  # noqa: F403
