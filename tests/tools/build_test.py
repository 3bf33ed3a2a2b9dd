"""Tests of tools/build.sh: a build folder that came from another place is not used, and the way out is said."""

import shutil
import subprocess
import tempfile
import unittest
from pathlib import Path

BUILD = Path(__file__).resolve().parents[2] / "tools/build.sh"


class BuildFolder(unittest.TestCase):
    def setUp(self):
        scratch = tempfile.TemporaryDirectory()
        self.addCleanup(scratch.cleanup)
        self.tree = Path(scratch.name, "a tree's folder")
        (self.tree / "tools").mkdir(parents=True)
        shutil.copy(BUILD, self.tree / "tools")

    def build(self, made_for):
        """What building the preset "any" says when its folder was made for a tree."""
        folder = self.tree / "build/any"
        folder.mkdir(parents=True)
        (folder / "CMakeCache.txt").write_text(f"CMAKE_HOME_DIRECTORY:INTERNAL={made_for}\n")
        run = subprocess.run([self.tree / "tools/build.sh", "any"], cwd="/", text=True, stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT)
        self.assertNotEqual(run.returncode, 0)  # at the latest since there are no presets
        return run.stdout

    def test_a_moved_one_is_refused_and_can_be_removed_as_it_says(self):
        said = self.build("/some/where else")
        self.assertIn("was made in another folder, /some/where else", said)
        subprocess.run(["bash", "-c", said.rpartition("try again: ")[2]], check=True)
        self.assertFalse((self.tree / "build").exists())
        self.assertTrue((self.tree / "tools").exists())

    def test_one_of_a_copy_is_refused_though_the_original_is_there(self):
        with tempfile.TemporaryDirectory() as original:
            self.assertIn("was made in another folder", self.build(original))

    def test_its_own_is_used(self):
        self.assertNotIn("another folder", self.build(self.tree))


if __name__ == "__main__":
    unittest.main()
