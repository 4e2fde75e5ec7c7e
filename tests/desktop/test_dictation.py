"""Dictation from the microphone to the file, and the messages shown if it is unavailable."""

import ctypes.util
import json
import os
import pathlib
import shutil
import signal
import socket
import subprocess
import sys

from desktop_test import DesktopTest
from library import known_id, node, tab
from sound import VirtualSound
from waiting import wait_for, wait_for_value
from x11 import press_keys, type_text

SENTENCE = "suggest a better title for this article and summarize the following text"
LAST_WORDS = "the following text"
TITLE = "A synthetic voice:"
NO_MICROPHONE = "The microphone could not be started."
NO_RECOGNIZER = "Speech recognition is temporarily unavailable."
# The user's own spelling of a word that the model lacks, and how a voice reads it.
UNUSUAL_WORD = "WebHook"
UNUSUAL_TEXT = f"Explain what the {UNUSUAL_WORD} receives."
UNUSUAL_SENTENCE = "send the result to the web hook of our team"
# Writes a model of whisper.cpp that counts seconds with a loud voice.
MAKE_WHISPER_MODEL = (pathlib.Path(__file__).parent.parent
                      / "platform/speech/make_whisper_model.py")
SPEAKING_SECONDS = 150  # loading the model takes long on a busy machine


def written_bytes(process):
    """What the process has written to disks so far."""
    for line in pathlib.Path(f"/proc/{process}/io").read_text().splitlines():
        if line.startswith("write_bytes:"):
            return int(line.split()[1])
    raise RuntimeError("The kernel does not count written bytes")


def open_files(process):
    """The targets of the process's file descriptors."""
    return [os.readlink(file) for file in pathlib.Path(f"/proc/{process}/fd").iterdir()]


def is_on_disk(file):
    return file.startswith("/") and not file.startswith(("/dev/", "/proc/", "/memfd:"))


class SpeakingTest(DesktopTest):
    """A panel with two nodes."""

    def start(self, other_text="other", **environment):
        return self.open_panel([tab("Prompts", node(TITLE, id=known_id(2)),
                                    node(other_text, id=known_id(3)), id=known_id(1))],
                               environment=environment)

    def press(self, name, number=1):
        self.panel.node(number, 2).find(name, "push button").press()

    def saved_text(self):
        return json.loads(self.library_file.read_text())["tabs"][0]["blocks"][0]["text"]

    def expect_message(self, message):
        """Expects the message, no running dictation, and a panel that still works."""
        self.panel.find(message, "alert")
        self.assertTrue(self.panel.node(1, 2).has_any("Dictate"))
        self.assertFalse(self.panel.has_any("Stop"))
        self.panel.editor(1, 2).click()
        type_text("typed")
        wait_for("the typing in the file", lambda: "typed" in self.saved_text())


