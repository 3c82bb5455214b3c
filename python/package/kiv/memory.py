"""An editable scene in memory, a run-time."""

from kiv._kiv.memory import *  # noqa: F403
