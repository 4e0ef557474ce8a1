"""Prints what scripts/coverage counted: every line that no test ran, then a table by folder."""

import collections
import json
import pathlib
import sys


def read(report):
    """File -> line -> how often it ran."""
    counts = collections.defaultdict(dict)
    for file in json.loads(pathlib.Path(report).read_text(encoding="utf-8"))["files"]:
        lines = counts[file["file"]]
        for line in file["lines"]:
            if not line.get("gcovr/noncode", False):
                number = line["line_number"]
                lines[number] = lines.get(number, 0) + line["count"]
    return counts


def folder_of(file, folders):
    return next((folder for folder in folders if file.startswith(folder + "/")), None)


def print_missed(root, counts, folders):
    """The lines as editors and terminals find them: file:line."""
    for folder in folders:
        for file in sorted(file for file in counts if folder_of(file, folders) == folder):
            missed = sorted(number for number, count in counts[file].items() if count == 0)
            if missed:
                text = (root / file).read_text(encoding="utf-8").splitlines()
                print(f"{file}: {len(missed)} of {len(counts[file])} lines")
                for number in missed:
                    shown = text[number - 1].strip() if number <= len(text) else "(the file has changed)"
                    print(f"  {file}:{number}: {shown}")


def print_row(name, lines, run):
    share = 100 * run / lines if lines else 100.0
    print(f"  {name:<12} {lines:>8,} {run:>8,} {lines - run:>8,} {share:>8.1f} %")
    return share


def totals(counts, folders, wanted):
    lines = [count for file, by_line in counts.items() if folder_of(file, folders) in wanted
             for count in by_line.values()]
    return len(lines), sum(count > 0 for count in lines)


def main():
    report, root, aim = sys.argv[1], pathlib.Path(sys.argv[2]), float(sys.argv[3])
    split = sys.argv.index("--")
    library, others = sys.argv[4:split], sys.argv[split + 1:]
    folders = library + others
    counts = read(report)

    print("Lines that no test ran:")
    print_missed(root, counts, folders)

    print(f"\n  {'folder':<12} {'lines':>8} {'run':>8} {'not run':>8} {'share':>10}")
    for folder in library:
        print_row(folder, *totals(counts, folders, [folder]))
    together = print_row("together", *totals(counts, folders, library))
    print()
    for folder in others:
        print_row(folder, *totals(counts, folders, [folder]))

    if together < aim:
        sys.exit(f"The aim of {aim:.0f} % of the library's lines is not reached.")


main()
