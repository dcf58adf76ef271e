#!/usr/bin/env python3
"""What is different on a terminal: colour, and what is not. usage: terminal.py KRZ"""
import sys
import unittest

from command_test import KRZ, MovieTest, Terminal, krz

ESCAPE = "\x1b["


def on_terminal(*arguments, **environment):
    """All that a command writes, with both of its outputs on one terminal, and its status."""
    terminal = Terminal(["env", "-u", "NO_COLOR", *(f"{key}={value}" for key, value in environment.items()), KRZ, *arguments])
    status = terminal.status()
    return terminal.text, status


class Colours(MovieTest):
    def test_headings_stand_out_on_a_terminal_and_nowhere_else(self):
        for command in (["info"], ["track", "list"], ["chapters", "list"], ["edit", "list"], ["timecode", "list"],
                        ["sound", "levels"]):
            shown, status = on_terminal(*command, self.movie)
            self.assertEqual(status, 0)
            self.assertIn(ESCAPE + "1m", shown, command)
            plain = krz(*command, self.movie).stdout
            self.assertNotIn("\x1b", plain)
            self.assertEqual(shown.replace(ESCAPE + "1m", "").replace(ESCAPE + "0m", ""), plain, command)
            for refusal in ({"NO_COLOR": "1"}, {"TERM": "dumb"}):
                self.assertEqual(on_terminal(*command, self.movie, **refusal)[0], plain)
        self.assertNotIn("\x1b", on_terminal("info", "--json", self.movie)[0])

    def test_complaints_are_red_whoever_makes_them(self):
        for command in (["info", "missing.mov"], ["inof"], ["chapters", "list", "missing.mov"], ["meta", "get"]):
            said, status = on_terminal(*command)
            self.assertNotEqual(status, 0)
            self.assertTrue(said.startswith(ESCAPE + "1;31mkrz:" + ESCAPE + "0m "), repr(said))
            plain = krz(*command).stderr
            self.assertTrue(plain.startswith("krz: "), plain)

    def test_krz_alone_says_what_to_type_next_and_that_works(self):
        answer = krz()
        self.assertEqual((answer.returncode, answer.stderr), (2, ""))
        for step in ("krz demo ", "krz info ", "krz repl ", "krz --help ", "krz help chapters"):
            self.assertIn(step, answer.stdout)
        self.assertLessEqual(len(answer.stdout.splitlines()), 8)
        overview = krz("--help").stdout
        self.assertLessEqual(len(overview.splitlines()), 24)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
