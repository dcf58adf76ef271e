#!/usr/bin/env python3
"""krz repl, from pipes and as a person at a terminal sees it. usage: repl.py KRZ"""
import pathlib
import subprocess
import sys
import unittest

from command_test import KRZ, MovieTest, Terminal, krz


class Session(Terminal):
    def __init__(self, state, *arguments):
        super().__init__([KRZ, "repl", *arguments], XDG_STATE_HOME=str(state), NO_COLOR="1")

    def ask(self, line):
        self.wait_for("krz> ")
        self.type(line + "\n")


def piped(text, *arguments):
    return krz("repl", *arguments, input=text)


class Repl(MovieTest):
    def test_pipes_are_read_piece_by_piece_and_mistakes_do_not_end_it(self):
        answer = piped('1+2\n\nnothing\nFor i = 1 To 2\n  Print i, _\n    "x"\nNext\nDim a = 1 \\ 0\n"end"')
        self.assertEqual(answer.stdout, '3\n1 x\n2 x\n"end"\n')
        self.assertEqual(answer.returncode, 1)
        self.assertIn("standard input:3:1: error: there is no variable or function “nothing”\nnothing\n^\n", answer.stderr)
        self.assertIn("standard input:8:11: DivisionByZeroException", answer.stderr)
        self.assertEqual(answer.stderr.count("\n"), 6)

    def test_exit_statuses(self):
        for text, arguments, status in (
            ("1 + 1", [], 0), ("", [], 0), ("Quit 9\n1", [], 9), ("If True Then\n", [], 1), ("Quit\nfail", [], 0),
            ("1", [self.folder / "no.mov"], 3), ("1", ["-w"], 2), ("1", ["a", "b"], 2),
        ):
            with self.subTest(text=text, arguments=arguments):
                self.assertEqual(piped(text, *arguments).returncode, status)

    def test_a_long_block_does_not_take_long(self):
        lines = "".join(f"Sub s{i}()\nPrint {i}\nEnd Sub\n" for i in range(1000))
        long_if = "If True Then\n" + "x = x + 1\n" * 20000 + "End If\nx"
        self.assertEqual(piped("Dim x As Integer\n" + lines + "s999\n" + long_if).stdout, "999\n20000\n")

    def test_the_movie_is_m_and_can_be_changed_only_when_asked(self):
        answer = piped("m.TrackCountKRZ\nm.GetTrackIndexKRZ(1)\n", self.movie)
        self.assertRegex(answer.stdout, r'^4\nQTTrackKRZ\(.*Width: 160, Height: 120, MediaType: "vide"')
        self.assertEqual(answer.stderr, f"m is {self.movie}, opened for reading; -w opens it for changes\n")
        self.assertIn("opened for changes", piped("1", "-w", self.movie).stderr)

    def test_a_person_gets_prompts_blocks_and_messages(self):
        terminal = Session(self.folder / "person", self.movie)
        self.assertIn("m is ", terminal.wait_for("for changes\n"))
        terminal.ask("m.Dur\t")
        self.assertIn("m.Duration\n6000\n", terminal.wait_for("6000\n"))
        terminal.ask("If True Then")
        terminal.wait_for("...> ")
        terminal.type('Print "gr" + "ün"\n')
        terminal.wait_for("...> ")
        terminal.type("End If\n")
        terminal.wait_for("\ngrün\n")
        terminal.ask("Dim x As Nothing")
        terminal.wait_for("there is no type “Nothing”")
        terminal.ask("For i = 1 To")  # Seen at once, not at the end of the block.
        terminal.wait_for("a value is expected here")
        terminal.ask("1 + 1")
        terminal.wait_for("\n2\n")
        terminal.wait_for("krz> ")
        terminal.type("\x04")
        self.assertEqual(terminal.status(), 0)

    def test_tab_lists_what_is_possible(self):
        terminal = Session(self.folder / "tab")
        terminal.ask("Class Shape\n Property width As Integer, weight As Double\nEnd Class")
        terminal.ask("Dim thing As New Shape")
        terminal.wait_for("krz> ")
        terminal.type("thing.w\t")
        terminal.wait_for("weight  width")
        terminal.type("i\t = 5\n")
        terminal.ask("thi\t")
        terminal.wait_for("\nShape(width: 5, weight: 0)\n")
        terminal.ask("Quit 3")
        self.assertEqual(terminal.status(), 3)

    def test_control_c_ends_what_runs_and_what_is_typed_but_not_the_session(self):
        terminal = Session(self.folder / "interrupt")
        terminal.ask("Dim n As Integer")
        terminal.ask("While True : n = n + 1 : If n = 1000 Then Print \"running\"")
        terminal.wait_for("...> ")
        terminal.type("Wend\n")
        terminal.wait_for("\nrunning\n")
        terminal.type("\x03")
        terminal.wait_for("krz: interrupted\n")
        terminal.ask("If n >= 1000 Then")
        terminal.wait_for("...> ")
        terminal.type("half a line\x03")
        terminal.ask("n >= 1000")  # The interrupt may come before another round.
        terminal.wait_for("\nTrue\n")
        terminal.wait_for("krz> ")
        terminal.type("never run\x03")
        terminal.wait_for("krz> ")
        terminal.type("\x04")
        self.assertEqual(terminal.status(), 0)

    def test_history_outlives_sessions_and_is_bounded(self):
        state = self.folder / "history"
        file = state / "krz" / "history"
        terminal = Session(state)
        terminal.ask("40 + 2")
        terminal.ask("Quit")
        self.assertEqual(terminal.status(), 0)
        self.assertEqual(file.read_text(), "40 + 2\nQuit\n")
        self.assertEqual(file.stat().st_mode & 0o777, 0o600)
        terminal = Session(state)
        terminal.wait_for("krz> ")
        terminal.type("\x1b[A\x1b[A\n")
        terminal.wait_for("\n42\n")
        terminal.wait_for("krz> ")
        terminal.type("\x04")
        self.assertEqual(terminal.status(), 0)
        file.write_text("".join(f"Print {i}\n" for i in range(5000)))
        terminal = Session(state)
        terminal.ask("Quit")
        self.assertEqual(terminal.status(), 0)
        lines = file.read_text().splitlines()
        self.assertEqual((len(lines), lines[0], lines[-1]), (1001, "Print 4000", "Quit"))

    def test_without_a_place_for_history_all_else_works(self):
        blocked = self.folder / "blocked"
        blocked.write_text("a file where a folder should be")
        terminal = Session(blocked)
        terminal.ask("1 + 2")
        terminal.wait_for("\n3\n")
        terminal.ask("Quit")
        self.assertEqual(terminal.status(), 0)

    def test_starting_krz_loads_no_line_editor(self):
        root = pathlib.Path(KRZ).parent.parent
        (command,) = root.glob("lib*/**/krz-command.so")
        for binary in (KRZ, command):
            libraries = subprocess.run(["ldd", binary], capture_output=True, text=True, timeout=60).stdout
            self.assertIn("libc.", libraries)
            self.assertNotIn("edit", libraries.replace(str(root), ""))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
