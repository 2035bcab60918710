"""A copy of the project, built to be broken, and its programs of tests."""
import filecmp
import os
import pathlib
import re
import shutil
import subprocess
import sys
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]

# Programs of tests, those first that fail soonest; what follows a name are its arguments.
PROGRAMS = {
    "replay_containers": ["fuzz/corpus/containers"], "replay_bag_file": ["fuzz/corpus/file"],
    "unit_platform": [], "unit_runtime": [], "unit_collection": [], "unit_table": [],
    "unit_propbag": [], "unit_files": [], "unit_zorvane": [], "unit_demos": [],
    "replay_bag_stream": ["fuzz/corpus/bag", "--damaged"], "unit_models": [], "save_races": ["100"],
    "windows_tests": [], "propbag_windows_tests": [],
}


def run(command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
                          errors="replace", **options)


def must(command, **options):
    done = run(command, **options)
    if done.returncode:
        sys.exit(done.stdout + f"\nfailed: {' '.join(map(str, command))}")


def renew(tree):
    """The project as it stands, with the time of now on what has changed since the last run."""
    listed = run(["git", "ls-files", "-co", "--exclude-standard"], cwd=ROOT).stdout.split("\n")
    wanted = {name for name in listed if name and (ROOT / name).is_file()}
    for path in [p for p in tree.rglob("*") if p.is_file()]:
        if str(path.relative_to(tree)) not in wanted:
            path.unlink()
    for name in wanted:
        source, copy = ROOT / name, tree / name
        if not copy.exists() or not filecmp.cmp(source, copy, shallow=False):
            copy.parent.mkdir(parents=True, exist_ok=True)
            shutil.copyfile(source, copy)
            shutil.copymode(source, copy)


class Build:
    """A build folder over a copy of the project, and how long each program may take."""

    def __init__(self, tree, folder, flags, *options):
        self.tree, self.folder, self.limits = tree, folder, {}
        options = list(options)
        if shutil.which("ccache"):
            options.append("-DCMAKE_CXX_COMPILER_LAUNCHER=ccache")
        must(["cmake", "-S", tree, "-B", folder, "-G", "Ninja", "-DCMAKE_BUILD_TYPE=None",
              "-DCMAKE_EXPORT_COMPILE_COMMANDS=ON",
              f"-DCMAKE_CXX_FLAGS={flags} -D_GLIBCXX_ASSERTIONS", *options])  # as ./test library
        targets = run(["ninja", "-C", folder, "-t", "targets", "all"]).stdout
        self.programs = [p for p in PROGRAMS if re.search(rf"^{p}:", targets, re.M)]

    def make(self, *programs):
        """What the compiler said, or nothing."""
        done = run(["ninja", "-C", self.folder, "-k", "0", *programs])
        return done.stdout if done.returncode else ""

    def must_make_and_pass(self, programs):
        """Nothing is proved by a test that fails without a fault."""
        if said := self.make(*programs):
            sys.exit(said + "\nthe build failed without a fault")
        for program in programs:
            begun = time.monotonic()
            if failed := self.test(program):
                sys.exit(f"{failed} without a fault")
            self.limits[program] = 10 + 8 * (time.monotonic() - begun)

    def test(self, program, fail_fast=True, **environment):
        """What failed: nothing, the names of tests, or the program's own."""
        binary = next(p for p in self.folder.rglob(program) if p.is_file())
        arguments = [self.tree / a if a.startswith("fuzz/") else a for a in PROGRAMS[program]]
        if not arguments:
            arguments = ["--gtest_brief=1"] + ["--gtest_fail_fast"] * fail_fast
        screen = {"QT_QPA_PLATFORM": "offscreen", "QT_QPA_PLATFORMTHEME": ""}
        try:
            done = run([binary, *arguments], cwd=self.folder, timeout=self.limits.get(program, 600),
                       env=os.environ | screen | environment)
        except subprocess.TimeoutExpired:
            return [f"{program} (time)"]
        if done.returncode == 0:
            return []
        names = re.findall(r"^\[  FAILED  \] ([\w./]+)(?:, where| \()", done.stdout, re.M)
        return sorted(set(names)) or [f"{program} ({done.returncode})"]
