"""A live survey in the real program, offscreen, while a simulated unit tells of pipe that is run into a well and pulled
out: its rows are those that the log gives, to the end of the job or to a kill in the middle of it."""

import contextlib
import math
import os
import pathlib
import random
import re
import signal
import sqlite3
import subprocess
import tempfile
import threading
import unittest

DEMO = os.environ["VELK_DEMO"]
ENVIRONMENT = {**os.environ, "QT_QPA_PLATFORM": "offscreen"}
INTERVAL = 25
DEPTH = 1000
PI = 3.14159265358979
KILLS = 8


def dog_leg(previous, present):
    """Degrees in 100 feet, by the change of inclination and what of the turn counts."""
    if previous[0] == present[0]:
        return 0
    bend = (PI / 2 - present[1] * PI / 180) - (PI / 2 - previous[1] * PI / 180)
    turn = present[2] * PI / 180 - previous[2] * PI / 180
    if bend == 0:
        return 0
    radius = abs(present[0] - previous[0]) / math.sqrt((turn * (1 - math.cos(bend))) ** 2 + bend**2)
    return 0 if radius > 1e12 else 18000 / (radius * PI)


def survey_of(rows):
    """The survey that rows of a log give, from the surface on: means of depth, inclination and azimuth, due wherever the
    depth is more than the interval off the last of them."""
    survey = []
    count, mean, previous = 0, (0, 0, 0), (0, 0, 0)
    for row in rows:
        values = (row["Depth"], row["Inclination"], row["Azimuth"])
        due = abs(values[0] - previous[0]) > INTERVAL
        mean = tuple((count * before + value) / (count + 1) for before, value in zip(mean, values))
        count = 0 if due else count + 1
        if due and values[0] > 0 and row["Speed"] != 0:
            seconds = math.floor(row["Time"] * 86400 + 0.001) / 86400
            survey.append((row["Date"], seconds) + mean + (dog_leg(previous, mean), row["RPM"]))
            previous = mean
    return survey


def inclination_of_hole(depth):
    return 60 * min(max((depth / DEPTH - 0.2) / 0.5, 0), 1)


class Log:
    """What a log holds once its program has ended."""

    def __init__(self, path):
        with contextlib.closing(sqlite3.connect(path)) as log:
            self.integrity = log.execute("PRAGMA integrity_check").fetchone()[0]
            log.row_factory = sqlite3.Row
            self.rows = log.execute("SELECT * FROM logData ORDER BY ID").fetchall()
            tables = [row[0] for row in log.execute("SELECT name FROM sqlite_master WHERE type = 'table'")]
            self.survey = None
            if "surveyData" in tables:
                self.survey = [tuple(row) for row in log.execute(
                    "SELECT Date, Time, Depth, Inclination, Azimuth, DogLeg, RPM FROM surveyData ORDER BY ID")]

    def surveyed(self, behind, held_back):
        """What the survey should be, the first row being the one that was the last when it began; `held_back` rows at
        the end have not been taken yet."""
        return survey_of(self.rows[max(behind - 1, 0):len(self.rows) - held_back])


