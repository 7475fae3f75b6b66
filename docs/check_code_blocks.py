#!/usr/bin/env python3
"""Compiles the code of the documentation: check_code_blocks.py COMPILER INCLUDE_DIR LIBRARY

Taken are the blocks marked `cpp` in README.md and in docs/guides/*.md, and the examples marked
\\code{.cpp} in the comments of the headers in INCLUDE_DIR. A block that has a main function is a
program of its own. Any other block becomes a function behind the usual includes. Everything is
compiled as C++17 and linked with LIBRARY. The program of README.md is run, too, and must print the
block marked `text`; nothing else is run. A block that fails is named with its file and line.
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

ROOT = pathlib.Path(__file__).resolve().parent.parent

USUAL_BEGINNING = """\
#include <filesystem/filesystem.hpp>
#include <fstream>
#include <future>
#include <iostream>
#include <thread>
namespace nfs = nura::filesystem;
"""


class Block:
    """The lines of one piece of code, and the number of the first one in its file."""

    def __init__(self, file, first_line, lines):
        self.file = file
        self.first_line = first_line
        self.lines = lines

    def __str__(self):
        return f"{self.file}:{self.first_line}"

    def code(self):
        return f'#line {self.first_line} "{self.file}"\n' + "\n".join(self.lines) + "\n"

    def is_program(self):
        return any(re.match(r"int main\(", line) for line in self.lines)

    def has_includes(self):
        return any(line.lstrip().startswith("#include") for line in self.lines)

    def function(self, name):
        return f"void {name}()\n{{\n{self.code()}}}\n"


def blocks_between(file, lines, begin, end):
    """The blocks of `lines` between a line that matches `begin` and one that matches `end`."""
    found = []
    first = None
    for number, line in enumerate(lines, 1):
        if first is None:
            if begin.fullmatch(line):
                first = number + 1
        elif end.fullmatch(line):
            found.append(Block(file, first, lines[first - 1 : number - 1]))
            first = None
    if first is not None:
        sys.exit(f"{file}:{first - 1}: the block has no end")
    return found


def markdown_blocks(path, language="cpp"):
    lines = path.read_text().splitlines()
    return blocks_between(str(path), lines, re.compile(rf"```{language}\s*"), re.compile(r"```\s*"))


def header_blocks(path):
    comments = [
        re.sub(r"^/// ?", "", line.lstrip()) if line.lstrip().startswith("///") else ""
        for line in path.read_text().splitlines()
    ]
    return blocks_between(
        str(path), comments, re.compile(r"\\code\{\.cpp\}"), re.compile(r"\\endcode")
    )


class Builder:
    """Compiles and links source texts with one set of arguments."""

    def __init__(self, compiler, include_dir, library, directory):
        self.arguments = [compiler, "-std=c++17", "-Wall", "-Wextra", "-Wno-unused-variable"]
        # Examples may look at a result and leave it.
        self.arguments += ["-Wno-unused-result", "-Werror", "-pthread", f"-I{include_dir}"]
        self.libraries = [library]
        if library.endswith(".a"):
            self.libraries += ["-lboost_filesystem", "-lboost_thread"]
        self.source = pathlib.Path(directory) / "blocks.cpp"
        self.program = pathlib.Path(directory) / "blocks"

    def complaint_about(self, text):
        """What the compiler says about `text`; nothing if it becomes a program."""
        self.source.write_text(text)
        command = [*self.arguments, str(self.source), "-o", str(self.program), *self.libraries]
        # What a shared library needs itself is found when it is loaded, which never happens here.
        command += ["-Wl,--allow-shlib-undefined"]
        done = subprocess.run(command, capture_output=True, text=True, check=False)
        return (done.stderr or f"exit status {done.returncode}") if done.returncode != 0 else ""


    def output_of(self, text):
        """What the program `text` prints."""
        self.complaint_about(text)
        library_path = {"LD_LIBRARY_PATH": str(pathlib.Path(self.libraries[0]).parent)}
        return subprocess.run([str(self.program)], capture_output=True, text=True, check=False,
                              env=os.environ | library_path).stdout


def functions_program(blocks):
    functions = "".join(block.function(f"block_{i}") for i, block in enumerate(blocks))
    return f"{USUAL_BEGINNING}{functions}int main() {{}}\n"


def program_of(block):
    if not block.is_program():
        return functions_program([block])
    return block.code() if block.has_includes() else USUAL_BEGINNING + block.code()


def failures(blocks, builder):
    """Pairs of a block and what the compiler says about it."""
    programs = [block for block in blocks if block.is_program()]
    functions = [block for block in blocks if not block.is_program()]
    # All functions at once, since that is much faster; one by one only to find the culprit.
    complaint = builder.complaint_about(functions_program(functions))
    suspects = programs + (functions if complaint else [])
    found = [(block, builder.complaint_about(program_of(block))) for block in suspects]
    found = [(block, text) for block, text in found if text]
    if complaint and not any(not block.is_program() for block, _ in found):
        found.append(("the blocks taken together", complaint))
    return found


def main():
    if len(sys.argv) != 4:
        sys.exit(__doc__.splitlines()[0])
    compiler, include_dir, library = sys.argv[1:]
    texts = [ROOT / "README.md", *sorted((ROOT / "docs" / "guides").glob("*.md"))]
    headers = sorted(pathlib.Path(include_dir).rglob("*.hpp"))
    groups = [markdown_blocks(path) for path in texts] + [header_blocks(path) for path in headers]
    blocks = [block for group in groups for block in group]
    for kind, part in (("README.md", groups[:1]), ("guides", groups[1 : len(texts)]),
                       ("headers", groups[len(texts) :])):
        if not any(part):
            sys.exit(f"no blocks were found in the {kind}")
    program = next(block for block in groups[0] if block.is_program())
    promised = markdown_blocks(texts[0], "text")[0]
    with tempfile.TemporaryDirectory() as directory:
        builder = Builder(compiler, include_dir, library, directory)
        failed = failures(blocks, builder)
        printed = builder.output_of(program_of(program))
    if printed != "\n".join(promised.lines) + "\n":
        failed.append((program, f"It prints\n{printed}and not what {promised} says."))
    for block, complaint in failed:
        print(f"{block}: not as it should be\n{complaint}", file=sys.stderr)
    if failed:
        sys.exit(1)
    print(f"{len(blocks)} blocks compile")


if __name__ == "__main__":
    main()
