"""Lets scripts/kill_test kill small stand-ins for the program: honest ones, and ones that lie."""

import contextlib
import io
import os
import pathlib
import shlex
import sys
import tempfile
import unittest
import unittest.mock

from support import load_script

kill_test = load_script("kill_test")

RECORDER = """
import sqlite3, sys
log = sqlite3.connect(sys.argv[1], isolation_level=None)
log.execute("PRAGMA journal_mode=WAL")
log.execute("PRAGMA synchronous=FULL")
log.execute("CREATE TABLE logData (ID INTEGER PRIMARY KEY AUTOINCREMENT, Value REAL)")
row = 0
while True:
    row += 1
    {statement}
    print("row", row, flush=True)
"""
HONEST = 'log.execute("INSERT INTO logData (Value) VALUES (1)")'
# From the second row on nothing is committed any more, so that a kill at any moment finds it out.
LIAR = 'row == 2 and log.execute("BEGIN"); log.execute("INSERT INTO logData (Value) VALUES (1)")'
SKIPPER = 'row % 3 and log.execute("INSERT INTO logData VALUES (?, 1)", (row,))'
# Reads only, as a playback does. Digits stand in groups of three with a thin space between them.
PLAYER = """
import sqlite3, sys
log = sqlite3.connect("file:" + sys.argv[1] + "?mode=ro", uri=True)
rows = log.execute("SELECT count(*) FROM logData").fetchone()[0]
print("played: Row", str({row}).replace("_", "\\u2009"), "of", rows)
{more}
"""


class KillTest(unittest.TestCase):
    def run_with(self, program, rounds=5, delay="0.1", player=None):
        """The exit code and everything that was printed."""
        with tempfile.TemporaryDirectory() as folder:
            def command(name, text):
                path = pathlib.Path(folder) / name
                path.write_text(text, encoding="utf-8")
                return shlex.join([sys.executable, str(path)]) + " {log}"

            words = io.StringIO()
            play = ["--play", command("player.py", player)] if player else []
            with contextlib.redirect_stdout(words), contextlib.redirect_stderr(words):
                code = kill_test.main(["--command", command("program.py", program), "--rounds", str(rounds),
                                       "--delay", delay] + play)
            return code, words.getvalue()

    def test_a_recorder_that_commits_before_it_speaks_passes(self):
        code, words = self.run_with(RECORDER.format(statement=HONEST))
        self.assertEqual(code, 0, words)
        self.assertIn("5 kills", words)
        self.assertIn(" 0 faults", words)

    def test_a_recorder_that_speaks_before_it_commits_fails(self):
        code, words = self.run_with(RECORDER.format(statement=LIAR))
        self.assertEqual(code, 1, words)
        self.assertIn("acknowledged rows are gone", words)

    def test_a_gap_among_the_rows_fails(self):
        code, words = self.run_with(RECORDER.format(statement=SKIPPER))
        self.assertEqual(code, 1, words)
        self.assertIn("acknowledged rows are gone", words)

    def test_a_recorder_that_loses_comments_fails(self):
        program = RECORDER.replace("row = 0", 'log.execute("CREATE TABLE SummaryReport (Comments)")\nrow = 0')
        comment = 'log.execute("INSERT INTO SummaryReport VALUES (1)"); print("comment", row, flush=True)'
        code, words = self.run_with(program.format(statement=HONEST + "; " + comment))
        self.assertEqual(code, 0, words)
        code, words = self.run_with(program.format(statement=HONEST + "; row % 2 and " + comment))
        self.assertEqual(code, 1, words)
        self.assertIn("acknowledged comments are gone", words)

    def test_a_program_that_ends_by_itself_fails_with_its_words(self):
        code, words = self.run_with("import sys; sys.exit('no such port')", rounds=2, delay="30")
        self.assertEqual(code, 1, words)
        self.assertIn("ended by itself", words)
        self.assertIn("no such port", words)

    def test_a_log_that_is_damaged_fails(self):
        program = "import sys, time\nopen(sys.argv[1], 'wb').write(b'x' * 5000)\nprint('row 1', flush=True)\ntime.sleep(60)"
        code, words = self.run_with(program, rounds=2)
        self.assertEqual(code, 1, words)
        self.assertIn("can't be read", words)

    def test_a_player_that_comes_to_the_last_row_passes(self):
        code, words = self.run_with(RECORDER.format(statement=HONEST), player=PLAYER.format(row="f'{rows:_}'", more=""))
        self.assertEqual(code, 0, words)

    def test_a_player_that_ends_ahead_of_the_last_row_fails(self):
        code, words = self.run_with(RECORDER.format(statement=HONEST), player=PLAYER.format(row="rows - 1", more=""))
        self.assertEqual(code, 1, words)
        self.assertIn("the playback ended with row", words)

    def test_a_player_that_sees_fewer_rows_than_there_are_fails(self):
        code, words = self.run_with(RECORDER.format(statement=HONEST),
                                    player=PLAYER.format(row="(rows := rows - 1)", more=""))
        self.assertEqual(code, 1, words)
        self.assertIn("the playback came to row", words)

    def test_a_player_that_changes_the_log_fails(self):
        code, words = self.run_with(RECORDER.format(statement=HONEST),
                                    player=PLAYER.format(row="rows", more="open(sys.argv[1], 'ab').write(b'x')"))
        self.assertEqual(code, 1, words)
        self.assertIn("the playback has changed the log", words)

    def test_a_player_that_refuses_the_log_fails_with_its_words(self):
        code, words = self.run_with(RECORDER.format(statement=HONEST), player="import sys; sys.exit('no rows at all')")
        self.assertEqual(code, 1, words)
        self.assertIn("no rows at all", words)

    def test_temporary_files_of_a_killed_program_go_with_it(self):
        program = ("import sqlite3, sys, tempfile, time\n"
                   "log = sqlite3.connect(sys.argv[1])\n"
                   "log.execute('CREATE TABLE logData (ID INTEGER PRIMARY KEY)')\n"
                   "log.execute('INSERT INTO logData VALUES (1)')\n"
                   "log.commit()\n"
                   "tempfile.mkdtemp(prefix='left-behind-')\n"
                   "print('row 1', flush=True)\n"
                   "time.sleep(60)\n")
        with tempfile.TemporaryDirectory() as outer, unittest.mock.patch.dict(os.environ, TMPDIR=outer):
            code, words = self.run_with(program, rounds=2)
            self.assertEqual(code, 0, words)
            self.assertEqual(list(pathlib.Path(outer).glob("left-behind-*")), [])

    def test_half_a_line_is_no_acknowledgement(self):
        program = "import sys, time\nprint('row 1', end='', flush=True)\nprint('\\nrow 2', end='', flush=True)\ntime.sleep(60)"
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder) / "program.py"
            path.write_text(program, encoding="utf-8")
            fault, acknowledged, _ = kill_test.run_round(shlex.join([sys.executable, str(path)]), pathlib.Path(folder),
                                                         0.1, False)
        self.assertEqual(acknowledged, 1)
        self.assertEqual(fault, "the log is not there")


if __name__ == "__main__":
    unittest.main()
