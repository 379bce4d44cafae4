#!/usr/bin/env python3
"""Builds and runs things against what a build installs.

    install_test.py --cmake CMAKE --build DIR --source DIR --prefix DIR STEP

`stage` installs the build into a folder and moves that folder to PREFIX, which
it empties first: whatever works there does not depend on where it was installed.
The other steps need it.

    engine        the engine runs and finds its plug-in
    fish          fish finds the completion script
    find_package  the consumer builds with CMake and runs
    pkg_config    the consumer builds with pkg-config and runs
    text          the text commands build against what is installed
    example       the examples build, and the engine loads the component
    exceptions    the small engine tells what a plug-in throws
    guides        the guides can be followed, and show what the examples are
    headers       every header compiles alone (--compiler, repeatable)
    version       one version everywhere
"""
import argparse
import itertools
import multiprocessing.pool
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import sys
import tempfile

WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wshadow", "-Wconversion",
            "-Werror"]


class Failure(Exception):
    """What is wrong, in a sentence."""


class Installed:
    """What was installed below a prefix, and how others find it."""

    def __init__(self, arguments):
        self.cmake = arguments.cmake
        self.source = arguments.source
        self.prefix = arguments.prefix
        self.environment = {
            name: value for name, value in os.environ.items()
            if name not in ("LD_LIBRARY_PATH", "DESTDIR", "CMAKE_PREFIX_PATH")}
        self.environment["CMAKE_PREFIX_PATH"] = str(self.prefix)
        self.environment["CMAKE_GENERATOR"] = "Ninja"
        self.environment["PKG_CONFIG_PATH"] = str(self.only("qor-cli.pc").parent)

    def only(self, name):
        found = [path for path in self.prefix.rglob(name) if path.is_file()]
        if len(found) != 1:
            raise Failure(f"{name} is installed {len(found)} times")
        return found[0]

    def run(self, *command, **options):
        done = subprocess.run(
            [str(word) for word in command], env=self.environment, text=True,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, check=False,
            **options)
        if done.returncode != 0:
            raise Failure(f"{command} fails with {done.returncode}:\n{done.stdout}")
        return done.stdout

    def expect(self, command, expected):
        printed = self.run(*command)
        if printed != expected:
            raise Failure(f"{command} prints {printed!r} instead of {expected!r}")

    def pkg_config(self, *what, packages=("qor-cli",)):
        return shlex.split(self.run("pkg-config", *what, *packages))

    def build(self, project, folder, *options):
        self.run(self.cmake, "-S", project, "-B", folder,
                 "-DCMAKE_BUILD_TYPE=Release",
                 "-DCMAKE_CXX_FLAGS=" + " ".join(WARNINGS), *options)
        self.run(self.cmake, "--build", folder)


def stage(arguments):
    shutil.rmtree(arguments.prefix, ignore_errors=True)
    arguments.prefix.parent.mkdir(parents=True, exist_ok=True)
    environment = dict(os.environ)
    environment.pop("DESTDIR", None)
    with tempfile.TemporaryDirectory(dir=arguments.prefix.parent) as folder:
        first = pathlib.Path(folder, "first")
        subprocess.run(
            [arguments.cmake, "--install", arguments.build, "--prefix", first],
            check=True, stdout=subprocess.DEVNULL, env=environment)
        first.rename(arguments.prefix)


def engine(installed, _):
    qorcli = installed.only("bin/qorcli")
    installed.expect([qorcli, "-c", "echo x | filter x"], "x\n")
    installed.expect([qorcli, "-c", "echo x | filter y"], "")
    installed.expect([qorcli, "-c", "echo x | count"], "1\n")


def fish(installed, _):
    qorcli = installed.only("bin/qorcli")
    with tempfile.TemporaryDirectory() as home:
        installed.expect(
            ["env", f"HOME={home}", f"PATH={qorcli.parent}:{os.environ['PATH']}",
             f"XDG_DATA_DIRS={installed.prefix}/share",
             "fish", "-c", "complete -C \"qorcli -c 'show \""],
            "show file \t() Print a file\n"
            "show history \t() Print the lines that were typed\n"
            "show tree \t() Draw all commands as a tree\n"
            "show version \t() Print the engine's version\n")


# What the consumer prints: for each of its patterns the lines that match, and a
# greeting.
CONSUMED = """\
eth0 link up
eth2 link down
eth0 link up
ext1 idle
eth2 link down
eth2 link down
hello from greet: Success
"""


