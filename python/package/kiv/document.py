"""Scenes with mounted files as documents, saved and opened."""

from kiv._documents.document import *  # noqa: F403
