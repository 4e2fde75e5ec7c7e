"""What an installation of the program consists of, and how one is made."""

import pathlib
import subprocess

ID = "example.quillsatchel.Quillsatchel"
ICON_SIDES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
DRAWING = pathlib.Path(f"share/icons/hicolor/scalable/apps/{ID}.svg")
ENTRY = pathlib.Path(f"share/applications/{ID}.desktop")
METAINFO = pathlib.Path(f"share/metainfo/{ID}.metainfo.xml")
MANUAL_PAGE = pathlib.Path("share/man/man1/quillsatchel.1.gz")
LICENCE = pathlib.Path("share/doc/quillsatchel/copyright")


def picture(side):
    return pathlib.Path(f"share/icons/hicolor/{side}x{side}/apps/{ID}.png")


def programs(modules):
    """Where `modules` is the folder that they are installed in."""
    return {pathlib.Path("bin/quillsatchel"), modules / "listener"}


def expected_files(modules):
    return {DRAWING, ENTRY, METAINFO, MANUAL_PAGE, LICENCE, *programs(modules),
            *(picture(side) for side in ICON_SIDES),
            *(modules / f"{name}.so" for name in ("network", "speech", "workspace"))}


def files_below(folder):
    return {file.relative_to(folder) for file in folder.rglob("*") if not file.is_dir()}


def run(*command, **options):
    """What it says; what it says is in the error too where it fails."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          check=False, **options)
    if done.returncode:
        raise AssertionError(f"{command[0]} ended with {done.returncode}:\n{done.stdout}")
    return done.stdout
