"""The verdict of scripts/compare, with programs that stand in for korvane-batch: each single change
of a result makes it fail, and what is the same or accepted passes."""

import pathlib
import shutil
import subprocess
import sys
import tempfile
import unittest

SCRIPT = pathlib.Path(__file__).resolve().parents[2] / "scripts/compare"

# Writes fixed results for each input. `change` is made in those of the second input by the second
# method alone.
PROGRAM = """#!%s
import pathlib, sys
arguments = sys.argv[1:]
folder = pathlib.Path(arguments[arguments.index("--output-dir") + 1])
fixed = arguments[arguments.index("--wedge") + 1] == "fixed"
status = 1
for path in [a for a in arguments if a.endswith(".dat")]:
    stem = pathlib.Path(path).stem
    results = {
        ".out": "MOMENT  1.50\\nSHEAR  2.50\\n",
        ".json": '{"schema": 1, "version": "1", "status": "solved", "tension": false,'
                 ' "levels": [{"rows": [{"elev": 1.0, "shear": 0.1}, {"elev": 2.5, "shear": 0.0}]}]}',
        "-system.svg": "<svg>1</svg>",
        "-input.svg": "<svg>2</svg>",
    }
    messages = [path + ": [KORVANE] A BOX", path + ": [KORVANE] ANOTHER"]
    if fixed and stem.endswith("b"):
        %s
    for end, text in results.items():
        (folder / (stem + end)).write_text(text)
    for line in messages:
        print(line, file=sys.stderr)
sys.exit(status)
"""


def replaced(name, old, new):
    """A change of the text of one result."""
    return "results[%r] = results[%r].replace(%r, %r)" % (name, name, old, new)