class LiveSurvey(unittest.TestCase):
    def setUp(self):
        self.folder = tempfile.TemporaryDirectory(prefix="velk-survey-")
        self.addCleanup(self.folder.cleanup)
        self.log = pathlib.Path(self.folder.name) / "job.mdb"

    def assert_same_survey(self, survey, expected):
        self.assertEqual(len(survey), len(expected))
        for row, wanted in zip(survey, expected):
            self.assertEqual(row[0], wanted[0])
            # Where the machine is busy two rows may come ahead of one look at the last of them.
            self.assertAlmostEqual(row[1], wanted[1], delta=1.5 / 86400)
            for value, number in zip(row[2:], wanted[2:]):
                self.assertAlmostEqual(value, number, delta=1e-9 * max(1, abs(number)))

    def test_a_trip_in_and_out_is_surveyed_as_its_log_tells(self):
        picture = pathlib.Path(self.folder.name) / "velk.png"
        # 6 s a way: within 19 s the pipe is down, out, and down again.
        done = subprocess.run([DEMO, "--seconds", "19", "--survey", str(INTERVAL), "--log", self.log, "--picture", picture,
                               "--simulator", "--trip-time 6 --interval 0.05 --baud 0"],
                              capture_output=True, text=True, timeout=90, env=ENVIRONMENT)
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertNotIn("box:", done.stderr)
        log = Log(self.log)
        self.assertEqual(log.integrity, "ok")
        behind = int(re.search(r"^survey behind row (\d+)$", done.stdout, re.MULTILINE)[1])
        self.assert_same_survey(log.survey, log.surveyed(behind, 1))
        depths = [row[2] for row in log.survey]
        runs_in = [row for before, row in zip(depths, log.survey[1:]) if row[2] > before]
        pulls_out = [row for before, row in zip(depths, log.survey[1:]) if row[2] < before]
        self.assertGreaterEqual(len(runs_in), 25)
        self.assertGreaterEqual(len(pulls_out), 25)
        self.assertTrue(all(row[6] == 40 for row in runs_in[1:20]), "turning on the way in")
        # A mean of means lies on the hole but at its two bends.
        for row in log.survey:
            self.assertAlmostEqual(row[3], inclination_of_hole(row[2]), delta=1.5)
        # What was shown at the end is as deep as the survey was five seconds earlier: it has been at the bottom.
        stations, deepest = re.search(r"^path of (\d+) stations down to (\d+)$", done.stdout, re.MULTILINE).groups()
        self.assertAlmostEqual(int(deepest), max(depths), delta=1)
        self.assertGreater(int(stations), len(log.survey) / 2)
        self.assertEqual(pathlib.Path(str(picture) + ".well.png").read_bytes()[:4], b"\x89PNG")

    def test_a_kill_leaves_every_row_and_the_whole_survey(self):
        dice = random.Random(18)
        surveyed = 0
        for number in range(KILLS):
            with self.subTest(kill=number), tempfile.TemporaryDirectory(prefix="velk-kill-") as folder:
                surveyed += self.kill_and_look(pathlib.Path(folder), dice.uniform(0.05, 1.5))
        self.assertGreater(surveyed, 0, "no kill came behind a row of the survey")

    def kill_and_look(self, folder, delay):
        """One start, one kill. Gives the rows of the survey."""
        path = folder / "killed.mdb"
        program = subprocess.Popen([DEMO, "--record-only", path, "--survey", str(INTERVAL), "--simulator",
                                    "--trip-time 10 --interval 0.05"],
                                   stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, start_new_session=True, text=True,
                                   env={**ENVIRONMENT, "TMPDIR": str(folder)})
        # Should the survey never begin, the reading ends with the program.
        guard = threading.Timer(60, lambda: os.killpg(program.pid, signal.SIGKILL))
        guard.start()
        words = ""
        try:
            for line in program.stdout:
                words += line
                if line.startswith("survey behind row"):
                    threading.Timer(delay, lambda: os.killpg(program.pid, signal.SIGKILL)).start()
        finally:
            guard.cancel()
            program.wait()
            program.stdout.close()
        behind = int(re.search(r"^survey behind row (\d+)$", words, re.MULTILINE)[1])
        acknowledged = max(int(row) for row in re.findall(r"^row (\d+)$", words, re.MULTILINE))
        log = Log(path)
        self.assertEqual(log.integrity, "ok")
        self.assertGreaterEqual(len(log.rows), acknowledged)
        self.assertEqual([row["ID"] for row in log.rows], list(range(1, len(log.rows) + 1)))
        # A row of the log is taken when the next sample comes.
        whole = log.surveyed(behind, 0)
        wanted = whole if len(log.survey) == len(whole) else log.surveyed(behind, 1)
        self.assert_same_survey(log.survey, wanted)
        return len(log.survey)


if __name__ == "__main__":
    unittest.main()
