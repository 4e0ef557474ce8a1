#!/usr/bin/env python3
"""Works with the windows that `lintara` shows, as a user does, and looks at what becomes of the files.

Usage: commands_end_to_end.py LINTARA LINTARA_WINDOW SAMPLES

The same screen and the same exit statuses as end_to_end.py.
"""

import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

import end_to_end
from end_to_end import PATIENCE, Window, wait_for


class CommandWindow(Window):
    """A run of `lintara` that shows a window."""

    def __init__(self, arguments, environment, title):
        self.environment = environment
        self.process = subprocess.Popen(arguments, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                        stderr=subprocess.PIPE, text=True)
        self.id = self.appeared(title)

    def ended(self):
        output, messages = self.process.communicate(timeout=PATIENCE)
        return self.process.returncode, output, messages


class Desk:
    """A project to work on, and a user's folders."""

    def __init__(self, lintara, window, samples, environment, folder):
        self.lintara = lintara
        self.folder = pathlib.Path(folder)
        self.environment = environment | {"LINTARA_WINDOW": window, "XDG_CONFIG_HOME": str(self.folder / "config"),
                                          "XDG_STATE_HOME": str(self.folder / "state")}
        for name in ("asked", "told"):
            shutil.copytree(samples, self.folder / name)
        self.shown = []

    def project(self, name):
        return str(next((self.folder / name).glob("**/Invoicing.vbp")))

    def show(self, title, *arguments):
        self.shown.append(CommandWindow([self.lintara, *arguments], self.environment, title))
        return self.shown[-1]

    def run(self, *arguments):
        return subprocess.run([self.lintara, *arguments], env=self.environment, capture_output=True, text=True,
                              timeout=PATIENCE)

    def files(self, name):
        top = self.folder / name
        return {path.relative_to(top): path.read_bytes() for path in top.rglob("*") if path.is_file()}


def the_insert_dialog_edits_the_sample(desk):
    window = desk.show("Insert error handlers/line numbers", "dialog", "insert-eh", desk.project("asked"), "--at",
                       "modTax:30")
    window.key("alt+a")
    window.type("30000")
    window.key("Tab")
    window.type("20")
    window.key("alt+o", "alt+b")
    status, output, messages = window.ended()
    told = desk.run("insert", desk.project("told"), "--error-handlers", "--line-numbers", "--base", "30000", "--step",
                    "20", "--component", "modTax")
    assert (status, output) == (told.returncode, told.stdout), (status, output, messages, told)
    assert status == 0, (status, messages)
    assert desk.files("asked") == desk.files("told")
    changed = next(content for path, content in desk.files("asked").items() if path.name == "modTax.bas")
    assert b"\n30020:  " in changed, changed[:2000]


def cancel_leaves_the_sample_alone(desk):
    window = desk.show("Remove error handlers/line numbers", "dialog", "remove-eh", desk.project("asked"), "--at",
                       "modTax:30")
    window.key("Escape")
    assert window.ended() == (1, "", "lintara: the dialog was cancelled; nothing was changed\n")
    assert desk.files("asked") == desk.files("told")


def the_history_leads_back(desk):
    for line in (20, 30, 25):
        assert desk.run("member", desk.project("asked"), "--at", f"modTax:{line}").returncode == 0
    window = desk.show("Navigation history", "history", desk.project("asked"))
    window.key("Down", "Down", "Return")
    status, output, messages = window.ended()
    assert status == 0, messages
    file, line = output.strip().rsplit(":", 1)
    assert pathlib.Path(file).name == "modTax.bas", output
    assert int(line) == 21, output


def the_window_goes_with_the_command(desk):
    for title, arguments in [("Insert custom code", ("dialog", "insert-code", "--at", "modTax:30")),
                             ("Navigation history", ("history",))]:
        window = desk.show(title, *arguments, desk.project("asked"))
        window.process.kill()
        wait_for("the end of the window", lambda: not window.xdotool("search", "--onlyvisible", "--name", title))
    # A message over the window does not hold it.
    window = desk.show("Insert custom code", "dialog", "insert-code", desk.project("asked"), "--at", "modTax:30")
    window.key("alt+d", "ctrl+shift+c")
    window.appeared("Tarnwick Lintara")
    window.process.kill()
    for title in ("Tarnwick Lintara", "Insert custom code"):
        wait_for("the end of the window", lambda: not window.xdotool("search", "--onlyvisible", "--name", title))
    assert desk.files("asked") == desk.files("told")


def the_buffer_goes_from_one_dialog_to_the_next(desk):
    arguments = (desk.project("asked"), "--at", "modTax:30", "--check")
    window = desk.show("Insert custom code", "dialog", "insert-code", *arguments)
    window.key("alt+d")
    window.type("Beep")
    window.key("shift+Home", "ctrl+shift+c")
    window.appeared("Tarnwick Lintara")
    window.key("Return")
    wait_for("the end of the message", lambda: window.focused() == window.id)
    window.key("alt+b")
    assert window.ended()[0] == 1
    window = desk.show("Insert error handlers/line numbers", "dialog", "insert-eh", *arguments, "--diff")
    window.key("alt+h", "ctrl+a", "ctrl+shift+v", "alt+b")
    status, output, messages = window.ended()
    assert "+    Beep\n" in output or "+Beep\n" in output or ":  Beep\n" in output or ": Beep\n" in output, output


CASES = [the_window_goes_with_the_command, the_buffer_goes_from_one_dialog_to_the_next, the_insert_dialog_edits_the_sample, cancel_leaves_the_sample_alone, the_history_leads_back]


def run_case(case, arguments, environment):
    """Whether it holds."""
    with tempfile.TemporaryDirectory() as folder:
        desk = Desk(*arguments, environment, folder)
        try:
            case(desk)
            print("ok  ", case.__name__)
            return True
        except (AssertionError, ValueError, subprocess.TimeoutExpired) as error:
            print("FAIL", case.__name__, error)
            return False
        finally:
            for window in desk.shown:
                window.process.kill()
                window.process.wait()


def main():
    arguments = [os.path.abspath(argument) for argument in sys.argv[1:4]]
    missing = [name for name in ("Xvfb", "openbox", "xdotool") if shutil.which(name) is None]
    if missing:
        print("missing:", ", ".join(missing))
        return 77
    with end_to_end.screen() as environment:
        results = [run_case(case, arguments, environment) for case in CASES]
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
