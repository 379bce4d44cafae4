#!/usr/bin/env python3
"""Types command lines in a shell at a pseudo-terminal, with Tab, and compares
what the shell makes of them.

    shell_completion.py --qorcli PATH --root DIR --plugin PATH SHELL

SHELL is bash, zsh or fish. It knows a function qorcli, which hands completion on to
the engine and otherwise prints its arguments. A case is what is typed, with a tab
where that key is pressed, and what the function must print.
"""
import argparse
import os
import pathlib
import pty
import re
import select
import subprocess
import sys
import tempfile
import time

LIMIT = 12  # seconds, for what takes milliseconds on an idle machine
QUIET = 0.2  # seconds without output
PROMPT = "ready> "

PRINTS_ARGUMENTS = """
PS1='$PROMPT'
PATH=$FOLDER:$PATH
qorcli() {
  case " $* " in
    *" --complete "*) command qorcli "$@" ;;
    *) printf '[%s]' "$@"; printf '\\n' ;;
  esac
}
"""
FISH_PRINTS_ARGUMENTS = """
set -p PATH $FOLDER
set fish_autosuggestion_enabled 0
function fish_prompt; printf '$PROMPT'; end
function qorcli
  if contains -- --complete $argv
    command qorcli $argv
  else
    printf '[%s]' $argv; printf '\\n'
  end
end
"""
SETUP = {
    "bash": (PRINTS_ARGUMENTS + "source $SCRIPTS/qorcli.bash\n",
             ["bash", "--noprofile", "--rcfile", "{rc}", "-i"]),
    "zsh": (PRINTS_ARGUMENTS + "fpath=($SCRIPTS $fpath)\n"
            "autoload -Uz compinit\ncompinit -u -D\n", ["zsh", "-i"]),
    "fish": (FISH_PRINTS_ARGUMENTS + "source $SCRIPTS/qorcli.fish\n",
             ["fish", "--no-config", "-C", "source {rc}"]),
}

CASES = [
    # Each word of a line, in a quote that stays open.
    ("-c 's\tf\tex\td\t| fi\t--ig\tx'",
     "[-c][show file examples/device.log | filter --ignore x]"),
    ('-c "echo \\"a b\\" | fi\t-i x"', '[-c][echo "a b" | filter -i x]'),
    # A finished word gets its blank.
    ("-c 'show\tf\tx'", "[-c][show file x]"),
    # Words agree up to here.
    ("-c 'echo x | filter --i\tg\tx'", "[-c][echo x | filter --ignore x]"),
    # A pattern may stand here, so that no option is begun.
    ("-c 'echo x | filter \tx'", "[-c][echo x | filter x]"),
    # The plug-in that is named is the one that is asked, by its file's name.
    ("--plugin $ODD -c 'echo x | count-l\t'",
     "[--plugin][$ODD][-c][echo x | count-lines ]"),
    ("--plugin tests/transcripts/plug\tx", "[--plugin][tests/transcripts/plugins/x]"),
    # Options, and the lines behind some of them.
    ("--no-p\tx", "[--no-pager][x]"),
    ("--tim\t", "[--timing]"),
    ("--help-line 'show f\t'", "[--help-line][show file ]"),
    # A name with a blank stands in quotes.
    ("-c 'show file \"$FOLDER/a n\t| fi\tx'",
     '[-c][show file "$FOLDER/a name" | filter x]'),
    # Nothing fits.
    ("-c 'bogus x\ty'", "[-c][bogus xy]"),
]
# Outside quotes, one is opened; quotes are put around what is typed.
QUOTES_ARE_PUT = [
    ("-c sh\ttr\t'", "[-c][show tree ]"),
    ("-c 'show file $FOLDER/a\t| fi\tx'",
     '[-c][show file "$FOLDER/a name" | filter x]'),
]
CASES_OF = {
    "bash": CASES + QUOTES_ARE_PUT,
    "zsh": CASES + QUOTES_ARE_PUT,
    # Outside quotes, and where they are put around what is typed, blanks are escaped.
    "fish": CASES + [
        ("-c sh\ttr\t", "[-c][show tree ]"),
        ("-c 'show file $FOLDER/a\t--tim\t", '[-c][show file "$FOLDER/a name"][--timing]'),
        ("--complete='show f\t'", "[--complete=show file ]"),
    ],
}

