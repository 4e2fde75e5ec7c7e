#!/usr/bin/python3 -B
"""Tests run in a private environment and leave nothing behind."""

import os
import pathlib
import signal
import subprocess
import tempfile
import unittest

import environment

HERE = pathlib.Path(__file__).resolve().parent
SCRIPT = HERE / "environment.py"
DESKTOP_TESTS = HERE.parent / "desktop/run_tests.py"
USER_VARIABLES = {
    "LANGUAGE": "tr", "LC_ALL": "tr_TR.UTF-8", "LC_MESSAGES": "tr_TR.UTF-8", "DISPLAY": ":7",
    "WAYLAND_DISPLAY": "wayland-7", "XDG_CURRENT_DESKTOP": "KDE", "XDG_DATA_HOME": "relative",
    "QT_SCALE_FACTOR": "3", "QT_QPA_PLATFORM": "wayland", "QT_STYLE_OVERRIDE": "Windows",
    "GTK_THEME": "Light", "http_proxy": "http://proxy"}
EXPECTED = {
    "PATH", "HOME", "TMPDIR", "LC_ALL", "TZ", "FONTCONFIG_FILE", "DBUS_SESSION_BUS_ADDRESS",
    "XDG_CACHE_HOME", "XDG_CONFIG_DIRS", "XDG_CONFIG_HOME", "XDG_DATA_DIRS", "XDG_DATA_HOME",
    "XDG_RUNTIME_DIR", "XDG_STATE_HOME"}
# For a user namespace, where port 80 of the machine is unavailable. Denies network namespaces too.
WITHOUT_NETWORK = """
for kind in user net; do echo 0 >/proc/sys/user/max_${kind}_namespaces || exit 1; done
exec "$@"
"""


class EnvironmentTest(unittest.TestCase):
    def setUp(self):
        folder = tempfile.TemporaryDirectory(dir="/tmp")
        self.addCleanup(folder.cleanup)
        self.folder = pathlib.Path(folder.name)

    def run_in_environment(self, *command, variables=None):
        return subprocess.run([SCRIPT, *command], capture_output=True, text=True,
                              env=self.caller_variables(variables))

    def caller_variables(self, variables=None):
        kept = {name: value for name, value in os.environ.items()
                if name not in environment.KEPT_VARIABLES}
        return kept | {"TMPDIR": str(self.folder)} | (variables or {})

    def variables_seen(self, *given, variables=None):
        done = self.run_in_environment(*given, "env", "--null", variables=variables)
        return dict(line.split("=", 1) for line in done.stdout.rstrip("\0").split("\0"))

    def test_user_variables_are_hidden(self):
        seen = self.variables_seen(variables=USER_VARIABLES)
        self.assertEqual(set(seen), EXPECTED)
        self.assertEqual(seen["LC_ALL"], "C.UTF-8")
        for name in ("HOME", "TMPDIR", "XDG_DATA_DIRS", "XDG_DATA_HOME", "XDG_RUNTIME_DIR"):
            self.assertEqual(pathlib.Path(seen[name]).parents[1], self.folder, name)

    def test_a_temporary_folder_with_an_unsafe_path_is_not_used(self):
        for name in ("with space", "ğ", "long" * 20):
            unusual = self.folder / name
            unusual.mkdir()
            seen = self.variables_seen(variables={"TMPDIR": str(unusual)})
            self.assertEqual(pathlib.Path(seen["HOME"]).parents[1], pathlib.Path("/tmp"), name)

    def test_given_variables_and_those_of_sanitizers_are_passed_on(self):
        seen = self.variables_seen("QT_SCALE_FACTOR=2", variables={"UBSAN_OPTIONS": "x=1"})
        self.assertEqual(set(seen), EXPECTED | {"QT_SCALE_FACTOR", "UBSAN_OPTIONS"})
        self.assertEqual(seen["QT_SCALE_FACTOR"], "2")

    def test_installed_applications_are_hidden(self):
        done = self.run_in_environment("sh", "-c", "ls \"$XDG_DATA_DIRS\"")
        self.assertEqual(done.stdout.split(), sorted(environment.DATA))

    def test_the_umask_is_fixed(self):
        previous = os.umask(0o077)
        self.addCleanup(os.umask, previous)
        self.assertEqual(self.run_in_environment("sh", "-c", "umask").stdout.strip(), "0022")

    def test_only_noto_fonts_are_available(self):
        done = self.run_in_environment("fc-list", "--format", "%{file}\n")
        files = done.stdout.splitlines()
        self.assertTrue(files)
        for file in files:
            self.assertIn("noto", file.lower())

    def test_the_exit_status_is_passed_on(self):
        self.assertEqual(self.run_in_environment("true").returncode, 0)
        self.assertEqual(self.run_in_environment("sh", "-c", "exit 77").returncode, 77)

    def test_a_crash_fails_and_names_the_signal(self):
        done = self.run_in_environment("sh", "-c", "kill -SEGV $$")
        self.assertEqual(done.returncode, 1)
        self.assertIn("SIGSEGV", done.stderr)

    def test_no_files_remain(self):
        self.run_in_environment("sh", "-c", "touch \"$HOME/file\" \"$TMPDIR/file\"")
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_no_files_remain_after_termination(self):
        with subprocess.Popen([SCRIPT, "sh", "-c", "echo started; exec sleep 60"],
                              env=self.caller_variables(), stdout=subprocess.PIPE,
                              stderr=subprocess.DEVNULL, text=True) as program:
            self.addCleanup(program.kill)
            self.assertEqual(program.stdout.readline(), "started\n")
            self.assertNotEqual(list(self.folder.iterdir()), [])
            program.send_signal(signal.SIGTERM)
            self.assertNotEqual(program.wait(20), 0)
        self.assertEqual(list(self.folder.iterdir()), [])


class WebsiteTest(unittest.TestCase):
    def test_website_tests_are_skipped_without_port_and_network(self):
        limited = ["unshare", "--user", "--map-root-user", "sh", "-c", WITHOUT_NETWORK, "sh"]
        if subprocess.run([*limited, "true"], stderr=subprocess.DEVNULL).returncode:
            self.skipTest("user namespaces are not available")
        with tempfile.TemporaryDirectory() as folder:
            done = subprocess.run([*limited, DESKTOP_TESTS, "/bin/false", folder, "--composited",
                                   "--website"], capture_output=True, text=True)
        self.assertEqual(done.returncode, 77, done.stderr)
        self.assertIn("Skipped: port 80", done.stdout)


if __name__ == "__main__":
    unittest.main(verbosity=2)
