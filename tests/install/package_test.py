#!/usr/bin/python3 -B
"""Builds the Debian package and checks its content:

    package_test.py BUILD-FOLDER MODULES-FOLDER VERSION
"""

import pathlib
import shutil
import sys
import tempfile
import unittest

from installation import expected_files, files_below, run

CHANGELOG = pathlib.Path("share/doc/quillsatchel/changelog.Debian.gz")
SOURCES = pathlib.Path(__file__).resolve().parents[2]


class PackageTest(unittest.TestCase):
    build = modules = version = None

    @classmethod
    def setUpClass(cls):
        cls.folder = pathlib.Path(tempfile.mkdtemp(prefix="package-test-"))
        cls.addClassCleanup(shutil.rmtree, cls.folder)
        run("cpack", "--config", cls.build / "CPackConfig.cmake", "-B", cls.folder / "packages",
            cwd=cls.build)
        (cls.package,) = (cls.folder / "packages").glob("*.deb")
        run("dpkg-deb", "--raw-extract", cls.package, cls.folder / "raw")

    def test_contains_the_installed_files_and_the_changelog(self):
        raw = self.folder / "raw"
        self.assertEqual(files_below(raw / "usr"), expected_files(self.modules) | {CHANGELOG})
        self.assertEqual({file.name for file in raw.iterdir()}, {"DEBIAN", "usr"})

    def test_all_files_belong_to_root(self):
        lines = run("dpkg-deb", "--contents", self.package).splitlines()
        self.assertTrue(lines)
        for line in lines:
            self.assertEqual(line.split()[1], "root/root", line)

    def test_version_matches_the_file_name(self):
        self.assertTrue(self.field("Version").startswith(f"{self.version}-"))
        self.assertTrue(self.package.name.startswith(f"quillsatchel_{self.field('Version')}_"))

    def test_declares_dependencies_and_recommendations(self):
        needed = {item.split()[0] for item in self.field("Depends").split(",")}
        # Debian 13 appended "t64" to some library names when time_t became 64-bit.
        plain = {name.removesuffix("t64") for name in needed}
        self.assertLessEqual({"hicolor-icon-theme", "libc6", "libglib2.0-0", "libpulse0",
                              "libqt6widgets6", "qt6-svg-plugins"}, plain)
        self.assertNotIn("libqt6svg6", plain)
        # PocketSphinx 5 is libpocketsphinx5, and 5prealpha libpocketsphinx3.
        self.assertEqual(len({"libpocketsphinx3", "libpocketsphinx5"} & plain), 1, plain)
        self.assertTrue(any(name.startswith("libcurl") for name in plain), plain)
        self.assertEqual(self.field("Recommends").split(", "),
                         ["glib-networking", "libespeak-ng1", "pocketsphinx-en-us",
                          "qt6-image-formats-plugins", "qt6-wayland", "xdg-utils"])

    def test_has_no_maintainer_scripts(self):
        self.assertEqual({file.name for file in (self.folder / "raw/DEBIAN").iterdir()},
                         {"control", "md5sums"})

    def test_programs_are_stripped_and_contain_no_build_paths(self):
        for file in (self.folder / "raw/usr").rglob("*"):
            if file.is_dir():
                continue
            content = file.read_bytes()
            for folder in (SOURCES, self.build):
                self.assertFalse(bytes(folder) in content, f"{folder} in {file}")
            if content.startswith(b"\x7fELF"):
                self.assertRegex(run("file", "--brief", file), r", stripped$")

    def field(self, name):
        return run("dpkg-deb", "--field", self.package, name).strip()


if __name__ == "__main__":
    PackageTest.build, PackageTest.modules = map(pathlib.Path, sys.argv[1:3])
    PackageTest.version = sys.argv[3]
    unittest.main(argv=sys.argv[:1], verbosity=2)