# What bash's function offers: the words, which of them is being typed, and
# whether the key is Tab (9) or Tab for the second time, which lists (63).
OFFERED = [
    (["qorcli", "-c", "'show "], 2, 63,
     ["file  () Print a file", "history  () Print the lines that were typed",
      "tree  () Draw all commands as a tree",
      "version  () Print the engine's version"]),
    (["qorcli", "-c", "'show "], 2, 9,
     ["show file", "show history", "show tree", "show version"]),
    (["qorcli", "-c", "'echo "], 2, 9, []),
    (["qorcli", "-c", "'echo "], 2, 63, ["<text>  The text to print"]),
    # No help: neither is the rank.
    (["qorcli", "-c", "'echo x "], 2, 63, ["<text>  The text to print", "<cr>"]),
    (["qorcli", "-c", "'show f"], 2, 9, ["show file ", "show file  "]),
    (["qorcli", "-c", "show\\ f"], 2, 9, ["'show file "]),
    (["qorcli", "-c", '"echo \\"a\\" | f'], 2, 9,
     ['echo \\"a\\" | filter ', 'echo \\"a\\" | filter  ']),
    (["qorcli", "--t"], 1, 9, ["--trace", "--timing"]),
    (["qorcli", "--plugin", "=", "examples/"], 3, 9, []),
    (["qorcli", "--plugin", "=", "$ODD", "-c", "'x | shut"], 5, 9,
     ["x | shut-down ", "x | shut-down  "]),
    (["qorcli", "--mode", ""], 2, 9, []),
]


# What fish offers behind a line, each with its help.
OFFERED_BY_FISH = [
    ("qorcli -c 'show ", ["show file \t() Print a file",
                          "show history \t() Print the lines that were typed",
                          "show tree \t() Draw all commands as a tree",
                          "show version \t() Print the engine's version"]),
    # A candidate that stands alone would close the quote.
    ("qorcli -c 'SH", ["show \t() Print something that can be piped",
                       "show file \t() Print a file",
                       "show history \t() Print the lines that were typed",
                       "show tree \t() Draw all commands as a tree",
                       "show version \t() Print the engine's version"]),
    ("qorcli -c 'ech", ["echo \t() Print a text", "echo  \t() Print a text"]),
    ("qorcli -c 'echo ", ["echo \t<text>  The text to print",
                          "echo  \t<text>  The text to print"]),
    ("qorcli -c 'echo x", []),
    # No help: neither is that of the option. What replaces the line ends it.
    ("qorcli -c 'show file $FOLDER/", ['show file "$FOLDER/a name"',
                                       'show file "$FOLDER/folder/',
                                       'show file "$FOLDER/qorcli"']),
    ("qorcli -c 'show file $FOLDER/f", ["show file $FOLDER/folder/"]),
    ("qorcli -c 'show file \"$FOLDER/a", ['show file "$FOLDER/a name" ',
                                          'show file "$FOLDER/a name" | \tPipe the output']),
    ("qorcli -c 'echo \"a | \" | num", [
        'echo "a | " | number \t() Print each line with its number in front',
        'echo "a | " | number | \tPipe the output']),
    ("qorcli --no", ["--no-pager\tNever show long output with a pager"]),
    ("qorcli --plugin=$ODD -c 'x | shut", ["x | shut-down \tOdd",
                                           "x | shut-down  \tOdd"]),
    ("qorcli --plugin ~/folder/odd.so -c 'x | shut", ["x | shut-down \tOdd",
                                                     "x | shut-down  \tOdd"]),
    ("qorcli --mode ", []),
    ("qorcli examples/", []),
]


def offered_by_fish(root, line, environment):
    """Returns what fish offers."""
    process = subprocess.run(
        ["fish", "--no-config", "-c",
         "source engine/completion/qorcli.fish; complete -C $argv[1]", line],
        cwd=root, env=environment, stdout=subprocess.PIPE, text=True, check=False)
    return process.stdout.splitlines()


def offered(scripts, words, current, kind, environment):
    """Returns what bash's function offers."""
    process = subprocess.run(
        ["bash", "-c", f"source {scripts}/qorcli.bash; COMP_WORDS=(\"$@\"); "
         f"COMP_CWORD={current} COMP_TYPE={kind}; _qorcli; "
         "((${#COMPREPLY[@]})) && printf '%s\\n' \"${COMPREPLY[@]}\"", "bash",
         *words], env=environment, stdout=subprocess.PIPE, text=True, check=False)
    return process.stdout.splitlines()


