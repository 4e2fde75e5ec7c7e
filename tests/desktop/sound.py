"""A virtual loudspeaker, a microphone that records its output, and a synthetic voice."""

import os
import pathlib
import subprocess
import unittest

from waiting import wait_for_value

VIRTUAL_MICROPHONE = pathlib.Path(__file__).parent.parent / "platform/speech/virtual_microphone"
NOT_INSTALLED = 77
# Prints the folder of the server, which runs until stdin is closed.
PRINT_FOLDER_AND_WAIT = 'echo "$XDG_RUNTIME_DIR" && read -r _'


class VirtualSound:
    """A sound server with only a virtual microphone. Skips the tests if it is not installed."""

    def __init__(self, session):
        self._session = session
        self._process = session.start(
            VIRTUAL_MICROPHONE, "sh", "-c", PRINT_FOLDER_AND_WAIT, stdin=subprocess.PIPE,
            stdout=subprocess.PIPE, text=True, environment={"TMPDIR": session.folder})
        folder = self._process.stdout.readline().strip()
        if not folder:
            self._report_failure()
        self.server = f"unix:{folder}/pulse/native"
        self._environment = os.environ | {"PULSE_SERVER": self.server}

    def end(self):
        self._process.communicate()

    def say(self, sentence):
        """Starts playing the sentence in a synthetic voice; returns the player's process."""
        file = self._session.folder / "voice.wav"
        subprocess.run(["flite", "-voice", "rms", "-t", sentence, "-o", file], check=True)
        return self._session.start("paplay", "--latency-msec=200", file,
                                   environment={"PULSE_SERVER": self.server})

    def recording_programs(self):
        """The names of the programs that have the microphone open, according to the server."""
        lines = self.control("list", "source-outputs").splitlines()
        return [line.split('"')[1] for line in lines if "application.name = " in line]

    def choose_microphone(self, name):
        self.control("set-default-source", name)
        wait_for_value("the default source", name,
                       lambda: self.control("get-default-source").strip())

    def plug_in(self, name):
        """Adds a microphone; returns a function that unplugs it."""
        module = self.control("load-module", "module-remap-source", f"source_name={name}",
                              "master=speaker.monitor", "channels=1", "channel_map=mono",
                              "master_channel_map=front-left", "remix=no").strip()
        return lambda: self.control("unload-module", module)

    def control(self, *command):
        return subprocess.run(["pactl", *command], env=self._environment, check=True,
                              stdout=subprocess.PIPE, text=True).stdout

    def _report_failure(self):
        if self._process.wait() == NOT_INSTALLED:
            raise unittest.SkipTest("PipeWire, the sound server, is not installed")
        raise RuntimeError(f"The sound server did not start:\n{self._session.log()}")