def find_package(installed, arguments):
    with tempfile.TemporaryDirectory() as folder:
        # The targets ask for the standard that they need.
        installed.build(arguments.source / "tests/install/consumer", folder,
                        "-DCMAKE_CXX_STANDARD=14")
        installed.expect([pathlib.Path(folder, "consumer")], CONSUMED)


def pkg_config(installed, arguments):
    libraries = installed.pkg_config("--variable=libdir")[0]
    with tempfile.TemporaryDirectory() as folder:
        consumer = pathlib.Path(folder, "consumer")
        installed.run(
            arguments.compiler[0], "-std=c++17", *WARNINGS, "-o", consumer,
            arguments.source / "tests/install/consumer/main.cpp",
            *installed.pkg_config("--cflags", "--libs",
                                  packages=("qor-cli", "qor-cli-matching")),
            "-Wl,-rpath," + libraries)
        installed.expect([consumer], CONSUMED)


def text(installed, arguments):
    sources = arguments.source / "cli/cmd_comp/extensions/text_comp/src"
    packages = ("qor-cli", "qor-cli-matching")
    with tempfile.TemporaryDirectory() as folder:
        plugin = pathlib.Path(folder, "text.so")
        installed.run(
            arguments.compiler[0], "-std=c++17", *WARNINGS, "-o", plugin,
            *sorted(sources.glob("*.cpp")),
            *installed.pkg_config("--variable=pluginflags"),
            *installed.pkg_config("--cflags", "--libs", packages=packages))
        installed.expect(
            [installed.only("bin/qorcli"), "--plugin", plugin, "-c",
             "echo x | begin x | number"], "     1\tx\n")


def example(installed, arguments):
    plugins = installed.pkg_config("--variable=plugindir")[0]
    log = arguments.source / "examples/device.log"
    lines = log.read_text().splitlines()
    errors = sum(1 for line in lines if "error" in line.lower())
    with tempfile.TemporaryDirectory() as folder:
        installed.build(arguments.source / "examples/small_engine",
                        pathlib.Path(folder, "engine"))
        installed.build(arguments.source / "examples/count_comp", folder)
        plugin = pathlib.Path(folder, "libcount_comp.so")
        exported = {
            line.split()[-1]
            for line in installed.run("nm", "-D", "--defined-only",
                                      plugin).splitlines()}
        if exported != {"qorLCMinit", "qorLCMterminate"}:
            raise Failure(f"the example exports {exported}")
        qorcli = [installed.only("bin/qorcli"),
                  "--plugin", f"{plugins}/libcli_pipe.so", "--plugin", plugin]
        show = f"show file {log} | "

        def prints(line, expected):
            installed.expect([*qorcli, "-c", show + line], expected)

        prints("count", f"{len(lines)}\n")
        prints("filter -i error | count", f"{errors}\n")
        prints("count error", f"{sum('error' in line for line in lines)}\n")
        prints("COUNT --Ignore error", f"{errors}\n")
        prints("count -i error | filter .", f"{errors}\n")
        prints('count "no such text"', "0\n")
        installed.expect(
            ["sh", "-c", '"$@" 2>&1; echo "status $?"', "sh", *qorcli, "-c",
             show + "count ("],
            "ERROR: missing closing parenthesis at offset 1\n"
            "qorcli: stage 2 (count (): failed with status -1 (Failure)\n"
            "status 1\n")
        completed = installed.run(*qorcli, "--complete", show + "count ")
        if not re.search(r"^1\t<pattern>\t", completed, re.MULTILINE):
            raise Failure(f"count is completed with {completed!r}")
        helped = installed.run(*qorcli, "--help-line", show)
        for command in ("count", "filter"):
            if f"\t{command}\t" not in helped:
                raise Failure(f"help does not know {command}: {helped!r}")


