"""The files of an installation, and helpers to create and inspect one."""

import pathlib
import subprocess

ID = "example.quillsatchel.Quillsatchel"
ICON_SIDES = (16, 22, 24, 32, 48, 64, 128, 256, 512)
SCALABLE_ICON = pathlib.Path(f"share/icons/hicolor/scalable/apps/{ID}.svg")
ENTRY = pathlib.Path(f"share/applications/{ID}.desktop")
METAINFO = pathlib.Path(f"share/metainfo/{ID}.metainfo.xml")
MANUAL_PAGE = pathlib.Path("share/man/man1/quillsatchel.1.gz")
SEARCH_PROVIDER = pathlib.Path(f"share/gnome-shell/search-providers/{ID}.search-provider.ini")
RUNNER = pathlib.Path(f"share/krunner/dbusplugins/{ID}.runner.desktop")
LICENCE = pathlib.Path("share/doc/quillsatchel/copyright")


def icon(side):
    return pathlib.Path(f"share/icons/hicolor/{side}x{side}/apps/{ID}.png")


def programs(modules):
    """`modules` is the folder of the modules, relative to the prefix."""
    return {pathlib.Path("bin/quillsatchel"), modules / "listener"}


def expected_files(modules):
    return {SCALABLE_ICON, ENTRY, METAINFO, MANUAL_PAGE, SEARCH_PROVIDER, RUNNER, LICENCE,
            *programs(modules),
            *(icon(side) for side in ICON_SIDES),
            *(modules / f"{name}.so" for name in ("network", "speech", "workspace"))}


def files_below(folder):
    return {file.relative_to(folder) for file in folder.rglob("*") if not file.is_dir()}


def run(*command, **options):
    """Returns the output of a command; raises an error with the output if the command fails."""
    done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          check=False, **options)
    if done.returncode:
        raise AssertionError(f"{command[0]} ended with {done.returncode}:\n{done.stdout}")
    return done.stdout