class DictationTest(SpeakingTest):
    @classmethod
    def setUpClass(cls):
        cls.sound = VirtualSound(cls.session)
        cls.addClassCleanup(cls.sound.end)

    def setUp(self):
        self.panel = self.start(PULSE_SERVER=self.sound.server)
        self.await_closed_microphone()

    def dictate(self, number=1):
        self.press("Dictate", number)
        self.panel.node(number, 2).find("Stop", "push button")
        self.assertEqual(self.sound.recording_programs(), ["Quillsatchel"])

    def await_closed_microphone(self):
        wait_for_value("the recording programs", [], self.sound.recording_programs)

    def texts_until(self, last_words):
        """Every text that the first node shows until it ends with `last_words`."""
        editor = self.panel.editor(1, 2)
        texts = [editor.text]

        def ends_so():
            text = editor.text
            if text != texts[-1]:
                texts.append(text)
            return text.endswith(last_words)

        wait_for(f"a node that ends with \"{last_words}\"", ends_so, SPEAKING_SECONDS)
        return texts

    def say_and_expect(self, sentence):
        self.sound.say(sentence)
        self.texts_until(sentence)

    def test_words_appear_while_they_are_spoken_and_are_saved(self):
        self.dictate()
        self.sound.say(SENTENCE)
        texts = self.texts_until(LAST_WORDS)
        self.press("Stop")

        self.await_closed_microphone()
        self.panel.node(1, 2).find("Dictate", "push button")
        self.assertEqual(texts[0], TITLE)
        self.assertTrue(all(text.startswith(f"{TITLE} ") for text in texts[1:]), texts)
        lengths = [len(text.split()) for text in texts]
        self.assertGreaterEqual(len(set(lengths)), 4, texts)
        self.assertLess(lengths[1], lengths[-1] - 3, texts)
        final, other = self.panel.node_texts()  # the final result may correct earlier words
        self.assertTrue(final.startswith(f"{TITLE} ") and final.endswith(LAST_WORDS), final)
        self.assertEqual(other, "other")
        wait_for_value("the text in the file", final, self.saved_text)

    def test_words_of_the_library_appear_as_spelled_there_and_nothing_else_is_written(self):
        if not ctypes.util.find_library("espeak-ng"):
            self.skipTest("libespeak-ng1, which pronounces words, is not installed")
        files = self.files()
        self.hear_the_unusual_word()  # the first use of a file changes its access time on the disk
        helper = self.hear_the_unusual_word()

        self.assertEqual(written_bytes(helper), 0)
        self.assertEqual([file for file in open_files(helper) if is_on_disk(file)], [])
        self.press("Stop")
        wait_for("the word in the file", lambda: UNUSUAL_WORD in self.saved_text())
        self.panel.end()
        self.expect_end_of(helper)
        library = self.library_file.parent
        others = {"Earlier versions", "wireplumber"}  # of the panel, and of the sound server
        self.assertEqual({file for file in self.files() - files if library not in file.parents
                          and not others.intersection(file.parts)},
                         {self.session.folder / "voice.wav"} - files)

    def hear_the_unusual_word(self):
        """Dictates it with a new panel, and returns the process that recognises speech."""
        self.panel.end()
        self.panel = self.start(UNUSUAL_TEXT, PULSE_SERVER=self.sound.server)
        self.dictate()
        helper, = self.helpers()
        self.sound.say(UNUSUAL_SENTENCE)
        editor = self.panel.editor(1, 2)
        wait_for("the word", lambda: UNUSUAL_WORD in editor.text, SPEAKING_SECONDS)
        return helper

    def test_a_model_of_the_user_writes_texts_with_punctuation(self):
        if b"libwhisper.so" not in (pathlib.Path(self.program).parent
                                    / "modules/listener").read_bytes():
            self.skipTest("The program is built without whisper.cpp")
        self.install_whisper_model()
        self.dictate()
        self.sound.say(SENTENCE)
        texts = self.texts_until(" two,")
        self.press("Stop")

        self.await_closed_microphone()
        for text in texts[1:]:
            self.assertTrue(text.startswith(f"{TITLE} One,"), texts)
        final, _ = self.panel.node_texts()
        self.assertTrue(final.startswith(f"{TITLE} One, two,"), final)
        wait_for_value("the text in the file", final, self.saved_text)

    def install_whisper_model(self):
        folder = self.session.data_folder.parent / "whisper.cpp"
        self.addCleanup(shutil.rmtree, folder)
        (folder / "models").mkdir(parents=True)
        subprocess.run([sys.executable, "-B", MAKE_WHISPER_MODEL,
                        folder / "models/ggml-counting.en.bin", "english"], check=True)

    def test_typing_ends_dictation_and_loses_nothing(self):
        self.dictate()
        voice = self.sound.say(SENTENCE)
        editor = self.panel.editor(1, 2)
        wait_for("the first words", lambda: editor.text != TITLE, SPEAKING_SECONDS)

        editor.click()
        press_keys("ctrl+End")
        type_text("!")

        self.panel.node(1, 2).find("Dictate", "push button")
        self.await_closed_microphone()
        text = editor.text
        self.assertRegex(text, f"^{TITLE} .+!$")
        voice.wait()
        self.assertEqual(editor.text, text)
        wait_for_value("the text in the file", text, self.saved_text)

    def test_an_edit_by_assistive_technology_ends_dictation(self):
        self.dictate()
        self.say_and_expect(LAST_WORDS)
        editor = self.panel.editor(1, 2)
        text = editor.text

        editor.insert(0, "Said: ")

        self.panel.node(1, 2).find("Dictate", "push button")
        self.await_closed_microphone()
        self.assertEqual(editor.text, f"Said: {text}")
        wait_for_value("the text in the file", f"Said: {text}", self.saved_text)

    def test_another_node_takes_over_the_microphone(self):
        self.dictate(1)
        self.say_and_expect(LAST_WORDS)

        self.press("Dictate", 2)

        self.panel.node(2, 2).find("Stop", "push button")
        self.panel.node(1, 2).find("Dictate", "push button")
        self.assertEqual(self.sound.recording_programs(), ["Quillsatchel"])
        self.assertRegex(self.panel.editor(1, 2).text, LAST_WORDS + "$")

    def test_speech_is_loaded_by_the_first_dictation(self):
        self.assertFalse(self.has_loaded("speech.so"))
        self.assertEqual(self.helpers(), [])

        self.dictate()

        self.assertTrue(self.has_loaded("speech.so"))
        self.assertEqual(len(self.helpers()), 1)

    def test_hiding_the_panel_closes_the_microphone(self):
        self.dictate()
        self.panel.find("Close", "push button").press()
        self.await_closed_microphone()
        self.assertTrue(self.panel.is_running())

    def test_minimizing_the_panel_closes_the_microphone(self):
        self.dictate()
        self.panel.find("Minimize", "push button").press()
        self.await_closed_microphone()

    def test_quitting_closes_the_microphone(self):
        self.dictate()
        helper, = self.helpers()
        self.assertIn(self.panel.end(), (0, -signal.SIGTERM))
        self.await_closed_microphone()
        self.expect_end_of(helper)

    def test_a_killed_program_leaves_no_open_microphone(self):
        self.dictate()
        helper, = self.helpers()
        os.kill(self.panel.process_id, signal.SIGKILL)
        self.await_closed_microphone()
        self.expect_end_of(helper)

    def test_a_killed_helper_ends_dictation_and_is_replaced(self):
        self.dictate()
        helper, = self.helpers()
        self.say_and_expect(LAST_WORDS)

        os.kill(helper, signal.SIGKILL)

        self.panel.node(1, 2).find("Dictate", "push button")
        self.await_closed_microphone()
        self.assertFalse(self.panel.has_any(role="alert"))
        self.assertRegex(self.panel.editor(1, 2).text, LAST_WORDS + "$")
        self.dictate()
        self.assertNotEqual(self.helpers(), [helper])
        self.say_and_expect(f"{LAST_WORDS} {LAST_WORDS}")

    def test_unplugging_the_microphone_ends_dictation(self):
        unplug = self.sound.plug_in("other")
        self.addCleanup(self.sound.choose_microphone, "microphone")
        self.sound.choose_microphone("other")
        self.dictate()
        self.say_and_expect(LAST_WORDS)

        unplug()

        self.panel.node(1, 2).find("Dictate", "push button")
        self.await_closed_microphone()
        self.assertFalse(self.panel.has_any(role="alert"))
        wait_for("the words in the file", lambda: self.saved_text().endswith(LAST_WORDS))

    def test_a_monitor_source_is_not_used_as_microphone(self):
        self.addCleanup(self.sound.choose_microphone, "microphone")
        self.sound.choose_microphone("speaker.monitor")
        self.press("Dictate")
        self.expect_message(NO_MICROPHONE)
        self.await_closed_microphone()

        self.sound.choose_microphone("microphone")
        self.dictate()
        self.assertFalse(self.panel.has_any(NO_MICROPHONE))

    def expect_end_of(self, process):
        # A zombie has no exe link.
        wait_for("the helper to exit", lambda: not os.path.exists(f"/proc/{process}/exe"))

    def has_loaded(self, library):
        return library in pathlib.Path(f"/proc/{self.panel.process_id}/maps").read_text()

    def files(self):
        """All files of this session."""
        return {file for file in self.session.folder.rglob("*") if file.is_file()}

    def helpers(self):
        """The ids of the panel's child processes."""
        threads = pathlib.Path(f"/proc/{self.panel.process_id}/task")
        return [int(number) for thread in threads.iterdir()
                for number in (thread / "children").read_text().split()]


