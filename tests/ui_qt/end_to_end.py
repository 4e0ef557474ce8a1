#!/usr/bin/env python3
"""Works with the windows as a user does: on a screen in memory, with a window manager, by keys and mouse.

Usage: end_to_end.py LINTARA_WINDOW

Each case starts the program, types and clicks, and compares the answer with what was entered. Needs Xvfb,
openbox and xdotool. Exit status: 0 when all cases hold, 1 when one does not, 77 when a program is missing.
"""

import contextlib
import json
import os
import shutil
import subprocess
import sys
import tempfile
import time

PATIENCE = 20  # seconds for anything to happen


def wait_for(what, question):
    deadline = time.monotonic() + PATIENCE
    while time.monotonic() < deadline:
        answer = question()
        if answer:
            return answer
        time.sleep(0.02)
    raise AssertionError(f"{what} did not happen within {PATIENCE} s")


@contextlib.contextmanager
def screen():
    """Xvfb on a display number of its own choice, with a window manager; gives the environment for it."""
    reading, writing = os.pipe()
    server = subprocess.Popen(["Xvfb", "-displayfd", str(writing), "-screen", "0", "1280x1024x24", "-nolisten", "tcp"],
                              pass_fds=[writing], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    os.close(writing)
    manager = None
    try:
        with os.fdopen(reading) as stream:
            number = stream.readline().strip()
        assert number, "Xvfb did not start"
        environment = {name: value for name, value in os.environ.items()
                       if not name.startswith("QT_") and name not in ("WAYLAND_DISPLAY", "XAUTHORITY")}
        environment["DISPLAY"] = f":{number}"
        # What the font and the accessibility libraries keep to the end is no leak of ours.
        environment["ASAN_OPTIONS"] = "detect_leaks=0"
        manager = subprocess.Popen(["openbox", "--sm-disable"], env=environment, stdout=subprocess.DEVNULL,
                                   stderr=subprocess.DEVNULL)
        wait_for("the window manager's start", lambda: subprocess.run(
            ["xdotool", "get_num_desktops"], env=environment, capture_output=True).returncode == 0)
        yield environment
    finally:
        for process in (manager, server):
            if process is not None:
                process.terminate()
                process.wait()


class Window:
    """One run of the program."""

    def __init__(self, program, environment, title, request):
        self.environment = environment
        self.process = subprocess.Popen([program], env=environment, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        text=True)
        self.process.stdin.write(json.dumps(request))
        self.process.stdin.close()
        self.process.stdin = None
        self.id = self.appeared(title)

    def appeared(self, title):
        """The window of that title, once it has the keyboard."""
        window = wait_for(f'the window "{title}"',
                          lambda: self.xdotool("search", "--onlyvisible", "--name", f"^{title}$"))
        wait_for(f'the keyboard for "{title}"', lambda: self.focused() == window)
        return window

    def focused(self):
        return self.xdotool("getwindowfocus")

    def xdotool(self, *arguments):
        run = subprocess.run(["xdotool", *arguments], env=self.environment, capture_output=True, text=True)
        return run.stdout.strip()

    def key(self, *keys):
        self.xdotool("key", "--delay", "40", *keys)

    def type(self, text):
        self.xdotool("type", "--delay", "40", text)

    def click(self, x, y):
        self.xdotool("mousemove", "--window", self.id, str(x), str(y), "click", "1")

    def geometry(self, *names):
        lines = self.xdotool("getwindowgeometry", "--shell", self.id).splitlines()
        values = dict(line.split("=") for line in lines)
        return tuple(int(values[name]) for name in names)

    def size(self):
        return self.geometry("WIDTH", "HEIGHT")

    def place(self):
        return self.geometry("X", "Y")

    def answer(self):
        output, _ = self.process.communicate(timeout=PATIENCE)
        assert self.process.returncode == 0, f"exit status {self.process.returncode}"
        return json.loads(output)


INSERT = ("Insert error handlers/line numbers", {"window": "insert-eh", "iLenGetMemberName": 4, "iGetLineNumber": 9})


def base_and_step_by_keys(show):
    window = show(*INSERT)
    window.key("alt+a")
    window.type("100")
    window.key("Tab")
    window.type("20")
    window.key("alt+o", "alt+b")
    answer = window.answer()
    assert answer["accepted"] is True, answer
    assert (answer["LNBase"], answer["LNStep"], answer["Scope"]) == ("100", "20", 2), answer
    assert answer["EHCode"].startswith("    Select Case MsgBox("), answer
    assert answer["EHCode"].endswith("End Select\r\n"), answer
    # What was entered is there the next time, and Enter begins.
    window = show(*INSERT)
    window.key("Return")
    answer = window.answer()
    assert (answer["LNBase"], answer["LNStep"], answer["Scope"]) == ("100", "20", 1), answer


def an_invalid_number_keeps_begin_from_working(show):
    window = show(*INSERT)
    window.key("alt+a")
    window.type("ten")
    window.key("alt+b", "Return")
    assert window.process.poll() is None, "the window was closed"
    window.key("Escape")
    assert window.answer() == {"accepted": False}


def the_mouse_closes_it(show):
    window = show("Remove custom code", {"window": "remove-code", "ProcAvailable": True, "ComponentAvailable": 1})
    width, height = window.size()
    # The middle one of the three buttons at the lower edge, which is Cancel.
    window.click(width // 2, height - 28)
    assert window.answer() == {"accepted": False}


def the_window_manager_closes_it(show):
    history = {"window": "history", "HistBackItem": ["modA.One|a"], "HistCurrentKey": "Back|0"}
    for title, request in [INSERT, ("Navigation history", history)]:
        window = show(title, request)
        window.key("alt+F4")
        assert window.answer() == {"accepted": False}


def it_ends_when_nobody_reads_the_answer(show):
    window = show(*INSERT)
    window.process.stdout.close()
    wait_for("the end", lambda: window.process.poll() is not None)


def code_is_copied_into_the_buffer(show):
    window = show("Insert custom code", {"window": "insert-code", "TextToInsert": "Beep", "ComponentAvailable": 1})
    window.key("alt+d", "ctrl+shift+c")
    window.appeared("Tarnwick Lintara")
    window.key("Return")
    wait_for("the end of the message", lambda: window.focused() == window.id)
    window.key("End", "Return", "ctrl+shift+v", "alt+b")
    answer = window.answer()
    assert answer["TextToInsert"] == "Beep\r\nBeep", answer
    assert answer["sCCPBufferX"] == "Beep", answer


def the_history_gives_what_is_chosen(show):
    window = show("Navigation history", {"window": "history", "HistBackItem": ["modA.One|a", "modA.Two|b"],
                                         "HistCurrentKey": "Back|0"})
    window.key("Down", "Return")
    assert window.answer() == {"accepted": True, "HistSelKey": "Back|1", "HistSelObject": "modA.Two|b"}


def help_is_shown_beside_the_window(show):
    # In the first window two controls have this access key: it goes from one to the other, and presses neither.
    for title, request, keys, topic in [
            (*INSERT, ["alt+h", "alt+h", "space"], "Error handlers and line numbers"),
            ("Remove custom code", {"window": "remove-code"}, ["alt+h"], "Custom code")]:
        window = show(title, request)
        window.key(*keys)
        window.appeared(topic)
        window.key("Escape")
        wait_for("the way back", lambda: window.focused() == window.id)
        window.key("Escape")
        assert window.answer() == {"accepted": False}


def a_window_comes_back_as_it_was(show):
    for title, request, size in [("Navigation history", {"window": "history"}, (700, 500)), (*INSERT, (850, 600))]:
        window = show(title, request)
        window.xdotool("windowsize", "--sync", window.id, *map(str, size))
        wait_for("the new size", lambda: window.size() == size)
        window.xdotool("windowmove", "--sync", window.id, "130", "90")
        place = window.place()
        window.key("Escape")
        window.answer()
        for _ in range(2):
            window = show(title, request)
            assert window.size() == size, window.size()
            wait_for("the old place", lambda: window.place() == place)
            window.key("Escape")
            window.answer()


def a_window_of_one_size_comes_back_where_it_was(show):
    request = ("Remove error handlers/line numbers", {"window": "remove-eh"})
    window = show(*request)
    size = window.size()
    window.xdotool("windowmove", "--sync", window.id, "130", "90")
    place = window.place()
    window.key("Escape")
    window.answer()
    window = show(*request)
    assert window.size() == size, window.size()
    wait_for("the old place", lambda: window.place() == place)
    window.key("Escape")
    window.answer()


CASES = [base_and_step_by_keys, an_invalid_number_keeps_begin_from_working, the_mouse_closes_it,
         the_window_manager_closes_it, it_ends_when_nobody_reads_the_answer, code_is_copied_into_the_buffer,
         the_history_gives_what_is_chosen, help_is_shown_beside_the_window, a_window_comes_back_as_it_was,
         a_window_of_one_size_comes_back_where_it_was]


def without_a_display(program):
    environment = {name: value for name, value in os.environ.items()
                   if not name.startswith("QT_") and name not in ("DISPLAY", "WAYLAND_DISPLAY")}
    for display in ({}, {"DISPLAY": ":98765"}):
        run = subprocess.run([program], env=environment | display, input='{"window": "history"}', capture_output=True,
                             text=True, timeout=PATIENCE)
        assert run.returncode == 3, run
        assert run.stderr.startswith("lintara-window: error: cannot show a window: "), run
        assert run.stderr.count("\n") == 1 and run.stdout == "", run


def run_case(case, program, environment):
    """Whether it holds."""
    shown = []
    with tempfile.TemporaryDirectory() as settings:
        def show(title, request):
            shown.append(Window(program, environment | {"XDG_CONFIG_HOME": settings}, title, request))
            return shown[-1]

        try:
            case(show)
            print("ok  ", case.__name__)
            return True
        except (AssertionError, ValueError, subprocess.TimeoutExpired) as error:
            print("FAIL", case.__name__, error)
            return False
        finally:
            for window in shown:
                window.process.kill()
                window.process.wait()


def main():
    program = sys.argv[1]
    missing = [name for name in ("Xvfb", "openbox", "xdotool") if shutil.which(name) is None]
    if missing:
        print("missing:", ", ".join(missing))
        return 77
    without_a_display(program)
    with screen() as environment:
        results = [run_case(case, program, environment) for case in CASES]
    return 0 if all(results) else 1


if __name__ == "__main__":
    sys.exit(main())
