#!/usr/bin/python3 -B
"""Installs a build and checks the installed files:

    install_test.py BUILD-FOLDER MODULES-FOLDER VERSION (PROGRAM TEST)...

MODULES-FOLDER is the folder of the modules, relative to the prefix. Each PROGRAM has the tests of a
module in its file TEST; it runs from the folder of the installed program.
"""

import configparser
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time
import unittest
import xml.etree.ElementTree

from installation import (ENTRY, ICON_SIDES, ID, METAINFO, RUNNER, SCALABLE_ICON, SEARCH_PROVIDER,
                          expected_files, files_below, icon, programs, run)

TIMEOUT_SECONDS = 20
SOURCES = pathlib.Path(__file__).resolve().parents[2]
RECORDING_XDG_OPEN = """#!/bin/sh
printf %s "$*" >"$HOME/part"
mv "$HOME/part" "$HOME/opened"
"""
LAUNCH_ACTION = """
import sys
from gi.repository import Gio
Gio.DesktopAppInfo.new_from_filename(sys.argv[1]).launch_action(sys.argv[2], None)
"""


class InstallTest(unittest.TestCase):
    build = modules = version = None
    module_tests = []

    def setUp(self):
        self.folder = pathlib.Path(tempfile.mkdtemp(prefix="install-test-"))
        self.addCleanup(shutil.rmtree, self.folder)
        self.prefix = self.folder / "prefix"
        self.install(self.prefix)

    def test_all_files_are_installed_with_their_permissions(self):
        self.assertEqual(files_below(self.prefix), expected_files(self.modules))
        for file in files_below(self.prefix):
            is_program = file in programs(self.modules)
            mode = (self.prefix / file).stat().st_mode & 0o777
            self.assertEqual(mode, 0o755 if is_program else 0o644, file)

    def test_a_staged_installation_has_the_same_files(self):
        root = self.folder / "root"
        self.install("/opt/quillsatchel", DESTDIR=str(root))
        self.assertEqual(files_below(root),
                         {"opt/quillsatchel" / file for file in files_below(self.prefix)})

    def test_the_desktop_entry_is_valid(self):
        done = subprocess.run(["desktop-file-validate", self.prefix / ENTRY], text=True,
                              stdout=subprocess.PIPE, stderr=subprocess.STDOUT, check=False)
        # Validators older than version 1.5 of the entry format do not know this key.
        errors = [line for line in done.stdout.splitlines()
                  if 'contains key "SingleMainWindow"' not in line]
        self.assertEqual(errors, [])

    def test_the_desktop_entry_names_program_and_icon(self):
        lines = (self.prefix / ENTRY).read_text().splitlines()
        self.assertIn("Exec=quillsatchel", lines)
        self.assertIn(f"Icon={ID}", lines)

    def test_the_desktop_action_opens_the_folder_of_earlier_versions(self):
        for state, folder in ((None, self.folder / ".local/state"),
                              ("relative", self.folder / ".local/state"),
                              (str(self.folder / "my $state"), self.folder / "my $state")):
            with self.subTest(state):
                opened = folder / "Quillsatchel/Earlier versions"
                self.assertEqual(self.folder_opened_by_the_action(state), str(opened))
                self.assertEqual(opened.stat().st_mode & 0o777, 0o700)

    def folder_opened_by_the_action(self, state):
        """Launches the action through GIO, as desktops do."""
        programs = self.folder / "programs"
        programs.mkdir(exist_ok=True)
        opener = programs / "xdg-open"
        opener.write_text(RECORDING_XDG_OPEN)
        opener.chmod(0o755)
        environment = self.environment() | {
            "PATH": f"{programs}:{self.prefix}/bin:/usr/bin:/bin"}
        if state is not None:
            environment["XDG_STATE_HOME"] = state
        run(sys.executable, "-c", LAUNCH_ACTION, self.prefix / ENTRY, "EarlierVersions",
            env=environment, cwd=self.folder)
        opened = self.folder / "opened"
        await_existence(opened)
        text = opened.read_text()
        opened.unlink()
        return text

    def test_gnome_shell_asks_only_the_running_program(self):
        provider = self.read_keys(SEARCH_PROVIDER, "Shell Search Provider")
        self.assertEqual(provider["DesktopId"], ENTRY.name)
        self.assertEqual(provider["BusName"], ID)
        self.assertEqual(provider["Version"], "2")
        self.assertEqual(provider["AutoStart"], "false")

    def test_krunner_asks_only_the_running_program(self):
        runner = self.read_keys(RUNNER, "Desktop Entry")
        self.assertEqual(runner["X-Plasma-DBusRunner-Service"], f"{ID}*")
        self.assertEqual(runner["X-Plasma-API"], "DBus")
        self.assertEqual(runner["X-Plasma-Runner-Min-Letter-Count"], "3")
        self.assertEqual(runner["Icon"], ID)
        # KRunner ignores a file without these.
        for key in ("ServiceTypes", "PluginInfo-Name", "PluginInfo-Version", "PluginInfo-License"):
            self.assertTrue(runner[f"X-KDE-{key}"], key)
        self.assertEqual(runner["X-KDE-PluginInfo-EnabledByDefault"], "true")

    def read_keys(self, file, group):
        parser = configparser.ConfigParser(interpolation=None)
        parser.optionxform = str
        parser.read(self.prefix / file)
        return parser[group]

    def test_the_bus_never_starts_the_program(self):
        self.assertFalse((self.prefix / "share/dbus-1").exists())
        self.assertNotIn("DBusActivatable", (self.prefix / ENTRY).read_text())

    def test_the_metainfo_is_valid_and_has_this_version(self):
        run("appstreamcli", "validate", "--no-net", "--no-color", self.prefix / METAINFO)
        component = xml.etree.ElementTree.parse(self.prefix / METAINFO).getroot()
        self.assertEqual(component.findtext("id"), ID)
        self.assertEqual(component.findtext("launchable"), ENTRY.name)
        self.assertEqual(component.find("releases/release").get("version"), self.version)

    def test_the_screenshots_of_the_metainfo_are_in_the_documentation(self):
        images = xml.etree.ElementTree.parse(self.prefix / METAINFO).findall(".//image")
        self.assertTrue(images)
        for image in images:
            self.assertTrue((SOURCES / "docs" / pathlib.Path(image.text).name).exists(), image.text)

    def test_icons_have_the_size_of_their_folder_and_are_not_blank(self):
        self.assertIn("<svg", (self.prefix / SCALABLE_ICON).read_text())
        for side in ICON_SIDES:
            output = run("identify", "-format", "%w %h %k", self.prefix / icon(side))
            width, height, colors = map(int, output.split())
            self.assertEqual((width, height), (side, side))
            self.assertGreater(colors, 32, side)

    def test_the_installed_program_runs(self):
        environment = self.environment()
        program = subprocess.Popen([self.prefix / "bin/quillsatchel"], env=environment)
        self.addCleanup(program.wait)
        self.addCleanup(program.kill)
        data = pathlib.Path(environment["XDG_DATA_HOME"], "Quillsatchel")
        await_existence(data)
        self.assertIsNone(program.poll())

    def test_installed_modules_and_the_listener_are_found(self):
        self.assertTrue(self.module_tests)
        for program, test in self.module_tests:
            run(shutil.copy(program, self.prefix / "bin"), test, env=self.environment())

    def test_modules_writable_by_others_are_not_loaded(self):
        program, test = self.module_tests[0]
        program = shutil.copy(program, self.prefix / "bin")
        (self.prefix / self.modules).chmod(0o777)
        done = subprocess.run([program, test], env=self.environment(), stdout=subprocess.DEVNULL)
        self.assertEqual(done.returncode, 1)

    def test_uninstalling_leaves_only_user_data(self):
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
        """The environment of a new user without a desktop session."""
        environment = {"PATH": "/usr/bin:/bin", "LC_ALL": "C.UTF-8", "HOME": str(self.folder),
                       "DBUS_SESSION_BUS_ADDRESS": f"unix:path={self.folder}/none",
                       "QT_QPA_PLATFORM": "offscreen"}
        for name in ("CACHE_HOME", "CONFIG_HOME", "DATA_HOME", "RUNTIME_DIR"):
            folder = self.folder / name.lower()
            folder.mkdir(mode=0o700, exist_ok=True)
            environment[f"XDG_{name}"] = str(folder)
        return environment


def await_existence(file):
    end = time.monotonic() + TIMEOUT_SECONDS
    while not file.exists():
        if time.monotonic() > end:
            raise AssertionError(f"{file} does not exist.")
        time.sleep(0.05)


if __name__ == "__main__":
    InstallTest.build, InstallTest.modules = map(pathlib.Path, sys.argv[1:3])
    InstallTest.version, *words = sys.argv[3:]
    InstallTest.module_tests = list(zip(words[::2], words[1::2]))
    unittest.main(argv=sys.argv[:1], verbosity=2)