class CompareTest(unittest.TestCase):
    def setUp(self):
        temporary = tempfile.TemporaryDirectory()
        self.addCleanup(temporary.cleanup)
        self.folder = pathlib.Path(temporary.name)
        (self.folder / "inputs").mkdir()
        for name in "abc":
            (self.folder / "inputs" / (name + ".dat")).write_text("'" + name + "\n")

    def program(self, name, change):
        path = self.folder / name
        path.write_text(PROGRAM % (sys.executable, change))
        path.chmod(0o755)
        return str(path)

    def compare(self, change, *options, base="pass"):
        """Exit status and the lines of the output."""
        shutil.rmtree(self.folder / "kept", ignore_errors=True)
        command = [sys.executable, str(SCRIPT), self.program("base", base), self.program("new", change),
                   "0", "--no-repository", "--also", str(self.folder / "inputs"), "--jobs", "1",
                   "--keep", str(self.folder / "kept"), *options]
        done = subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.PIPE, check=False)
        self.assertEqual(done.stderr, b"")
        return done.returncode, done.stdout.decode().splitlines()

    def assert_passes(self, change, *options):
        status, lines = self.compare(change, *options)
        self.assertEqual((status, lines[-1]), (0, "3 inputs, 0 differences"), lines)
        self.assertFalse((self.folder / "kept").exists())
        return lines

    def assert_differs(self, kind, change, *options, **base):
        """One difference, of this kind, in the input b by the fixed surface method."""
        status, lines = self.compare(change, *options, **base)
        self.assertEqual((status, lines[-1]), (1, "3 inputs, 1 differences"), lines)
        self.assertIn(kind + ": 1", lines)
        self.assertTrue(any("fixed file-00002-b" in line or "fixed file-00001-a to file-00003-c" in line
                            for line in lines), lines)
        return lines

    def test_equal_results_pass(self):
        self.assertIn("BASE: 6 solved", self.assert_passes("pass"))

    def test_a_byte_of_a_report(self):
        lines = self.assert_differs("report", replaced(".out", "2.50", "2.51"))
        self.assertIn("        base 'SHEAR  2.50'", lines)
        self.assertIn("        new  'SHEAR  2.51'", lines)

    def test_the_files_that_differ_are_kept(self):
        self.assert_differs("report", replaced(".out", "2.50", "2.51"))
        kept = self.folder / "kept"
        self.assertEqual([path.name for path in (kept / "inputs").glob("*.dat")], ["file-00002-b.dat"])
        for side, shear in (("base", "2.50"), ("new", "2.51")):
            reports = list((kept / side).rglob("*.out"))
            self.assertEqual([path.name for path in reports], ["file-00002-b.out"])
            self.assertIn(shear, reports[0].read_text())

    def test_trailing_blank_of_a_report(self):
        self.assert_differs("report", "results['.out'] += ' '")

    def test_a_byte_of_a_figure(self):
        self.assert_differs("SVG", replaced("-system.svg", "1", "3"))

    def test_a_figure_that_is_gone_or_new(self):
        self.assert_differs("set of files", "del results['-input.svg']")
        self.assert_differs("set of files", "results['-shear.svg'] = ''")

    def test_a_report_that_is_gone(self):
        self.assert_differs("set of files", "del results['.out']")

    def test_base_without_a_report_proves_nothing(self):
        change = "del results['.out']"
        self.assert_differs("no report from BASE", change, base=change)

    def test_a_number_of_the_json_file(self):
        lines = self.assert_differs("JSON value", replaced(".json", "0.1}", "0.10000000000000002}"))
        self.assertTrue(any("levels.*.rows.*.shear: 0.1, 0.10000000000000002" in line for line in lines))

    def test_the_sign_of_zero(self):
        self.assert_differs("JSON value", replaced(".json", "0.0}", "-0.0}"))

    def test_a_truth_is_no_number(self):
        self.assert_differs("JSON value", replaced(".json", "false", "0"))

    def test_an_entry_of_a_list_that_is_gone(self):
        self.assert_differs("JSON value", replaced(".json", ', {"elev": 2.5, "shear": 0.0}', ""))

    def test_a_member_that_is_gone(self):
        self.assert_differs("JSON member missing", replaced(".json", '"elev": 1.0, ', ""))

    def test_a_broken_json_file(self):
        self.assert_differs("JSON unreadable", replaced(".json", "]}]}", "]}]"))

    def test_the_status_of_an_input(self):
        self.assert_differs("status", replaced(".json", "solved", "failed"))

    def test_a_line_of_standard_error(self):
        self.assert_differs("standard error", "messages[1] += '.'")
        self.assert_differs("standard error", "del messages[0]")
        self.assert_differs("standard error", "messages.reverse()")

    def test_the_exit_status_of_a_run(self):
        self.assert_differs("exit status", "status = 70")

    def test_standard_output(self):
        self.assert_differs("standard output", "print('more')")

    def test_a_new_member_is_accepted_and_told_once(self):
        lines = self.assert_passes(replaced(".json", '"elev"', '"depth": 3, "elev"'))
        self.assertEqual([line for line in lines if "depth" in line],
                         ["only in NEW's JSON: levels.*.rows.*.depth"])

    def test_the_same_values_written_otherwise_pass(self):
        self.assert_passes(replaced(".json", '"elev": 1.0, "shear": 0.1', '"shear":1e-1,"elev":1'))

    def test_schema_and_version_are_ignored(self):
        self.assert_passes("results['.json'] = results['.json'].replace('1,', '2,').replace('\"1\"', '\"2\"')")

    def test_ignored_paths(self):
        change = replaced(".json", "0.1}", "0.2}")
        for path in ("levels.*.rows.*.shear", "levels[*].rows[0].shear", "levels"):
            self.assert_passes(change, "--ignore", path)
        for path in ("levels.*.rows.*.elev", "levels.*.rows.1.shear", "shear"):
            self.assert_differs("JSON value", change, "--ignore", path)

    def test_a_difference_in_a_chunk_of_its_own(self):
        self.assert_differs("report", replaced(".out", "2.50", "2.51"), "--chunk", "1")


if __name__ == "__main__":
    unittest.main()
