"""A session of its own for one desktop: home, runtime folder, bus and processes."""
import os
import pathlib
import shutil
import signal
import subprocess
import tempfile
import time


class CannotCheck(Exception):
    """The machine or the desktop does not allow a check; the text says why."""


def wait_for(condition, seconds=20):
    """Returns the first true result of the condition, or its last one when the time is over."""
    end = time.monotonic() + seconds
    while not (result := condition()) and time.monotonic() < end:
        time.sleep(0.3)
    return result


class Session:
    """Ends everything that was started in it when it is left. Logs and pictures go to `folder`."""

    def __init__(self, folder):
        self.folder = pathlib.Path(folder)
        shutil.rmtree(self.folder, ignore_errors=True)
        self.folder.mkdir(parents=True)
        # Names of sockets must be short, and those of the folder need not be.
        self.place = pathlib.Path(tempfile.mkdtemp(prefix="nivlo-desktop-"))
        self.home = self.place / "home"
        self.runtime = self.place / "run"
        self.runtime.mkdir(mode=0o700)
        # Some desktops show no menu in a home without a Desktop folder that holds something.
        (self.home / "Desktop").mkdir(parents=True)
        (self.home / "Desktop" / "note.txt").write_text("A file on the desktop.\n")
        self.environment = {
            "PATH": os.environ["PATH"], "HOME": str(self.home), "XDG_RUNTIME_DIR": str(self.runtime),
            "LC_ALL": "C.UTF-8", "LIBGL_ALWAYS_SOFTWARE": "1", "NO_AT_BRIDGE": "1", "GTK_A11Y": "none"}
        self.processes = []

    def __enter__(self):
        return self

    def __exit__(self, *_):
        for process in reversed(self.processes):
            self.stop(process)
        shutil.rmtree(self.place, ignore_errors=True)

    def start(self, name, command, pass_fds=(), **environment):
        """Starts a program in a process group of its own. Its output goes to NAME.log."""
        if not shutil.which(command[0]):
            raise CannotCheck(f"{command[0]} is not installed")
        with open(self.folder / f"{name}.log", "ab") as log:
            process = subprocess.Popen(
                command, env={**self.environment, **environment}, stdin=subprocess.DEVNULL, stdout=log, stderr=log,
                start_new_session=True, cwd=self.home, pass_fds=pass_fds)
        self.processes.append(process)
        return process

    def stop(self, process):
        """Asks the program's whole group to end and insists after three seconds."""
        for number, patience in ((signal.SIGTERM, 3), (signal.SIGKILL, 5)):
            try:
                os.killpg(process.pid, number)
                process.wait(patience)
            except (ProcessLookupError, subprocess.TimeoutExpired):
                continue
        if process in self.processes:
            self.processes.remove(process)

    def run(self, *command):
        """Runs a short program and returns its output, also if it fails."""
        done = subprocess.run(command, env=self.environment, stdin=subprocess.DEVNULL, capture_output=True, timeout=60)
        return done.stdout.decode(errors="replace")

    def start_bus(self):
        """To be called when the environment is complete, as programs that the bus starts inherit it. The bus stands for the
        system's bus too, whose services would be those of another session."""
        socket = self.runtime / "bus"
        self.start("bus", ["dbus-daemon", "--session", f"--address=unix:path={socket}", "--nofork"])
        if not wait_for(socket.exists):
            raise CannotCheck("dbus-daemon does not start; see bus.log")
        for variable in ("DBUS_SESSION_BUS_ADDRESS", "DBUS_SYSTEM_BUS_ADDRESS"):
            self.environment[variable] = f"unix:path={socket}"

    def bus_knows(self, service):
        names = self.run("gdbus", "call", "--session", "-d", "org.freedesktop.DBus", "-o", "/org/freedesktop/DBus",
                         "-m", "org.freedesktop.DBus.NameHasOwner", service)
        return names.startswith("(true")
