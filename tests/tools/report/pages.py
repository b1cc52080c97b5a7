"""Reports and pages for the tests of qbreport html."""
import pathlib
import re
import subprocess

import html5lib

project = pathlib.Path(__file__).parents[3]

# What markup, other systems and eyes may take for something else than text.
hostile = ("\"'><script>alert(1)</script><img src=x onerror=alert(1)>&lt;&#60;]]>--><!--</title></style></li></details>"
           "\u061c\u200e\u200f\u202a\u202e\u2066\u2069\x01\x7f\ufdd0\ufffe\U0001ffff\u00e9\u20ac\U0001f600"
           + "W" * 3_000)


def world(name):
    """The report of a world, as text with characters below 256."""
    text = (project / f"tests/worlds/{name}/expected/report.txt").read_text("utf-8")
    return text.replace("<entry>\t", "15-11-2026 05:03:11\t(1234:5678)\t").replace("<CR>", "\r")


def report_of(text):
    """A report in short: "@" begins an entry, "<" one of an earlier second, "~" one of another run."""
    heads = {"<": "15-11-2026 05:03:10\t(1234:5678)\t", "~": "15-11-2026 05:03:11\t(1234:9)\t"}
    return re.sub("(?m)^[@<~]", lambda mark: heads.get(mark.group(), "15-11-2026 05:03:11\t(1234:5678)\t"), text)


def write_servers(folder):
    """Thirty servers without persons, of which some differ."""
    folder.mkdir()
    sample = re.sub(r"\t\tDIRECTORY ENTRY:\n(?:.*\n){7}\t\tReady.*\n", "", world("sample"))
    wrong = world("notes_ini_as_utf7")
    for number in range(30):
        report = wrong if number % 10 == 3 else sample
        report = report.replace("mail01", f"mail{number:02}")
        if number % 7 == 0:
            report = report.replace("5.0.218", "5.0.217")
        (folder / f"{number:02}-DIAGNOSTIC-.log").write_bytes(report.encode("latin-1"))
    (folder / "30-DIAGNOSTIC-.log").write_text("no report")


def run(program, *words, status=0, given=b""):
    result = subprocess.run([program, *map(str, words)], input=given, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
                            check=False)
    assert result.returncode == status, (words, result.returncode)
    return result.stdout.decode("utf-8")


def parsed(page):
    """The tree of a page that has no error."""
    parser = html5lib.HTMLParser(strict=True, namespaceHTMLElements=False)
    return parser.parse(page)


def text_of(element):
    return "".join(element.itertext())


def words_of(element):
    return " ".join(" ".join(element.itertext()).split())
