#!/usr/bin/env python3
"""Completions typed into real shells, and manual pages under the checks of their formatters.
usage: completion.py KRZ BUILD_FOLDER"""
import json
import os
import pathlib
import re
import shutil
import subprocess
import sys
import unittest

from command_test import MovieTest, Terminal, krz

BUILD = pathlib.Path(os.path.abspath(sys.argv[2]))


class Shell(Terminal):
    """A shell in which lines are typed."""

    def __init__(self, command, folder):
        super().__init__(command, folder, TERM="dumb", PS1="", COLUMNS="4000")
        self.type("stty -echo cols 4000\n")

    def completed(self, line, keys):
        """The words of a line after the keys that complete it; the line is echoed, not run."""
        self.type(line + keys + "\x01echo BEGIN\"\": \x05 :END\"\"LINE\n")
        seen = self.wait_for(":ENDLINE")
        return re.findall(r"BEGIN: (.*?) +:ENDLINE", seen, re.S)[-1].split()

    def close(self):
        self.type("\x03\nexit\n")
        self.status()


class Completion(MovieTest):
    def setUp(self):
        super().setUp()
        for name in ("notes.txt", "script.bas"):
            (self.folder / name).write_text("")


class Bash(Completion):
    def setUp(self):
        super().setUp()
        self.shell = Shell(["bash", "--norc", "--noprofile", "-i"], self.folder)
        self.addCleanup(self.shell.close)
        self.shell.type("bind 'set bell-style none'; bind 'set enable-bracketed-paste off'; PS1=\n")
        self.shell.type(f"source '{BUILD}/completions/krz'; echo RE\"\"ADY\n")
        self.shell.wait_for("READY")

    def offered(self, line):
        """All that bash would insert in place of the last word."""
        words = self.shell.completed(line, "\x1b*")
        return words[len(line.split()) - (0 if line.endswith(" ") else 1):]

    def test_commands_and_verbs_are_those_of_the_help(self):
        help_words = set(re.findall(r"^  ([a-z|]+)", krz("--help").stdout, re.M))
        known = {word for words in help_words for word in words.split("|")}
        offered = set(self.offered("krz "))
        self.assertLessEqual(known, offered)
        self.assertIn("import", self.offered("krz chapters "))
        for noun in sorted(offered - {"help"}):
            if noun.startswith("-"):
                continue
            verbs = re.findall(rf"^krz {noun} (\S+)", krz("help", noun).stdout, re.M)
            if "VERB" in krz("help", noun).stdout:
                self.assertEqual(sorted(self.offered(f"krz {noun} ")), sorted(set(verbs)), noun)
        self.assertEqual(self.offered("krz chapters im"), ["import"])
        self.assertEqual(self.offered("krz help samples ext"), ["extract"])

    def test_options_are_those_of_the_command(self):
        options = self.offered("krz chapters import clip.mov --")
        self.assertLessEqual({"--every", "--track", "--in-place", "--files-from", "--help"}, set(options))
        self.assertNotIn("--format", options)
        self.assertEqual(self.offered("krz chapters export clip.mov --format "),
                         ["csv", "ffmetadata", "json", "ogm", "simple", "webvtt"])
        self.assertEqual(self.offered("krz meta list clip.mov --storage "), ["itms", "mdta", "udta"])

    def test_movies_scripts_and_files_where_they_belong(self):
        self.assertEqual(self.offered("krz info "), ["clip.mov"])
        self.assertEqual(self.offered("krz run "), ["script.bas"])
        self.assertIn("notes.txt", self.offered("krz chapters import clip.mov "))
        self.assertIn("notes.txt", self.offered("krz info --files-from "))

    def test_track_selectors_are_understood_by_the_commands(self):
        selectors = self.offered("krz samples list clip.mov ")
        self.assertLessEqual({"video", "sound:1", "ref:chap", "all"}, set(selectors))
        for selector in selectors:
            said = krz("samples", "list", "clip.mov", selector, cwd=self.folder).stderr
            self.assertNotIn("names no track;", said, selector) if selector != "id=" else None
        self.assertEqual(self.offered("krz samples list clip.mov sound:"), ["sound:1"])
        self.assertIn("tmcd:1", self.offered("krz meta list clip.mov -t "))

    def test_keys_of_metadata_are_taken_by_the_commands(self):
        keys = self.offered("krz meta get clip.mov ")
        self.assertLessEqual({"title", "artist", "artwork", "location"}, set(keys))
        for key in keys:
            if key == "clip.mov":
                continue
            answer = krz("meta", "get", "clip.mov", key, cwd=self.folder)
            self.assertNotEqual(answer.returncode, 2, key + answer.stderr)
        self.assertEqual(self.offered("krz meta set clip.mov copyr"), ["copyright="])

    def test_classes_and_their_members(self):
        classes = [one["name"] for one in json.loads(krz("classes", "--json").stdout)]
        self.assertEqual(sorted(self.offered("krz classes ")), sorted(classes))
        members = self.offered("krz classes QTChapterTrackKRZ.")
        self.assertEqual(len(members), 5)
        for member in members:
            self.assertIn(member, krz("classes", member).stdout)


