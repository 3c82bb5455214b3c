"""Holds run-times against their contracts."""

from kiv._kiv.conformance import *  # noqa: F403
