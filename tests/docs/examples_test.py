"""The documentation's examples: code stands in a host under examples/, commands run."""

import argparse
import os
import pathlib
import re
import subprocess
import sys
import tempfile
import unittest

parser = argparse.ArgumentParser()
parser.add_argument("--source", type=pathlib.Path, required=True)
parser.add_argument("--program", type=pathlib.Path, required=True)
given = parser.parse_args()
PAGES = sorted(given.source.glob("docs/*.md")) + [given.source / "README.md"]
SUFFIXES = {"cpp": ".cpp", "c": ".c", "python": ".py", "cmake": "CMakeLists.txt"}


def blocks(*languages):
    for page in PAGES:
        for found in re.finditer(r"^```(\w+)\n(.*?)^```", page.read_text("utf-8"), re.M | re.S):
            if found[1] in languages:
                yield page.name, found[1], found[2]


def without_indent(text):
    return re.sub(r"^[ \t]+", "", text, flags=re.M).strip()


class Examples(unittest.TestCase):
    def test_code_stands_in_a_host_that_is_built(self):
        sources = [path for path in given.source.glob("examples/**/*") if path.is_file()]
        for page, language, code in blocks(*SUFFIXES):
            with self.subTest(page=page, code=code):
                texts = [without_indent(path.read_text("utf-8")) for path in sources
                         if path.name.endswith(SUFFIXES[language])]
                self.assertTrue(any(without_indent(code) in text for text in texts),
                                "not in any example")

    def test_commands_run(self):
        with tempfile.TemporaryDirectory() as folder:
            path = f"{given.program.parent}:{os.environ['PATH']}"
            environment = dict(os.environ, HOME=folder, PATH=path, DISPLAY="")
            feed = given.source / "data/empoli/gtfs"
            for page, _, commands in blocks("console"):
                for command in re.findall(r"^\$ (.*)", commands, re.M):
                    with self.subTest(page=page, command=command):
                        done = subprocess.run(command.replace("FEED", str(feed)), shell=True,
                                              cwd=folder, env=environment, capture_output=True,
                                              text=True, check=False)
                        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def test_links_lead_somewhere(self):
        for page in PAGES:
            for target in re.findall(r"\]\(([^)#:]+)\)", page.read_text("utf-8")):
                self.assertTrue((page.parent / target).exists(), f"{page.name}: {target}")


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
