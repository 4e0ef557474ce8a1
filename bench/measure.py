"""Measures a release build; scripts/bench calls it with the build folder and prints what it prints."""

import filecmp
import json
import os
import pathlib
import platform
import shutil
import statistics
import subprocess
import sys
import tempfile
import time

FILES, LINES = 600, 450_000
RUNS = 7
STARTS = 51
NUMBERS = ["--line-numbers", "--base", "10000", "--step", "1"]
BOTH = ["--error-handlers", *NUMBERS]

# A number in front of every line that is not blank, one output: the least that numbering a project can be.
MAWK = r'FNR == 1 { n = 10000 } /[^ \t\r]/ { print n ": " $0; n++; next } { print }'


def run(command, **options):
    """Runs to the end, fails loudly, returns the seconds."""
    begun = time.perf_counter()
    finished = subprocess.run(command, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                              stderr=subprocess.PIPE, text=True, **options)
    seconds = time.perf_counter() - begun
    if finished.returncode != 0:
        sys.exit(f"{' '.join(map(str, command))[:200]}\nfailed: {finished.stderr}")
    return seconds


def peak_kilobytes(command):
    finished = subprocess.run(["/usr/bin/time", "-f", "%M", *command], stdin=subprocess.DEVNULL,
                              stdout=subprocess.DEVNULL, stderr=subprocess.PIPE, text=True, check=True)
    return int(finished.stderr.split()[-1])


def median_of(runs, action, prepare=lambda: None):
    seconds = []
    for _ in range(runs):
        prepare()
        seconds.append(action())
    return statistics.median(seconds)


def same_trees(a, b):
    comparison = filecmp.dircmp(a, b, ignore=[])
    if comparison.left_only or comparison.right_only:
        return False
    _, differing, unreadable = filecmp.cmpfiles(a, b, comparison.common_files, shallow=False)
    return not differing and not unreadable and all(
        same_trees(a / name, b / name) for name in comparison.common_dirs)


def machine():
    model = next((line.split(":")[1].strip() for line in open("/proc/cpuinfo", encoding="utf-8")
                  if line.startswith("model name")), platform.machine())
    memory = os.sysconf("SC_PAGE_SIZE") * os.sysconf("SC_PHYS_PAGES") / 2**30
    compiler = subprocess.run(["g++", "-dumpfullversion"], capture_output=True, text=True).stdout.strip()
    return f"{model}, {os.cpu_count()} cores, {memory:.0f} GiB, Linux {platform.release()}, g++ {compiler}"


def table(title, head, rows):
    print(f"\n{title}")
    widths = [max(len(str(row[i])) for row in [head, *rows]) for i in range(len(head))]
    for row in [head, *rows]:
        cells = [str(row[0]).ljust(widths[0])] + [str(c).rjust(w) for c, w in zip(row[1:], widths[1:])]
        print("  " + "  ".join(cells).rstrip())


def whole_command(build, folder):
    """The command against cp and mawk, on the same files, one after the other in the same run."""
    lintara = build / "cli" / "lintara"
    source, work = folder / "source", folder / "work"
    numbered, handled = folder / "numbered", folder / "handled"
    run([build / "bench" / "generate_project", source, str(FILES), str(LINES)])
    size = sum(path.stat().st_size for path in source.rglob("*") if path.is_file())
    texts = sorted(str(p) for p in source.rglob("*") if p.suffix in (".bas", ".cls", ".frm"))

    def fresh():
        shutil.rmtree(work, ignore_errors=True)
        shutil.copytree(source, work)
        os.sync()

    project = work / "Generated.vbp"
    insert = [lintara, "insert", project, *NUMBERS, "--quiet"]
    remove = [lintara, "remove", project, "--line-numbers", "--quiet"]
    insert_both = [lintara, "insert", project, *BOTH, "--quiet"]
    remove_both = [lintara, "remove", project, "--error-handlers", "--line-numbers", "--quiet"]

    fresh()
    memory = peak_kilobytes(insert) * 1024
    if same_trees(source, work):
        sys.exit("the insertion changed nothing")
    shutil.rmtree(numbered, ignore_errors=True)
    shutil.copytree(work, numbered)
    run(remove)
    if not same_trees(source, work):
        sys.exit("insert, then remove, did not restore every byte")

    fresh()
    memory_both = peak_kilobytes(insert_both) * 1024
    shutil.rmtree(handled, ignore_errors=True)
    shutil.copytree(work, handled)

    def fresh_copy_of(tree):
        shutil.rmtree(work, ignore_errors=True)
        shutil.copytree(tree, work)
        os.sync()

    def no_work():
        shutil.rmtree(work, ignore_errors=True)
        os.sync()

    def copy_and_sync():
        return run(["cp", "-r", source, work]) + run(["sync", "-f", folder])

    def mawk():
        with open(folder / "mawk.out", "wb") as output:
            begun = time.perf_counter()
            subprocess.run(["mawk", MAWK, *texts], stdout=output, check=True, env={**os.environ, "LC_ALL": "C"})
            return time.perf_counter() - begun

    results = {
        "lintara insert": median_of(RUNS, lambda: run(insert), fresh),
        "lintara insert --check": None,
        "lintara remove": median_of(RUNS, lambda: run(remove), lambda: fresh_copy_of(numbered)),
        "lintara insert, handlers too": median_of(RUNS, lambda: run(insert_both), fresh),
        "lintara remove, handlers too": median_of(RUNS, lambda: run(remove_both), lambda: fresh_copy_of(handled)),
        "cp -r": median_of(RUNS, lambda: run(["cp", "-r", source, work]), no_work),
        "cp -r, then sync": median_of(RUNS, copy_and_sync, no_work),
        "mawk numbering pass": median_of(RUNS, mawk),
    }
    fresh()

    def check_only():
        begun = time.perf_counter()
        status = subprocess.run([*insert, "--check"], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL).returncode
        if status != 1:
            sys.exit(f"insert --check ended with status {status}, not 1")
        return time.perf_counter() - begun

    results["lintara insert --check"] = median_of(RUNS, check_only)

    print(f"Project: {LINES:,} lines, {FILES} files, {size / 1e6:.1f} MB. "
          "Insert, then remove, restored every byte.")
    copy, pass_of_mawk = results["cp -r"], results["mawk numbering pass"]
    table(f"Whole commands, median of {RUNS} runs; lintara flushes what it writes to the disk",
          ["command", "seconds", "lines/s", "of cp -r", "of mawk"],
          [[name, f"{s:.3f}", f"{LINES / s:,.0f}", f"{s / copy:.2f}", f"{s / pass_of_mawk:.2f}"]
           for name, s in results.items()])
    for name, peak in [("lintara insert", memory), ("lintara insert, handlers too", memory_both)]:
        print(f"\nPeak memory of {name}: {peak / 1e6:.1f} MB, {peak / size:.2f} times the source")
    return lintara, source, texts


