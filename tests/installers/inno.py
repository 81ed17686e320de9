"""The Windows for Inno Setup and its setups, which are 32-bit programs."""

import subprocess
from contextlib import contextmanager

from machines import UNINSTALL_KEY, Windows, remove_all, wine_environment
from project import BUILD, SUPPORT


class InnoWindows(Windows):
    """A Windows for 32-bit and 64-bit programs, with a display, in a Debian of its own."""

    debian = BUILD / "inno-machine"
    prefix = debian / "windows"
    display = ""
    has_uninstall_entries = False  # clean() removes them

    def clean(self) -> None:
        super().clean()
        remove_all(self.c / "Program Files (x86)", keep=["Internet Explorer", "Windows Media Player", "Windows NT"])

        # Its regedit would delete only the 32-bit entries.
        for action, bits in (("delete", 32), ("delete", 64), ("add", 64)):
            silently = {"stdout": subprocess.DEVNULL, "stderr": subprocess.DEVNULL}
            self.tool("reg", action, UNINSTALL_KEY, "/f", f"/reg:{bits}", **silently).wait()

    @classmethod
    def make(cls) -> None:
        subprocess.run(cls.entered("true"), check=True)

    @classmethod
    def entered(cls, *command: str) -> list[str]:
        enter = [str(SUPPORT / "inno-machine"), str(cls.debian)]
        return [*enter, "env", "--chdir=/windows/drive_c", *super().entered(*command)]

    @classmethod
    def environment(cls) -> dict[str, str]:
        environment = {name: value.replace(str(cls.debian), "") for name, value in wine_environment(cls.prefix).items()}
        return environment | {"DISPLAY": cls.display}

    @classmethod
    @contextmanager
    def started(cls):
        """Keeps the Windows running meanwhile, with a virtual display."""
        server = cls.entered("Xvfb", "-displayfd", "1", "-nolisten", "tcp")

        with subprocess.Popen(server, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True) as display:
            cls.display = ":" + display.stdout.readline().strip()

            try:
                with super().started():
                    yield
            finally:
                display.terminate()
