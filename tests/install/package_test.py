#!/usr/bin/python3 -B
"""Makes the Debian package of a build and looks at what is in it:

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
        run("cpack", "--config", cls.build / "CPackConfig.cmake", "-B", cls.folder / "made",
            cwd=cls.build)
        (cls.package,) = (cls.folder / "made").glob("*.deb")
        run("dpkg-deb", "--raw-extract", cls.package, cls.folder / "raw")

    def test_it_has_the_installed_files_and_its_changelog(self):
        raw = self.folder / "raw"
        self.assertEqual(files_below(raw / "usr"), expected_files(self.modules) | {CHANGELOG})
        self.assertEqual({file.name for file in raw.iterdir()}, {"DEBIAN", "usr"})

    def test_everything_in_it_is_roots(self):
        lines = run("dpkg-deb", "--contents", self.package).splitlines()
        self.assertTrue(lines)
        for line in lines:
            self.assertEqual(line.split()[1], "root/root", line)

    def test_it_is_of_the_version_in_its_name(self):
        self.assertTrue(self.field("Version").startswith(f"{self.version}-"))
        self.assertTrue(self.package.name.startswith(f"quillsatchel_{self.field('Version')}_"))

    def test_it_depends_on_the_libraries_it_links_and_recommends_what_it_looks_for(self):
        needed = {item.split()[0] for item in self.field("Depends").split(",")}
        # Debian 13 gave some libraries new names when the size of time changed.
        plain = {name.removesuffix("t64") for name in needed}
        self.assertLessEqual({"hicolor-icon-theme", "libc6", "libglib2.0-0", "libpocketsphinx3",
                              "libpulse0", "libqt6svg6", "libqt6widgets6", "qt6-svg-plugins"},
                             plain)
        self.assertTrue(any(name.startswith("libcurl") for name in plain), plain)
        self.assertEqual(self.field("Recommends").split(", "),
                         ["glib-networking", "pocketsphinx-en-us", "qt6-image-formats-plugins",
                          "qt6-wayland", "xdg-utils"])

    def test_nothing_runs_when_it_is_installed_or_removed(self):
        self.assertEqual({file.name for file in (self.folder / "raw/DEBIAN").iterdir()},
                         {"control", "md5sums"})

    def test_its_programs_are_stripped_and_do_not_say_where_they_were_built(self):
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
