"""Applications that a test installs, and that record how they were started."""

import os

RECORDING_PROGRAM = """#!/bin/sh
{{
    printf 'started\\n'
    printf '%s\\n' "$@"
    printf 'startup id: %s\\n' "$DESKTOP_STARTUP_ID"
}} >"{record}.part"
mv "{record}.part" "{record}"
"""

ENTRY = """[Desktop Entry]
Type=Application
Name={name}
Comment={comment}
Exec="{program}" {arguments}
MimeType={types}
StartupNotify=true
"""

WEB = "x-scheme-handler/http;x-scheme-handler/https;"


class RecordingApplication:
    """The constructor installs it."""

    def __init__(self, session, name, comment="", arguments="", types=""):
        self.name = name
        identifier = name.lower().replace(" ", "-")
        folder = session.folder / "data_home" / "applications"
        folder.mkdir(exist_ok=True)
        self._record = session.folder / f"{identifier}-started"
        program = session.folder / "bin" / identifier
        program.write_text(RECORDING_PROGRAM.format(record=self._record))
        program.chmod(0o755)
        self.entry = folder / f"{identifier}.desktop"
        self.entry.write_text(ENTRY.format(name=name, comment=comment, program=program,
                                           arguments=arguments, types=types))
        self._program = program

    def remove(self):
        for file in (self.entry, self._program, self._record):
            file.unlink(missing_ok=True)

    def make_default_browser(self, session):
        """Returns the file that contains the choice."""
        kinds = [kind for kind in WEB.split(";") if kind]
        defaults = "".join(f"{kind}={self.entry.name}\n" for kind in kinds)
        choices = session.folder / "config_home" / "mimeapps.list"
        choices.write_text(f"[Default Applications]\n{defaults}")
        return choices

    def recorded_start(self):
        """The lines it has written, or None before it was started."""
        return self._record.read_text().splitlines() if os.path.exists(self._record) else None
