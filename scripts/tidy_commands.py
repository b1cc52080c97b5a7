"""Tells how the sources named on standard input are looked at, by the commands that compile them: a
command for a shell each, with a zero byte behind it."""
import json
import os
import shlex
import sys

wanted = set(sys.stdin.read().splitlines())
tool = os.path.abspath("scripts/tidy_compiler")
with open(sys.argv[1]) as database:
    for entry in json.load(database):
        source = os.path.relpath(entry["file"])
        if source in wanted and not source.startswith("tests/canary/"):
            flags = shlex.split(entry["command"])[1:]
            included = flags[flags.index("-o") + 1] + ".d"
            tidy = ["ccache", tool, "-MD", "-MF", included] + flags
            command = f"cd {shlex.quote(entry['directory'])} && exec {shlex.join(tidy)}"
            print(command, end="\0")
