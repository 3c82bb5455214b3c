"""Scene files and documents side by side, as hosts open them."""

import contextlib

import kiv
from kiv import document


def stages() -> contextlib.AbstractContextManager[object]:
    """The run-time of OpenUSD's stages, for as long as the block; nothing where that is not installed."""
    try:
        from kiv import usd
    except ImportError:
        return contextlib.nullcontext()
    return usd.RunTime()


class Scene:
    """A workspace in which documents are opened, and scene files mounted: those of OpenUSD, too, where it is there."""

    def __init__(self, files: list[str]) -> None:
        self._held = contextlib.ExitStack()
        self.workspace = self._held.enter_context(document.Workspace())
        self._held.enter_context(stages())
        try:
            for file in files:
                self.show(file)
        except BaseException:
            self.close()
            raise

    @property
    def root(self) -> kiv.Path:
        """The path of the root."""
        return self.workspace.root.path

    def show(self, file: str) -> None:
        """Opens a document, or mounts a scene file."""
        if file.lower().endswith(".json"):
            document.open(self.workspace, file)
        else:
            self.workspace.mount(file)

    def close(self) -> None:
        """Takes the run-times back."""
        self._held.close()
