"""The real program against the simulated unit on a pseudo-terminal, offscreen, from Connect to Stop."""

import contextlib
import datetime
import os
import pathlib
import re
import sqlite3
import subprocess
import tempfile
import unittest

from desktop import wait_for

DEMO = os.environ["VELK_DEMO"]
EPOCH = datetime.datetime(1899, 12, 30)


class EndToEnd(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="velk-ui-")
        self.addCleanup(self.folder.cleanup)
        self.log = pathlib.Path(self.folder.name) / "job.mdb"
        self.picture = pathlib.Path(self.folder.name) / "velk.png"

    def run_demo(self, seconds, simulator=""):
        return subprocess.run(
            [DEMO, "--seconds", str(seconds), "--log", self.log, "--picture", self.picture, "--simulator", simulator],
            capture_output=True, text=True, timeout=seconds + 60,
            env={**os.environ, "QT_QPA_PLATFORM": "offscreen"})

    def times(self):
        with sqlite3.connect(self.log) as log:
            self.assertEqual(log.execute("PRAGMA integrity_check").fetchone()[0], "ok")
            rows = log.execute("SELECT Date, Time FROM logData ORDER BY ID").fetchall()
        return [EPOCH + datetime.timedelta(days=date + time) for date, time in rows]

    def test_a_job_leaves_one_file_and_a_picture(self):
        done = self.run_demo(9)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertEqual(sorted(p.name for p in pathlib.Path(self.folder.name).iterdir()), ["job.mdb", "velk.png"])
        self.assertGreaterEqual(len(self.times()), 5)
        self.assertIn("rows:    %d\n" % len(self.times()), done.stdout)
        self.assertNotIn("box:", done.stderr)
        self.assertEqual(self.picture.read_bytes()[:4], b"\x89PNG")

    def test_an_unplugged_unit_is_told_once_and_the_recording_goes_on_when_it_is_back(self):
        done = self.run_demo(24, "--hangup-after 6 --return-after 4")
        self.assertEqual(done.returncode, 0, done.stderr)
        boxes = [line for line in done.stderr.splitlines() if line.startswith("box:")]
        self.assertEqual(len(boxes), 1, done.stderr)
        self.assertIn("/unit: ", boxes[0])
        times = self.times()
        gaps = [(after - before).total_seconds() for before, after in zip(times, times[1:])]
        self.assertGreaterEqual(max(gaps), 4, "the time without the unit is a gap in the log")
        self.assertLessEqual(max(gaps), 4 + 3 + 2, "the data go on within 3 s of the unit's return")
        self.assertGreaterEqual(len([t for t in times if t > times[gaps.index(max(gaps))]]), 3)

    def test_a_log_that_another_program_records_plays_up_to_its_last_row(self):
        environment = {**os.environ, "QT_QPA_PLATFORM": "offscreen"}
        recording = subprocess.Popen([DEMO, "--seconds", "14", "--log", self.log, "--picture", self.picture],
                                     stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, env=environment)
        try:
            rows = wait_for(lambda: self.rows_so_far(3), "three rows")
            played = subprocess.run([DEMO, "--play", self.log], capture_output=True, text=True, timeout=60,
                                    env=environment)
            self.assertIsNone(recording.poll(), "the recording still ran")
            self.assertEqual(played.returncode, 0, played.stderr)
            place = re.search(r"^played: Row (\d+) of (\d+)$", played.stdout, re.MULTILINE)
            self.assertIsNotNone(place, played.stdout)
            self.assertEqual(place[1], place[2])
            self.assertGreaterEqual(int(place[1]), rows)
            words, faults = recording.communicate(timeout=60)
        finally:
            recording.kill()
            recording.wait()
        self.assertEqual(recording.returncode, 0, faults)
        self.assertNotIn("box:", faults)
        # The end of the recording wasn't held up: one file is left, with more rows than were played.
        self.assertEqual(sorted(p.name for p in pathlib.Path(self.folder.name).iterdir()), ["job.mdb", "velk.png"])
        self.assertGreater(len(self.times()), int(place[1]))
        self.assertIn("rows:    %d\n" % len(self.times()), words)

    def rows_so_far(self, least):
        """The rows of the log that is being recorded, once there are that many; else nothing."""
        try:
            with contextlib.closing(sqlite3.connect("file:%s?mode=ro" % self.log, uri=True)) as log:
                rows = log.execute("SELECT count(*) FROM logData").fetchone()[0]
        except sqlite3.Error:
            return None
        return rows if rows >= least else None


if __name__ == "__main__":
    unittest.main()
