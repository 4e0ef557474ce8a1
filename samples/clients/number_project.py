#!/usr/bin/env python3
"""Numbers the lines of a project's procedures and prints what would change; saves it on demand.

It talks to `lintara serve` and needs nothing but Python's standard library. Exit status: 0 done, 2 wrong usage,
3 something failed.
"""

import argparse
import json
import os
import subprocess
import sys

METHOD, PROPERTY = 1, 2  # the types of members that have lines of their own


class ClientError(Exception):
    """What stopped the work, as a sentence."""


def printable(text):
    """The text for a terminal, which would take control characters in names for commands."""
    return "".join(c if c.isprintable() or c in "\t\n" else f"\\x{ord(c):02x}" for c in text)


def tell(text):
    print(printable(text), file=sys.stderr)


class Lintara:
    """One `lintara serve` process. Each call waits for its answer."""

    def __init__(self, program, *options):
        try:
            self.process = subprocess.Popen(
                [program, "serve", *options], stdin=subprocess.PIPE, stdout=subprocess.PIPE
            )
        except OSError as error:
            raise ClientError(f"{program} cannot be started: {error.strerror}") from error
        self.last_id = 0

    def __enter__(self):
        return self

    def __exit__(self, *_):
        # The end of its input is what ends it.
        try:
            self.process.stdin.close()
        except BrokenPipeError:
            pass
        try:
            self.process.wait(timeout=10)
        except subprocess.TimeoutExpired:
            self.process.kill()
            self.process.wait()
        self.process.stdout.close()

    def call(self, method, **params):
        """The result of a request. Raises ClientError when the answer is an error, or when there is none."""
        self.last_id += 1
        request = {"jsonrpc": "2.0", "id": self.last_id, "method": method, "params": params}
        try:
            self.process.stdin.write(json.dumps(request).encode() + b"\n")
            self.process.stdin.flush()
            line = self.process.stdout.readline()
        except BrokenPipeError:
            line = b""
        if not line.endswith(b"\n"):
            raise ClientError(f"lintara ended without answering {method} (status {self.process.wait()})")
        try:
            answer = json.loads(line)
        except ValueError as error:
            raise ClientError(f"the answer to {method} is no JSON: {error}") from error
        if "error" in answer:
            raise ClientError(f"{answer['error']['message']} ({answer['error']['code']})")
        if answer.get("id") != self.last_id:
            raise ClientError(f"the answer to {method} is that of another request")
        return answer["result"]


def procedures_of(lintara, project, component):
    """The names of the procedures of a component, each once; declarations have no lines to number."""
    place = {"project": project, "component": component}
    declarations = lintara.call("codemodule.CountOfDeclarationLines", **place)["value"]
    names = {}
    for member in lintara.call("codemodule.Members", **place)["value"]:
        if member["type"] in (METHOD, PROPERTY) and member["codeLocation"] > declarations:
            names.setdefault(member["name"].lower(), member["name"])
    return list(names.values())


def number_project(lintara, project, base, step):
    """Numbers every procedure. The result is how many there are."""
    count = 0
    # The procedures' kinds are read from the active project.
    lintara.call("ide.setActiveProject", project=project["name"])
    for component in project["components"]:
        for name in procedures_of(lintara, project["name"], component["name"]):
            member = {"sProject": project["name"], "sComponent": component["name"], "sMember": name}
            if not lintara.call("inspect.procedureRanges", **member)["Found"]:
                tell(f"skipped {component['name']}.{name}: it is not found")
                continue
            lintara.call("lintara.LineNumbersInserter", **member, iLNBase=base, iLNStep=step)
            count += 1
    return count


def run(options):
    with Lintara(options.lintara) as lintara:
        opened = lintara.call("workspace.open", path=options.path)
        for warning in opened["warnings"]:
            tell(f"warning: {warning['path']}: {warning['message']}")
        count = sum(number_project(lintara, p, options.base, options.step) for p in opened["projects"])
        changes = lintara.call("workspace.changes")["files"]
        for change in changes:
            diff = change["diff"]
            sys.stdout.write(printable(diff.replace("\r\n", "\n")) if sys.stdout.isatty() else diff)
        sys.stdout.flush()
        tell(f"{count} procedures; {len(changes)} files differ")
        if options.save:
            for path in lintara.call("workspace.save")["files"]:
                tell(f"saved {path}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("path", help="project (.vbp), group (.vbg), folder, or one component file")
    parser.add_argument("--base", type=int, default=10000, help="number of a procedure's first line")
    parser.add_argument("--step", type=int, default=5, help="from one line to the next")
    parser.add_argument("--save", action="store_true", help="save the files, too")
    parser.add_argument(
        "--lintara", default=os.environ.get("LINTARA", "lintara"), help="the program; default: $LINTARA"
    )
    # Diffs go out as UTF-8, wherever this runs.
    sys.stdout.reconfigure(encoding="utf-8", newline="")
    try:
        run(parser.parse_args())
    except ClientError as error:
        tell(f"number_project: {error}")
        return 3
    except BrokenPipeError:
        # Nobody reads on. What is not written yet would fail once more at the end.
        os.dup2(os.open(os.devnull, os.O_WRONLY), sys.stdout.fileno())
        return 3
    return 0


if __name__ == "__main__":
    sys.exit(main())
