"""What breaks a copy of the project by a mutant, and asks the tests whether they see it."""
import collections
import concurrent.futures
import json
import os
import re
import shlex
import sys

from mutants.building import PROGRAMS, ROOT, Build, renew, run
from mutants.drawing import mutated, switched

WORK = ROOT / "build" / "mutants"
TREE = WORK / "tree"
NO_TOOLKIT = "-DCMAKE_DISABLE_FIND_PACKAGE_Qt6=ON"
# Programs of which one says as much as another: each tries all operations there are.
WHOLE = {p for p in PROGRAMS if p.startswith("replay_")} | {"unit_models", "save_races"}


def in_parallel(work, given):
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        yield from pool.map(work, given)


def put_line(file, number, text):
    lines = file.read_text().split("\n")
    lines[number - 1] = text
    file.write_text("\n".join(lines))


class Reached:
    """For each file and line of the library the programs whose run reaches it."""

    def __init__(self):
        self.build = Build(TREE, WORK / "cover", "-O0 --coverage -fprofile-update=single", NO_TOOLKIT)
        noted = WORK / "reached.json"
        newest = max(p.stat().st_mtime for folder in ("zorvane", "tests", "fuzz")
                     for p in (TREE / folder).rglob("*") if p.is_file())
        if noted.exists() and noted.stat().st_mtime > newest:
            self.lines = json.loads(noted.read_text())
            return
        self.lines = {}
        self.build.must_make_and_pass(self.build.programs)
        for program in self.build.programs:
            for old in self.build.folder.rglob("*.gcda"):
                old.unlink()
            self.build.test(program)
            for data in self.build.folder.rglob("*.gcda"):
                self._note(program, data)
        noted.write_text(json.dumps(self.lines))

    def _note(self, program, data):
        folder = self.build.folder
        for entry in run(["gcov", "--json-format", "--stdout", data], cwd=folder).stdout.splitlines():
            for file in json.loads(entry)["files"] if entry.startswith("{") else []:
                name = os.path.relpath(os.path.realpath(folder / file["file"]), os.path.realpath(TREE))
                for line in file["lines"]:
                    who = self.lines.setdefault(name, {}).setdefault(str(line["line_number"]), [])
                    if line["count"] and program not in who:
                        who.append(program)

    def by(self, mutant, widely=False):
        """Those that reach the line; and then whoever reaches its file: no run tells of a constant
        in a table that it was read."""
        near = self._near(mutant)
        if widely:
            file = set().union(*self.lines.get(mutant.file, {}).values())
            near += [program for program in self.build.programs if program in file - set(near)]
        return near

    def _near(self, mutant):
        lines = self.lines.get(mutant.file, {})
        # A statement over several lines is noted under its first.
        near = [lines.get(str(n), []) for n in range(mutant.line, max(mutant.line - 4, 0), -1)]
        # And now and then the count of one line of a template is lost.
        who = set().union(*near)
        # A constant or a member is no line to be reached: whoever reaches its file sees it, or the
        # whole library.
        declared = str(mutant.line) not in lines and not who
        if declared or not lines.get(str(mutant.line)) and re.search(r"\bconst(expr|init)\b", mutant.old):
            who = set().union(*lines.values()) or self.build.programs
        return [program for program in self.build.programs if program in who]


def killers(build, programs, all_tests, make=lambda program: "", **environment):
    """Names of the tests that fail: of one program at most; or of all, where one that is a single
    test, a replay or model run, is enough of its kind. None where one cannot be made."""
    found = []
    for program in sorted(programs, key=lambda p: all_tests and p not in WHOLE):
        if not found or all_tests and program not in WHOLE:
            if make(program):
                return None
            found += build.test(program, not all_tests, **environment)
    return found


def tell_useless_tests(kills):
    """Of lists of killers."""
    alone, any_kill = collections.Counter(), collections.Counter()
    for by in kills:
        any_kill.update(by)
        alone.update(by if len(by) == 1 else [])
    print("\nTests, by what they alone kill, and by what they kill at all:")
    for name in sorted(any_kill, key=lambda n: (alone[n], any_kill[n])):
        print(f"{alone[name]:4} {any_kill[name]:4}  {name}")