# The types of what is thrown are the plug-in's, which the small engine closes
# before it ends; hidden names let it be unmapped.
def exceptions(installed, arguments):
    sources = arguments.source / "tests/transcripts/plugins"
    with tempfile.TemporaryDirectory() as folder:
        installed.build(arguments.source / "examples/small_engine", folder)
        engine_path = pathlib.Path(folder, "small_engine")

        def prints(name, call, words, expected):
            installed.expect(
                ["env", f"THROW_IN={call}", "sh", "-c",
                 '"$@" 2>&1; echo "status $?"', "sh", engine_path, *words[:-1],
                 pathlib.Path(folder, name + ".so"), words[-1]],
                expected)

        for name in ("own_exception", "odd_commands"):
            installed.run(
                arguments.compiler[0], "-std=c++17", "-shared", "-fPIC",
                "-fvisibility=hidden", *WARNINGS,
                "-o", pathlib.Path(folder, name + ".so"),
                sources / (name + ".cpp"), *installed.pkg_config("--cflags"))
        for call, status in (
                ("qorLCMinit", 1), ("start", 1), ("useModule", 1), ("stop", 0),
                ("qorLCMterminate", 0)):
            told = (f"small_engine: the plug-in throws: jam in {call}\n"
                    f"status {status}\n")
            prints("own_exception", call, ["x"], told)
            prints("own_exception", call, ["--complete", "x"], told)
        prints("own_exception", "inputComplete", ["x"],
               "small_engine: the plug-in throws: jam in inputComplete\n"
               "status 1\n")
        prints("own_exception", "none", ["x"], "status 0\n")
        prints("odd_commands", "none", ["throw-int"],
               "small_engine: the plug-in throws something unknown\nstatus 1\n")


def guides(installed, arguments):
    for reference in ("filter.md", "text.md"):
        installed.only(reference)
    examples = arguments.source / "examples"
    for guide, *of in (
            ("writing-a-pipe-command.md", "--examples", examples),
            ("embedding.md", "--example", examples / "small_engine")):
        print(installed.run(
            sys.executable, arguments.source / "tests/docs/guide_test.py",
            "--qorcli", installed.only("bin/qorcli"), *of,
            *(["--rewrite"] if arguments.rewrite else []),
            arguments.source / "docs" / guide), end="")


def headers(installed, arguments):
    flags = installed.pkg_config("--cflags")
    folders = [pathlib.Path(flag[2:]) for flag in flags if flag[:2] == "-I"]
    names = sorted(header for folder in folders for header in folder.iterdir())
    if len(names) < 20:
        raise Failure(f"only {len(names)} headers are installed")

    def compile_alone(case):
        compiler, standard, header = case
        return installed.run(
            compiler, f"-std={standard}", "-fsyntax-only", *WARNINGS, "-x",
            "c++", *flags, "-include", header, "-include", header, "/dev/null")

    with multiprocessing.pool.ThreadPool(os.cpu_count()) as pool:
        pool.map(compile_alone, itertools.product(
            arguments.compiler, ("c++17", "c++20"), names))
    print(f"{len(names)} headers, each alone, with {arguments.compiler}")


def version(installed, _):
    def first(pattern, path):
        return re.search(pattern, path.read_text(), re.MULTILINE).group(1)

    expected = first(r"^project\(.* VERSION ([0-9.]+)",
                     installed.source / "CMakeLists.txt")
    runtime = installed.only("libqor_common.so").resolve().name
    found = {
        "CMake package": first(r"PACKAGE_VERSION \"(.*)\"",
                               installed.only("QorCliConfigVersion.cmake")),
        "pkg-config": installed.pkg_config("--modversion")[0],
        "pkg-config of the matching core": installed.pkg_config(
            "--modversion", packages=("qor-cli-matching",))[0],
        "qorcli": installed.run(installed.only("bin/qorcli"),
                                "--version").split()[-1],
        "runtime": runtime[len("libqor_common.so."):],
        "change log": first(r"^## (\S+)", installed.source / "CHANGELOG.md"),
    }
    if set(found.values()) != {expected}:
        raise Failure(f"versions other than {expected}: {found}")


STEPS = {step.__name__: step for step in (
    engine, fish, find_package, pkg_config, text, example, exceptions, guides,
    headers, version)}


def main():
    parser = argparse.ArgumentParser(
        description=__doc__,
        formatter_class=argparse.RawDescriptionHelpFormatter)
    for name in ("build", "source", "prefix"):
        parser.add_argument("--" + name, type=pathlib.Path, required=True)
    parser.add_argument("--cmake", default="cmake")
    parser.add_argument("--compiler", action="append")
    parser.add_argument("--rewrite", action="store_true",
                        help="what the guides show, as guide_test.py does")
    parser.add_argument("step", choices=["stage", *STEPS])
    arguments = parser.parse_args()
    try:
        if arguments.step == "stage":
            stage(arguments)
        else:
            STEPS[arguments.step](Installed(arguments), arguments)
    except Failure as failure:
        sys.exit(str(failure))


if __name__ == "__main__":
    main()
