#!/usr/bin/python3 -B
"""Installs a build and looks at what is there:

    install_test.py BUILD-FOLDER MODULES-FOLDER VERSION MODULE-TEST...

MODULES-FOLDER is where modules go below the prefix. The module tests are programs that open
modules; they are run from beside the installed program.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
import xml.etree.ElementTree

from installation import (DRAWING, ENTRY, ICON_SIDES, ID, METAINFO, expected_files, files_below,
                          picture, programs, run)

MOST_SECONDS = 20
SOURCES = pathlib.Path(__file__).resolve().parents[2]


class InstallTest(unittest.TestCase):
    build = modules = version = None
    module_tests = []

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="install-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.prefix = self.folder / "prefix"
        self.install(self.prefix)

    def test_every_file_has_its_place_and_may_be_read_by_all(self):
        self.assertEqual(files_below(self.prefix), expected_files(self.modules))
        for file in files_below(self.prefix):
            is_program = file in programs(self.modules)
            mode = (self.prefix / file).stat().st_mode & 0o777
            self.assertEqual(mode, 0o755 if is_program else 0o644, file)

    def test_a_staged_installation_is_the_same_below_another_root(self):
        root = self.folder / "root"
        self.install("/opt/quillsatchel", DESTDIR=str(root))
        self.assertEqual(files_below(root),
                         {"opt/quillsatchel" / file for file in files_below(self.prefix)})

    def test_the_desktop_entry_is_valid(self):
        done = subprocess.run(["desktop-file-validate", self.prefix / ENTRY], text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        # A validator older than version 1.5 of the entry format does not know its new key.
        complaints = [line for line in done.stdout.splitlines()
                      if 'contains key "SingleMainWindow"' not in line]
        self.assertEqual(complaints, [])

    def test_the_desktop_entry_starts_the_program_and_shows_its_icon(self):
        lines = (self.prefix / ENTRY).read_text().splitlines()
        self.assertIn("Exec=quillsatchel", lines)
        self.assertIn(f"Icon={ID}", lines)

    def test_the_metainfo_is_valid_and_of_this_version(self):
        run("appstreamcli", "validate", "--no-net", "--no-color", self.prefix / METAINFO)
        component = xml.etree.ElementTree.parse(self.prefix / METAINFO).getroot()
        self.assertEqual(component.findtext("id"), ID)
        self.assertEqual(component.findtext("launchable"), ENTRY.name)
        self.assertEqual(component.find("releases/release").get("version"), self.version)

    def test_the_pictures_of_the_metainfo_are_those_in_the_documentation(self):
        images = xml.etree.ElementTree.parse(self.prefix / METAINFO).findall(".//image")
        self.assertTrue(images)
        for image in images:
            self.assertTrue((SOURCES / "docs" / pathlib.Path(image.text).name).exists(), image.text)

    def test_icons_have_the_size_of_their_folders_and_show_something(self):
        self.assertIn("<svg", (self.prefix / DRAWING).read_text())
        for side in ICON_SIDES:
            shown = run("identify", "-format", "%w %h %k", self.prefix / picture(side))
            width, height, colors = map(int, shown.split())
            self.assertEqual((width, height), (side, side))
            self.assertGreater(colors, 32, side)

    def test_the_program_runs_from_there(self):
        environment = self.environment()
        program = subprocess.Popen([self.prefix / "bin/quillsatchel"], env=environment)
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        data = pathlib.Path(environment["XDG_DATA_HOME"], "Quillsatchel")
        end = time.monotonic() + MOST_SECONDS
        while not data.exists() and time.monotonic() < end:
            time.sleep(0.05)
        self.assertTrue(data.exists())
        self.assertIsNone(program.poll())

    def test_a_program_beside_it_finds_the_modules_and_they_the_listener(self):
        self.assertTrue(self.module_tests)
        for test in self.module_tests:
            run(shutil.copy(test, self.prefix / "bin"), env=self.environment())

    def test_modules_that_others_can_write_are_not_loaded(self):
        test = shutil.copy(self.module_tests[0], self.prefix / "bin")
        (self.prefix / self.modules).chmod(0o777)
        done = subprocess.run([test], env=self.environment(), stdout=subprocess.DEVNULL)
        self.assertEqual(done.returncode, 1)

    def test_removing_what_was_installed_leaves_no_file_but_the_users_data(self):
        environment = self.environment()
        kept = pathlib.Path(environment["XDG_DATA_HOME"], "Quillsatchel/prompts.json")
        kept.parent.mkdir()
        kept.write_text("mine")
        for file in (self.build / "install_manifest.txt").read_text().splitlines():
            pathlib.Path(file).unlink()
        self.assertEqual(files_below(self.prefix), set())
        self.assertEqual(kept.read_text(), "mine")

    def install(self, prefix, **environment):
        run("cmake", "--install", self.build, "--prefix", prefix, env={**os.environ, **environment})

    def environment(self):
        """That of a user who has nothing yet, and no desktop."""
        environment = {"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", "HOME": str(self.folder),
                       "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.folder}/none",
                       "QT_QPA_PLATFORM": "offscreen"}
        for name in ("CACHE_HOME", "CONFIG_HOME", "DATA_HOME", "RUNTIME_DIR"):
            folder = self.folder / name.lower()
            folder.mkdir(mode=0o700, exist_ok=True)
            environment[f"XDG_{name}"] = str(folder)
        return environment


if __name__ == "__main__":
    InstallTest.build, InstallTest.modules = map(pathlib.Path, sys.argv[1:3])
    InstallTest.version, *InstallTest.module_tests = sys.argv[3:]
    unittest.main(argv=sys.argv[:1], verbosity=2)