def start_up(lintara, source, texts):
    small = min((t for t in texts if t.endswith(".bas")), key=lambda t: pathlib.Path(t).stat().st_size)
    rows = []
    for name, command in [("lintara --version", [lintara, "--version"]),
                          ("lintara list, one small file", [lintara, "list", small]),
                          ("true, for comparison", ["/bin/true"])]:
        seconds = [run(command) for _ in range(STARTS)]
        rows.append([name, f"{statistics.median(seconds) * 1e3:.1f}", f"{min(seconds) * 1e3:.1f}"])
    table(f"Start-up, {STARTS} runs, in milliseconds", ["command", "median", "least"], rows)


def library(build, folder):
    def benchmarks(program, repetitions):
        out = folder / f"{program}.json"
        run([build / "bench" / program, f"--benchmark_out={out}", "--benchmark_out_format=json",
             f"--benchmark_repetitions={repetitions}", "--benchmark_min_time=0.3", "--benchmark_report_aggregates_only=true"],
            env={**os.environ, "TMPDIR": str(folder)})
        return json.loads(out.read_text(encoding="utf-8"))["benchmarks"]

    rows = []
    for result in benchmarks("project_bench", 3):
        if result.get("aggregate_name") == "median":
            name = result["run_name"].removesuffix("/real_time").removeprefix("EditProject/").split("/iterations")[0]
            rows.append([name, f"{result['real_time']:.0f}", f"{result['items_per_second']:,.0f}",
                         f"{result['bytes_per_second'] / 1e6:.0f}"])
    table("The library on the same project, median of 3 repetitions", ["step", "ms", "lines/s", "MB/s"], rows)

    module_table("Numbering one module", benchmarks("module_bench", 3), "NumberModule/")
    module_table("Error handlers in one module", benchmarks("handler_bench", 1), "EditModule/")


def module_table(title, results, prefix):
    """A row for each size of each kind of module; the last one of a kind tells what the cost grows like."""
    rows = []
    for result in results:
        name = result["run_name"].removeprefix(prefix)
        if result.get("aggregate_name", "median") == "median" and "/" in name:
            lines = int(name.split("/")[1])
            rows.append([name.split("/")[0], f"{lines:,}", f"{result['cpu_time']:.2f}",
                         f"{result['cpu_time'] * 1e6 / lines:.0f}", ""])
        elif result.get("aggregate_name") == "BigO":
            rows[-1][-1] = f"O({result['big_o']})"
    table(f"{title}, processor time", ["module", "lines", "ms", "ns/line", "fits"], rows)


def main():
    build = pathlib.Path(sys.argv[1])
    print(f"Machine: {machine()}")
    with tempfile.TemporaryDirectory(prefix="lintara-bench-") as name:
        folder = pathlib.Path(name)
        lintara, source, texts = whole_command(build, folder)
        start_up(lintara, source, texts)
        library(build, folder)


if __name__ == "__main__":
    main()