class Alone:
    """Mutants built one by one."""

    def __init__(self, name, *options, programs=None):
        self.build = Build(TREE, WORK / name, "-O1", "-DZORVANE_PRECOMPILE=ON", *options)
        self.build.must_make_and_pass(programs or self.build.programs)

    def killers(self, mutant, programs, all_tests=False):
        """None where it does not compile."""
        path = TREE / mutant.file
        sound = path.read_text()
        put_line(path, mutant.line, mutated(mutant))
        try:
            if not programs and self.build.make(self.build.programs[0]):
                return None
            return killers(self.build, programs, all_tests, self.build.make)
        finally:
            path.write_text(sound)


class Together:
    """Many mutants in one build, of which none or one is alive: those in `numbers`."""

    def __init__(self, name, mutants, *options, programs=None):
        self.tree = WORK / f"{name}-tree"
        renew(self.tree)
        header = WORK / "chosen.h"
        header.write_text("""#pragma once
#include <cstdlib>
inline const int zorvaneChosen = std::getenv("CHOSEN") ? std::atoi(std::getenv("CHOSEN")) : 0;
#define CHOSEN(number) (!__builtin_is_constant_evaluated() && zorvaneChosen == (number))
""")
        self.numbers, self.at, self.said = {}, {}, set()
        for number, mutant in enumerate(mutants, 1):
            place = (mutant.file, mutant.line)
            text = switched(mutant, f"CHOSEN({number})")
            if text and place not in self.at:
                self.numbers[mutant] = number
                self.at[place] = mutant
                put_line(self.tree / mutant.file, mutant.line, text)
        self.build = Build(self.tree, WORK / name, f"-O1 -w -include {header}", *options)
        programs = programs or self.build.programs
        self._drop_what_does_not_compile(programs)
        self.build.must_make_and_pass(programs)

    def killers(self, mutant, programs, all_tests=False):
        return killers(self.build, programs, all_tests, CHOSEN=str(self.numbers[mutant]))

    def _drop_what_does_not_compile(self, programs):
        """A line that takes no second meaning goes back to what it was."""
        commands = [entry["command"] for entry in json.loads(
            (self.build.folder / "compile_commands.json").read_text())
            # Tests take long and show what is wrong in a template alone, which they are built for.
            if re.match(rf"{self.tree}/(zorvane|program)/", entry["file"])]

        def check(command):
            words = shlex.split(command)
            words = words[words[0].endswith("ccache"):]
            words[words.index("-o"):words.index("-o") + 2] = ["-fsyntax-only"]
            done = run(words, cwd=self.build.folder)
            return (command, done.stdout) if done.returncode else None
        while failed := [one for one in in_parallel(check, commands) if one]:
            for said in {said for _, said in failed}:  # one file may be compiled twice
                self._drop_the_blamed(said)
            commands = [command for command, _ in failed]
        # Some are refused only where the compiler makes code.
        while said := self.build.make(*programs):
            self._drop_the_blamed(said)

    def _drop_the_blamed(self, said):
        named = [line for line in said.splitlines() if " error: " in line]
        dropped = sum(map(self._drop, named)) or any(map(self._drop, said.splitlines()))
        # Another file may have been blamed for the same line before. What is left open is blamed
        # on a line below.
        if not dropped and said in self.said and not any(map(self._drop_above, named[:1])):
            sys.exit(said + "\nno mutant is to blame")
        self.said.add(said)

    def _place(self, line):
        found = re.match(r"(?:In file included from )?([^\s:]+):(\d+)[:,]", line)
        return found and (os.path.relpath(os.path.realpath(self.build.folder / found[1]),
                                          os.path.realpath(self.tree)), int(found[2]))

    def _drop_above(self, line):
        file, number = self._place(line) or ("", 0)
        above = [place for place in self.at if place[0] == file and place[1] < number]
        return above and self._take_back(max(above))

    def _drop(self, line):
        return self._take_back(self._place(line))

    def _take_back(self, place):
        mutant = self.at.pop(place, None)
        if mutant:
            put_line(self.tree / mutant.file, mutant.line, mutant.old)
            del self.numbers[mutant]
        return mutant is not None
