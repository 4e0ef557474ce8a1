"""Measures whether the cost of a line grows with its module: every editing command on one module of 2,000 to
65,534 lines. flatness.py BUILD-FOLDER prints for each kind of module and each command the processor time of the
largest size and the exponent of growth, which is 1 when twice the lines take twice the time. Ends with status 1
when an exponent is above the limit."""

import math
import os
import pathlib
import subprocess
import sys
import tempfile

SIZES = [2_000, 4_000, 8_000, 16_000, 32_000, 65_534]
LIMIT = 1.05
RUNS = 5
BODY = 12
LINES_OF_A_PROCEDURE = BODY + 3

NUMBERS = ["--line-numbers"]
BOTH = ["--error-handlers", "--line-numbers"]

# What a module has as a procedure for each number; half of the last kind's procedures share a property.
SHAPES = {
    "subs": lambda i: (f"Sub Item{i}(ByVal value As Long)", "Sub"),
    "half properties": lambda i: (f"Property Get Item{i}() As Long", "Property")
    if i % 2 else (f"Sub Item{i}(ByVal value As Long)", "Sub"),
    "properties": lambda i: (f"Property {'Let' if i % 2 else 'Get'} Item{i // 2}(value)", "Property"),
    "handled": lambda i: (f"Sub Item{i}(ByVal value As Long)", "Sub"),
}


def module(shape, lines):
    """The bytes of a module of so many shown lines."""
    written = []
    number = 0
    while len(written) + LINES_OF_A_PROCEDURE <= lines:
        header, word = SHAPES[shape](number)
        written.append("Public " + header)
        body = [f"    total = total + Rate({number + i}) * value ' Zuschläge" for i in range(BODY)]
        if shape == "handled":
            body[0] = "    On Error GoTo Failed"
            body[1] = "    On Error GoTo 0"
            body[-1] = f"Failed: Debug.Print {number}"
        written += [*body, f"End {word}", ""]
        number += 1
    written += ["' filled up"] * (lines - len(written))
    return ('Attribute VB_Name = "Flat"\r\n' + "\r\n".join(written) + "\r\n").encode("cp1252")


def cpu_seconds(command, source, work, status=0):
    """The least processor time of several runs, each on a fresh copy of the source."""
    best = math.inf
    for _ in range(RUNS):
        work.write_bytes(source)
        child = subprocess.Popen([str(part) for part in command], stdin=subprocess.DEVNULL,
                                 stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
        _, ended, usage = os.wait4(child.pid, 0)
        child.returncode = os.waitstatus_to_exitcode(ended)
        if child.returncode != status:
            sys.exit(f"{' '.join(map(str, command))} ended with status {child.returncode}, not {status}")
        best = min(best, usage.ru_utime + usage.ru_stime)
    return best


def exponent(sizes, seconds):
    """Of the power law that fits best."""
    xs = [math.log(size) for size in sizes]
    ys = [math.log(max(s, 1e-5)) for s in seconds]
    x, y = sum(xs) / len(xs), sum(ys) / len(ys)
    return sum((a - x) * (b - y) for a, b in zip(xs, ys)) / sum((a - x) ** 2 for a in xs)


def commands(lintara, work, code):
    """Name, commands that come first, command, expected status."""
    insert = [lintara, "insert", work, "--quiet"]
    remove = [lintara, "remove", work, "--quiet"]
    custom = [lintara, "custom", "insert", work, "--id", "5", "--code", code, "--quiet"]
    return [
        ("numbers", [], [*insert, *NUMBERS], 0),
        ("numbers, exact", [], [*insert, *NUMBERS, "--exact"], 0),
        ("numbers again", [[*insert, *NUMBERS]], [*insert, *NUMBERS], 0),
        ("numbers out", [[*insert, *NUMBERS]], [*remove, *NUMBERS], 0),
        ("handlers", [], [*insert, "--error-handlers"], 0),
        ("handlers, exact", [], [*insert, "--error-handlers", "--exact"], 0),
        ("handlers out", [[*insert, "--error-handlers"]], [*remove, "--error-handlers"], 0),
        ("both", [], [*insert, *BOTH], 0),
        ("both out", [[*insert, *BOTH]], [*remove, *BOTH], 0),
        ("custom code", [], custom, 0),
        ("custom code out", [custom], [lintara, "custom", "remove", work, "--id", "5", "--quiet"], 0),
        ("replace", [], [lintara, "replace", work, "--component", "Flat", "--find", "total", "--replace", "sum",
                         "--quiet"], 0),
        ("both, as a diff", [], [*insert, *BOTH, "--diff"], 0),
        ("both, as JSON", [], [lintara, "insert", work, *BOTH, "--check", "--json"], 1),
    ]


def main():
    lintara = pathlib.Path(sys.argv[1]) / "cli" / "lintara"
    too_steep = 0
    with tempfile.TemporaryDirectory(prefix="lintara-flat-") as name:
        folder = pathlib.Path(name)
        for variable in ["HOME", "XDG_CONFIG_HOME", "XDG_STATE_HOME"]:
            os.environ[variable] = str(folder / variable)
        work, code = folder / "Flat.bas", folder / "code.txt"
        code.write_text("    Debug.Print value\r\n", encoding="ascii", newline="")
        start = cpu_seconds([lintara, "--version"], b"", work)
        print(f"{'module':16} {'command':18} {'ms of ' + format(SIZES[-1], ','):>12} {'us/line':>8} {'exponent':>8}")
        for shape in SHAPES:
            for what, before, command, status in commands(lintara, work, code):
                seconds = []
                for size in SIZES:
                    source = module(shape, size)
                    for first in before:
                        work.write_bytes(source)
                        subprocess.run([str(part) for part in first], check=True, stdin=subprocess.DEVNULL,
                                       stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
                        source = work.read_bytes()
                    seconds.append(cpu_seconds(command, source, work, status) - start)
                growth = exponent(SIZES, seconds)
                steep = growth > LIMIT
                too_steep += steep
                print(f"{shape:16} {what:18} {seconds[-1] * 1e3:12.0f} {seconds[-1] * 1e6 / SIZES[-1]:8.2f} "
                      f"{growth:8.2f}{'  <--' if steep else ''}", flush=True)
    print(f"{too_steep} above {LIMIT}" if too_steep else f"All exponents are at most {LIMIT}.")
    sys.exit(1 if too_steep else 0)


if __name__ == "__main__":
    main()