@unittest.skipUnless(shutil.which("zsh"), "zsh is not installed")
class Zsh(Completion):
    def test_unique_beginnings_are_completed(self):
        shell = Shell(["zsh", "-f", "-i"], self.folder)
        self.addCleanup(shell.close)
        shell.type("unsetopt zle_bracketed_paste prompt_sp prompt_cr beep; bindkey -e; PS1=\n")
        shell.type(f"fpath=('{BUILD}/completions' $fpath); autoload -Uz compinit; compinit -u -D; echo RE\"\"ADY\n")
        shell.wait_for("READY")
        for typed, expected in (("krz chap", "chapters"), ("krz chapters imp", "import"), ("krz help sam", "samples"),
                                ("krz info cli", "clip.mov"), ("krz info --js", "--json"),
                                ("krz chapters export clip.mov --format web", "webvtt"),
                                ("krz samples list clip.mov ref:c", "ref:chap"),
                                ("krz meta get clip.mov genr", "genre"),
                                ("krz meta set clip.mov copyr", "copyright="),
                                ("krz classes QTTimeCodeKRZ.SourceN", "QTTimeCodeKRZ.SourceName")):
            self.assertEqual(shell.completed(typed, "\t")[-1], expected, typed)


class Manual(unittest.TestCase):
    def test_there_is_a_page_for_each_noun_that_names_each_verb_and_option(self):
        pages = {page.name for page in (BUILD / "man").glob("*.1")}
        nouns = re.findall(r"krz\\-(\w+)\\fR\(1\)", krz("--man").stdout)
        self.assertGreaterEqual(len(set(nouns)), 7)
        self.assertLessEqual({"krz.1"} | {f"krz-{noun}.1" for noun in nouns}, pages)
        for noun in set(nouns):
            text = krz("--man", noun).stdout.replace("\\-", "-")
            self.assertEqual(text, (BUILD / "man" / f"krz-{noun}.1").read_text().replace("\\-", "-"))
            for verb in re.findall(rf"^krz {noun} (\S+)", krz("help", noun).stdout, re.M):
                self.assertIn(f".SS krz {noun} {verb}\n", text)
                for option in re.findall(r"(--[a-z-]+)", krz("help", noun, verb).stdout.split("Examples:")[0]):
                    self.assertIn(f"\\fB{option}\\fR", text, verb)

    def test_each_command_has_two_worked_examples_or_more(self):
        names = re.findall(r"^\.SS krz (.*)$", krz("--man").stdout.replace("\\-", "-"), re.M)
        for noun in set(re.findall(r"krz\\-(\w+)\\fR\(1\)", krz("--man").stdout)):
            names += re.findall(r"^\.SS krz (.*)$", krz("--man", noun).stdout.replace("\\-", "-"), re.M)
        self.assertGreater(len(names), 40)
        for name in names:
            examples = krz("help", *name.split()).stdout.split("Examples:\n")[1]
            self.assertGreaterEqual(len(re.findall(rf"\bkrz {name}\b", examples)), 2, name)

    def test_formatters_have_nothing_to_say(self):
        checks = [["groff", "-ww", "-man", "-Tutf8"], ["man", "--warnings=w", "-l"],
                  ["mandoc", "-T", "lint", "-W", "error"]]
        ran = 0
        for check in checks:
            if not shutil.which(check[0]):
                continue
            ran += 1
            for page in (BUILD / "man").glob("*.1"):
                answer = subprocess.run([*check, page], capture_output=True, text=True, timeout=60,
                                        env={**os.environ, "MANWIDTH": "100", "LC_ALL": "C.UTF-8"})
                self.assertEqual(answer.stderr, "", check)
                self.assertEqual(answer.returncode, 0, check)
        if ran == 0:
            self.skipTest("neither groff, man nor mandoc is installed")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
