"""Prints what scripts/coverage counted: lines by folder, then every line that no test ran."""

import collections
import json
import pathlib
import sys


def read(report):
    """File -> line -> how often it ran."""
    counts = collections.defaultdict(dict)
    for file in json.load(open(report, encoding="utf-8"))["files"]:
        lines = counts[file["file"]]
        for line in file["lines"]:
            if not line.get("gcovr/noncode", False):
                number = line["line_number"]
                lines[number] = lines.get(number, 0) + line["count"]
    return counts


def share(run, all_lines):
    return 100 * run / all_lines if all_lines else 100.0


def row(name, run, all_lines):
    print(f"  {name:<12} {all_lines:>8,} {run:>8,} {share(run, all_lines):>8.1f} %")


def main():
    report, root, aim = sys.argv[1], pathlib.Path(sys.argv[2]), float(sys.argv[3])
    split = sys.argv.index("--")
    library, others = sys.argv[4:split], sys.argv[split + 1:]
    counts = read(report)
    totals = {}
    for folder in library + others:
        mine = [lines for file, lines in counts.items() if file.startswith(folder + "/")]
        totals[folder] = (sum(count > 0 for lines in mine for count in lines.values()), sum(map(len, mine)))

    print(f"  {'folder':<12} {'lines':>8} {'run':>8} {'share':>10}")
    for folder in library:
        row(folder, *totals[folder])
    run, every = (sum(totals[folder][i] for folder in library) for i in (0, 1))
    row("together", run, every)
    for folder in others:
        row(folder, *totals[folder])

    print("\nLines that no test ran:")
    for file, lines in sorted(counts.items()):
        missed = sorted(number for number, count in lines.items() if count == 0)
        if missed:
            text = (root / file).read_text(encoding="utf-8").splitlines()
            for number in missed:
                print(f"{file}:{number}: {text[number - 1].strip()}")
    if share(run, every) < aim:
        print(f"\nThe aim of {aim:.0f} % is not reached.")
        sys.exit(1)


main()
