"""One way to name, browse, select, observe and edit the items of any scene."""

import atexit
import gc

from kiv import _kiv
from kiv._kiv import *  # noqa: F403
from kiv._kiv import __version__ as __version__


def _leave() -> None:
    """Ends what Python has installed in the process while Python is still there."""
    _kiv._clear_all()
    gc.collect()


atexit.register(_leave)
del atexit
