"""Where the bench puts things: in one folder, by default build/e2e."""

from pathlib import Path

E2E = Path(__file__).resolve().parent.parent
TESTS = E2E.parent
REPOSITORY = TESTS.parent
NATIVE = E2E / "native"


class Folders:
    """The folders of one bench; the constructor makes them."""

    def __init__(self, root):
        self.root = Path(root).resolve()
        self.tools = self._made("tools")
        self.programs = self._made("programs")
        self.failures = self._made("failures")
        self.pictures = self._made("pictures")
        self.locales = self._made("locales")
        self.logs = self._made("logs")
        self.prefix = self.root / "prefix"  # made by wine.py

    def _made(self, name):
        folder = self.root / name
        folder.mkdir(parents=True, exist_ok=True)
        return folder
