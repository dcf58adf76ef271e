"""What the judges share: commands as processes, faults that are collected, and exit status 77 where tools are missing."""
import os
import pathlib
import shutil
import subprocess
import sys
import tempfile

KRZ = os.path.abspath(sys.argv[1])
CORPUS = pathlib.Path(sys.argv[2]) if len(sys.argv) > 2 else None
faults = []


def run(*command, **options):
    options = {"capture_output": True, "text": True, "timeout": 120, **options}
    return subprocess.run([str(word) for word in command], **options)


def must(*command):
    """What a command that is to succeed prints."""
    answer = run(*command)
    if answer.returncode != 0:
        raise RuntimeError(f"{command}: {answer.stdout[-300:]} {answer.stderr[-300:]}")
    return answer.stdout


def expect(condition, text):
    if not condition:
        faults.append(text)


def need(*tools):
    missing = [tool for tool in tools if not shutil.which(tool)]
    if missing:
        print("skipped: without", ", ".join(missing))
        sys.exit(77)


def need_corpus():
    if not CORPUS.is_dir():
        print(f"skipped: the folder of real movies {CORPUS} is absent")
        sys.exit(77)


def judge_real_movies(judge):
    if CORPUS is not None and CORPUS.is_dir():
        judge()
    else:
        print("no folder of real movies: only made ones are judged")


def folder():
    """A folder that goes away, as a context."""
    return tempfile.TemporaryDirectory()


def finish(summary):
    for fault in faults:
        print(fault)
    print(f"{summary}, {len(faults)} faults")
    sys.exit(1 if faults else 0)
