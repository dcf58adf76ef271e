#!/usr/bin/env python3
"""docs/classes.md: complete, and what krz makes of declarations and sentences now.
usage: class_reference.py KRZ SOURCE_FOLDER"""
import json
import pathlib
import re
import sys
import unittest

from command_test import krz

SOURCE = pathlib.Path(sys.argv[2])


def classes():
    return json.loads(krz("classes", "--json").stdout)


def members(one):
    return [m for kind in ("properties", "methods", "sharedMethods", "constants") for m in one[kind]]


def document_of(text):
    """Sentences by class and declaration, read without a line of what writes the document."""
    found, name, pending = {}, None, []
    for line in text.splitlines():
        if line.startswith("## "):
            name = line[3:]
        elif match := re.fullmatch(r"[- ] `(.*)`(,|  )", line):
            pending.append(match[1])
        elif pending:
            for declaration in pending:
                found[name, declaration] = line.strip()
            pending = []
    return found


class ClassReference(unittest.TestCase):
    maxDiff = None

    def test_no_member_lacks_a_sentence_and_no_sentence_a_member(self):
        made = krz("--reference")
        self.assertEqual((made.stderr, made.returncode), ("", 0))

    def test_the_document_is_what_is_made_now(self):
        written = (SOURCE / "docs" / "classes.md").read_text()
        self.assertEqual(krz("--reference").stdout, written, "run ./dev docs")

    def test_every_registered_member_stands_in_the_document_with_a_sentence(self):
        found = document_of((SOURCE / "docs" / "classes.md").read_text())
        missing = []
        for one in classes():
            for declaration in members(one):
                if not re.match(r".{3,}\.", found.get((one["name"], declaration), "")):
                    missing.append(f"{one['name']}: {declaration}")
        self.assertEqual(missing, [])
        self.assertGreater(len(found), 500)

    def test_a_class_shows_its_members_as_declared_with_their_sentences(self):
        for one in classes():
            shown = krz("classes", one["name"]).stdout
            lines = shown.splitlines()
            for declaration in members(one):
                self.assertIn("  " + declaration, lines)
            for line in lines:
                self.assertLessEqual(len(line), 96 if line.startswith("      ") else 400, line)
        self.assertIn("the track that is asked gives", re.sub(r"\s+", " ", krz("classes", "QTTrackKRZ").stdout))

    def test_a_member_alone_is_shown_to_people_and_programs(self):
        self.assertTrue(krz("classes", "qttrackkrz.width").stdout.startswith("QTTrackKRZ.Width as integer\n  Whole"))
        (one,) = json.loads(krz("classes", "QTTrackKRZ.width", "--json").stdout)
        self.assertEqual((one["name"], members(one)), ("QTTrackKRZ", ["Width as integer"]))


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