class Shell:
    def __init__(self, command, environment, folder):
        self.pid, self.terminal = pty.fork()
        if self.pid == 0:
            os.chdir(folder)
            os.execvpe(command[0], command, environment)
        self.seen = ""

    def type(self, text):
        os.write(self.terminal, text.encode())

    def read(self, seconds):
        if not select.select([self.terminal], [], [], seconds)[0]:
            return False
        try:
            self.seen += os.read(self.terminal, 65536).decode(errors="replace")
        except OSError:  # the shell has ended
            return False
        return True

    def wait_for(self, pattern):
        deadline = time.monotonic() + LIMIT
        while time.monotonic() < deadline:
            found = re.search(pattern, self.seen)
            if found:
                return found
            self.read(0.1)
        return None

    def pause(self):
        """Waits until nothing comes any more. Keys that are typed before a word is
        completed wait for it, too, so that this need not be long."""
        while self.read(QUIET):
            pass

    def end(self):
        os.close(self.terminal)
        os.waitpid(self.pid, 0)


def typed(shell, line):
    """Types a line and returns what the function printed."""
    for part in re.split("(\t)", "qorcli " + line):
        shell.type(part)
        if part == "\t":
            shell.pause()
    shell.seen = ""
    shell.type("\r")
    found = shell.wait_for(r"(\[-.*\])\r+\n[^\n]*" + PROMPT)
    return found and found.group(1)


def filled(text, arguments, folder):
    """Replaces the names of places in a text."""
    for name, value in (("$ODD", arguments.plugin), ("$FOLDER", folder),
                        ("$PROMPT", PROMPT),
                        ("$SCRIPTS", arguments.root / "engine/completion")):
        text = text.replace(name, str(value))
    return text


def check_typed(arguments, environment, folder):
    setup, command = SETUP[arguments.shell]
    rc = pathlib.Path(folder) / ".zshrc"
    rc.write_text(filled(setup, arguments, folder))
    shell = Shell([part.format(rc=rc) for part in command], environment,
                  arguments.root)
    shell.wait_for(PROMPT)
    failures = 0
    for case in CASES_OF[arguments.shell]:
        line, expected = (filled(text, arguments, folder) for text in case)
        failures += differs(line, expected, typed(shell, line))
    shell.end()
    return failures


def check_offered(arguments, environment, folder):
    failures = 0
    if arguments.shell == "bash":
        for words, current, kind, expected in OFFERED:
            words = [filled(word, arguments, folder) for word in words]
            failures += differs((words, kind), expected,
                                offered(arguments.root / "engine/completion", words,
                                        current, kind, environment))
    elif arguments.shell == "fish":
        for line, expected in OFFERED_BY_FISH:
            line = filled(line, arguments, folder)
            expected = [filled(text, arguments, folder) for text in expected]
            failures += differs(line, expected,
                                offered_by_fish(arguments.root, line, environment))
    return failures


def differs(case, expected, found):
    if found == expected:
        return False
    print(f"{case!r}\n  expected {expected}\n  found    {found}")
    return True


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--qorcli", type=pathlib.Path, required=True)
    parser.add_argument("--root", type=pathlib.Path, required=True)
    parser.add_argument("--plugin", type=pathlib.Path, required=True)
    parser.add_argument("shell", choices=SETUP)
    arguments = parser.parse_args()
    with tempfile.TemporaryDirectory() as folder:
        (pathlib.Path(folder) / "a name").write_text("")
        (pathlib.Path(folder) / "folder").mkdir()
        (pathlib.Path(folder) / "folder/odd.so").symlink_to(arguments.plugin)
        (pathlib.Path(folder) / "qorcli").symlink_to(arguments.qorcli.resolve())
        environment = dict(os.environ, ZDOTDIR=folder, HOME=folder, TERM="dumb",
                           COLUMNS="500",
                           PATH=folder + os.pathsep + os.environ["PATH"])
        failures = check_typed(arguments, environment, folder)
        failures += check_offered(arguments, environment, folder)
    print(f"{arguments.shell}: {failures} failed")
    sys.exit(1 if failures else 0)


if __name__ == "__main__":
    main()
