"""Scene files of many formats, a run-time."""

from kiv._documents.assimp import *  # noqa: F403
