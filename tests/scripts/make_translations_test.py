"""The translation databases out of the texts of data/."""

import pathlib
import sqlite3
import tempfile
import unittest

from support import load_script

make_translations = load_script("make_translations")

CAPTIONS = "FormName\tControllName\tEnglish\tTranselate\tRussian\tKazakh\n"
MESSAGES = "Id\tEnglish\tRussian\tKazakh\n"


class MakeTranslations(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.data = pathlib.Path(temporary.name) / "data"
        self.folder = pathlib.Path(temporary.name) / "beside the program"
        self.data.mkdir()
        self.folder.mkdir()

    def write(self, name, text):
        path = self.data / name
        path.parent.mkdir(exist_ok=True)
        path.write_text(text, encoding="utf-8")

    def rows(self, file, query):
        database = sqlite3.connect(self.folder / file)
        self.addCleanup(database.close)
        return database.execute(query).fetchall()

    def test_captions_have_a_column_for_each_language(self):
        self.write("captions/frm.tsv", CAPTIONS + "frm\tcmd\t&Go\tTrue\t&Пуск\t&Бастау\nfrm\tlbl\tGo\tFalse\tПуск\t\n")
        make_translations.make_captions(self.data, self.folder)
        self.assertEqual(
            self.rows("VELK Translation Data.mdb",
                      "SELECT FormName,ControllName,English,Transelate,Russian,Kazakh FROM Languages"),
            [("frm", "cmd", "&Go", 1, "&Пуск", "&Бастау"), ("frm", "lbl", "Go", 0, "Пуск", "")])

    def test_messages_keep_their_numbers_and_the_blanks_at_their_ends(self):
        self.write("messages/core.tsv", MESSAGES + "252\tAcquiring Data \t Регистрация \t\n")
        make_translations.make_messages(self.data, self.folder)
        self.assertEqual(
            self.rows("VELKMESSAGES.MDB", "SELECT Id,txtMessage,translatable,Russian,Kazakh FROM Messages"),
            [(252, "Acquiring Data ", 1, " Регистрация ", "")])

    def test_a_file_of_before_is_replaced_whole(self):
        for text in ("1\tOne\tОдин\t\n2\tTwo\tДва\t\n", "1\tOne\tРаз\t\n"):
            self.write("messages/core.tsv", MESSAGES + text)
            make_translations.make_messages(self.data, self.folder)
        self.assertEqual(self.rows("VELKMESSAGES.MDB", "SELECT Russian FROM Messages"), [("Раз",)])
        self.assertEqual([path.name for path in self.folder.iterdir()], ["VELKMESSAGES.MDB"])

    def test_a_line_with_a_field_too_few_is_told_with_its_number(self):
        self.write("messages/core.tsv", MESSAGES + "1\tOne\tОдин\t\n2\tTwo\tДва\n")
        with self.assertRaisesRegex(SystemExit, r"core\.tsv:3: 3 fields, not 4"):
            make_translations.make_messages(self.data, self.folder)
        self.assertEqual(list(self.folder.iterdir()), [])

    def test_the_tables_of_all_folders_go_into_one_database(self):
        self.write("messages/core.tsv", MESSAGES + "1\tOne\tОдин\t\n")
        self.write("messages/log.tsv", MESSAGES + "2\tTwo\tДва\t\n")
        make_translations.make_messages(self.data, self.folder)
        self.assertEqual(self.rows("VELKMESSAGES.MDB", "SELECT Id,Russian FROM Messages ORDER BY Id"),
                         [(1, "Один"), (2, "Два")])

    def test_tables_with_other_languages_than_the_rest_are_an_error(self):
        self.write("messages/core.tsv", MESSAGES + "1\tOne\tОдин\t\n")
        self.write("messages/log.tsv", "Id\tEnglish\tRussian\n2\tTwo\tДва\n")
        with self.assertRaisesRegex(SystemExit, r"log\.tsv: the columns are not those of the other tables"):
            make_translations.make_messages(self.data, self.folder)

    def test_no_table_at_all_is_an_error(self):
        (self.data / "messages").mkdir()
        with self.assertRaisesRegex(SystemExit, r"messages: no table is there"):
            make_translations.make_messages(self.data, self.folder)

    def test_a_number_that_stands_twice_is_an_error(self):
        for tables in (("core", "core"), ("core", "log")):
            for name in tables:
                self.write("messages/" + name + ".tsv", MESSAGES + "1\tOne\tОдин\t\n")
            if tables[0] == tables[1]:
                self.write("messages/core.tsv", MESSAGES + "1\tOne\tОдин\t\n1\tOne\tРаз\t\n")
            with self.assertRaises(sqlite3.IntegrityError):
                make_translations.make_messages(self.data, self.folder)


if __name__ == "__main__":
    unittest.main()
