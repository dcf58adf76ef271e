#!/usr/bin/env python3
"""krz meta and krz userdata: what they set, find, copy and refuse. usage: metadata.py KRZ"""
import json
import struct
import sys
import unittest

from command_test import MovieTest, krz


class Metadata(MovieTest):
    def items(self, *arguments):
        listed = json.loads(self.good("meta", "list", *(arguments or [self.movie]), "--json"))
        return [(i["storageFormat"], i["key"].removeprefix("com.apple.quicktime."), i["value"]) for i in listed]

    def test_a_set_keeps_the_place_and_a_new_item_goes_where_its_kind_has_it(self):
        self.good("meta", "set", self.movie, "title=First", "track=3/12", "-i")
        self.assertEqual(self.items(), [("mdta", "title", "First"), ("itms", "trkn", None)])
        self.assertEqual(self.good("meta", "get", self.movie, "track"), "3/12\n")
        self.good("meta", "set", self.movie, "comment=old", "--storage", "udta", "-i")
        self.good("meta", "set", self.movie, "comment=new=er", "title=Second", "-i")
        self.assertEqual(self.items(), [("mdta", "title", "Second"), ("itms", "trkn", None), ("udta", "©cmt", "new=er")])
        self.good("meta", "add", self.movie, "title=Zweiter", "--locale", "de_AT", "-i")
        self.assertEqual(self.good("meta", "get", self.movie, "title"), "Second\nZweiter\n")
        self.assertIn("[de_AT]", self.good("meta", "list", self.movie))
        brand = self.copy("clip.mp4")
        brand.write_bytes(brand.read_bytes().replace(b"ftypqt  ", b"ftypisom", 1))
        self.good("meta", "set", brand, "title=Short", "-i")
        self.assertEqual(self.items(brand), [("itms", "©nam", "Short")])

    def test_removing_brings_the_movie_back(self):
        before = json.loads(self.good("info", "--json", self.movie))
        other = self.copy("other.mov")
        self.good("meta", "set", self.movie, other, "title=A", "mdta:org.example.key=B", "itms:com.apple.iTunes:MOOD=C", "udta:©xyz=D", "-i")
        self.assertEqual(len(self.items()), 4)
        self.assertEqual(self.items(), self.items(other))
        self.good("meta", "remove", self.movie, "title,mdta:org.example.key,itms:com.apple.iTunes:MOOD,location", "-i", "--final")
        self.assertEqual(json.loads(self.good("info", "--json", self.movie)), before)
        for kept in (b"org.example", b"MOOD"):
            self.assertNotIn(kept, self.movie.read_bytes())

    def test_what_cannot_be_is_refused_before_anything_is_written(self):
        text = self.folder / "text.txt"
        text.write_text("no picture, " * 9)
        self.refused(2, "mdta:KEY", "meta", "set", self.movie, "titel=x", "-i")
        self.refused(2, "-i changes", "meta", "set", self.movie, "title=x")
        self.refused(2, "KEY=VALUE", "meta", "set", self.movie, "-i")
        self.refused(2, "no picture", "meta", "set", self.movie, f"artwork={text}", "-i")
        self.refused(2, "track is a number", "meta", "set", self.movie, "track=third", "-i")
        self.refused(2, "no key for artwork", "meta", "set", self.movie, f"artwork={text}", "--storage", "udta", "-i")
        self.refused(2, "is no locale", "meta", "set", self.movie, "title=x", "--locale", "klingon", "-i")
        self.refused(1, "has no title", "meta", "get", self.movie, "title")
        self.refused(3, "no JSON", "meta", "import", self.movie, text, "-i")
        self.refused(3, "no flattened list", "userdata", "import", self.movie, text, "-i")
        self.refused(1, "no ©nam number 2", "userdata", "remove", self.movie, "©nam", "2", "-i")

    def test_what_export_writes_import_takes(self):
        self.good("meta", "set", self.movie, "title=Žluť", "tempo=120", "disc=1/2", "-i")
        self.good("meta", "add", self.movie, "comment=raw", "--storage", "udta", "--locale", "en", "-i")
        items = self.folder / "items.json"
        self.good("meta", "export", self.movie, "-o", items)
        other = self.copy("other.mov")
        self.good("meta", "import", other, items, "-i")
        self.assertEqual(json.loads(self.good("meta", "list", other, "--json")), json.loads(items.read_text()))
        self.good("meta", "import", other, items, "--replace", "-i")
        self.assertEqual(json.loads(self.good("meta", "export", other)), json.loads(items.read_text()))

    def test_copies_say_what_stands_in_their_way(self):
        other = self.copy("other.mov")
        self.good("meta", "set", self.movie, "title=Mine", "artist=Me", "-i")
        self.good("meta", "set", other, "title=Theirs", "-i")
        answer = krz("meta", "copy", self.movie, other, "-i")
        self.assertEqual(answer.returncode, 0, answer.stderr)
        self.assertIn("conflict: mdta title", answer.stderr)
        self.assertEqual(self.items(other), [("mdta", "title", "Theirs"), ("mdta", "artist", "Me")])
        self.good("meta", "copy", self.movie, other, "--replace", "-i")
        self.assertEqual(sorted(self.items(other)), sorted(self.items()))
        self.good("meta", "copy", self.movie, "--from", "mdta", "--to", "udta", "-i")
        self.assertEqual(self.items()[2:], [("udta", "©nam", "Mine"), ("udta", "©ART", "Me")])
        self.assertEqual(self.good("meta", "where", self.movie, "title").count("Mine"), 2)

    def test_tracks_have_metadata_and_user_data_of_their_own(self):
        self.good("meta", "set", self.movie, "title=Of the track", "--track", "video", "-i")
        self.good("userdata", "add", self.movie, "name", "Main", "--track", "video", "-i")
        info = json.loads(self.good("info", "--json", self.movie))
        self.assertEqual(info["metaData"], [])
        self.assertEqual(info["tracks"][0]["metaData"][0]["value"], "Of the track")
        self.assertEqual(info["tracks"][0]["userData"], [{"type": "name", "index": 1, "bytes": 8, "text": "Main"}])
        self.assertIn("track 1, mdta", self.good("meta", "where", self.movie, "title"))

    def test_user_data_goes_in_and_out(self):
        self.good("userdata", "add", self.movie, "©nam", "Žluť 日本", "-i")
        blob = self.folder / "blob.bin"
        blob.write_bytes(bytes(range(256)))
        self.good("userdata", "add", self.movie, "TAGS", "--file", blob, "-i")
        self.assertEqual(self.good("userdata", "get", self.movie, "©nam"), "Žluť 日本\n")
        self.assertEqual(json.loads(self.good("userdata", "list", self.movie, "--json")),
                         [{"type": "©nam", "index": 1, "text": "Žluť 日本"}, {"type": "TAGS", "index": 1, "bytes": 256}])
        flat, out = self.folder / "flat.bin", self.folder / "out.bin"
        self.good("userdata", "export", self.movie, flat)
        other = self.copy("other.mov")
        self.good("userdata", "import", other, flat, "-i")
        self.good("userdata", "get", other, "TAGS", "1", "-o", out)
        self.assertEqual(out.read_bytes(), blob.read_bytes())
        self.good("userdata", "remove", other, "©nam", "-i")
        self.assertEqual(len(json.loads(self.good("userdata", "list", other, "--json"))), 1)

    def test_a_damaged_list_is_shown_as_far_as_it_goes_and_kept(self):
        self.good("userdata", "add", self.movie, "©nam", "Readable", "-i", "--final")
        data = bytearray(self.movie.read_bytes())
        at = data.rfind(b"\xa9nam")
        end = at + 4 + 4 + len("Readable")
        data[end:end + 4] = struct.pack(">I", 0x7FFFFFFF)  # what ended the list is an item without an end
        self.movie.write_bytes(data)
        self.assertEqual(self.good("userdata", "get", self.movie, "©nam"), "Readable\n")
        self.good("meta", "set", self.movie, "comment=added", "--storage", "udta", "-i")
        self.assertEqual(self.items(), [("udta", "©nam", "Readable"), ("udta", "©cmt", "added")])
        self.assertGreater(self.movie.read_bytes().rfind(struct.pack(">I", 0x7FFFFFFF)), self.movie.read_bytes().rfind(b"added"))


if __name__ == "__main__":
    unittest.main(argv=[sys.argv[0]])