class UnavailableDictationTest(SpeakingTest):
    """The panel starts normally, and "Dictate" shows the reason."""

    def expect_dictation_to_end_with(self, message, **environment):
        self.start(**environment)
        self.press("Dictate")
        self.expect_message(message)

    @property
    def missing_path(self):
        return str(self.session.folder / "missing")

    def test_reports_a_missing_sound_server(self):
        self.expect_dictation_to_end_with(NO_MICROPHONE, PULSE_SERVER=f"unix:{self.missing_path}")

    def test_reports_a_silent_sound_server(self):
        address = str(self.session.folder / "silent")
        with socket.socket(socket.AF_UNIX) as server:
            server.bind(address)
            server.listen()
            self.expect_dictation_to_end_with(NO_MICROPHONE, PULSE_SERVER=f"unix:{address}")

    def test_reports_a_missing_model(self):
        self.expect_dictation_to_end_with(NO_RECOGNIZER, XDG_DATA_DIRS=self.missing_path)

    def test_reports_a_missing_model_for_the_language(self):
        self.expect_dictation_to_end_with(NO_RECOGNIZER, LC_ALL="", LC_CTYPE="C.UTF-8",
                                          LC_MESSAGES="eo")

    def test_reports_a_missing_module(self):
        folder = self.session.folder / "incomplete"
        folder.mkdir()
        self.program = shutil.copy(self.program, folder)
        self.expect_dictation_to_end_with(NO_RECOGNIZER)
