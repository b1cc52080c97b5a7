#!/usr/bin/python3
"""The page of qbreport html is sound HTML that loads nothing, tells what check and json tell, and
whatever a report holds stays text.

page_test.py <qbreport>
"""
import json
import pathlib
import re
import sys
import tempfile

from pages import hostile, parsed, project, run, text_of, world, write_servers

program = sys.argv[1]


def shape(element):
    """The tree without texts and without numbers of lines that texts do not change."""
    return element.tag, sorted(element.attrib.items()), [shape(child) for child in element]


def check_structure(page):
    tree = parsed(page)
    ids = [element.get("id") for element in tree.iter() if element.get("id")]
    assert len(ids) == len(set(ids)), "an id stands twice"
    assert all(link.get("href")[1:] in ids for link in tree.iter("a")), "a link leads nowhere"
    levels = [int(element.tag[1]) for element in tree.iter() if re.fullmatch("h[1-6]", str(element.tag))]
    assert levels[0] == 1 and all(next <= level + 1 for level, next in zip(levels, levels[1:])), levels
    assert {"script", "link", "img", "base", "form", "iframe", "object"}.isdisjoint(e.tag for e in tree.iter())
    assert not re.search(r"url\(|@import|https?:|style=|\son[a-z]+=", page.split("</style>")[0])
    head = [element.get("http-equiv", element.tag) for element in tree.find("head")]
    assert head.index("Content-Security-Policy") < head.index("style")
    assert all(cell.get("scope") in ("row", "col") for cell in tree.iter("th"))
    return tree


def check_report(file, article):
    """What an article tells of the report in a file, beside what json tells."""
    report = json.loads(run(program, "json", file))
    shown = [(finding.get("data-code"), finding.get("data-severity"), text_of(finding.find("code")),
              finding.find("a").get("href")) for finding in article.iter("li") if finding.get("data-code")]
    told = [(finding["code"], finding["severity"], finding["text"], f"#r1-{finding['line']}")
            for finding in report["findings"]]
    assert sorted(shown) == sorted(told), file
    severities = [finding[1] for finding in shown]
    assert severities == sorted(severities, key=["error", "warning", "note"].index), "the worst stand first"
    text = text_of(article)
    assert all(finding[word] in text for finding in report["findings"] for word in ("sentence", "advice"))
    assert ("No findings" in text) == (not told)
    assert ("No errors or warnings" in text) == (set(severities) == {"note"})
    sections = [section["name"] for run in report["runs"] for section in run["sections"]]
    assert [section.get("data-section") for section in article.iter("details")] == sections
    lines = file.read_bytes().split(b"\n")
    for element in article.iter("li"):
        if element.get("id"):
            line = lines[int(element.get("id").split("-")[1]) - 1].rstrip(b"\r")
            assert not line.isascii() or text_of(element)[:-1] == line.decode(), element.get("id")


def check_hostile(folder):
    """The values of a report do not change the tree, and each of them shows."""
    harmless, other = folder / "harmless", folder / "other"
    sample = world("sample")
    harmless.write_bytes(sample.encode("latin-1"))
    other.write_bytes(sample.replace("Nordholm", hostile).encode("utf-8", "surrogatepass"))
    trees = [check_structure(run(program, "html", "--title", file.name, file)) for file in (harmless, other)]
    assert shape(trees[0]) == shape(trees[1])
    escaped = hostile
    for character in "\x01\x7f":
        escaped = escaped.replace(character, f"\\x{ord(character):02X}")
    for character in "\u202e\u2066\ufffe":
        escaped = escaped.replace(character, f"\\u{ord(character):04X}")
    assert escaped in text_of(trees[1].find(".//article"))
    assert parsed(run(program, "html", "--title", "</title>&", harmless)).find(".//h1").text == "</title>&"


def check_overview(folder):
    page = run(program, "html", folder, status=2)
    rows = list(check_structure(page).find(".//table[@class='wide overview']/tbody"))
    names = [re.search(r"\d\d", text_of(row[0])).group() for row in rows]
    assert names == ["03", "13", "23"] + [f"{n:02}" for n in range(30) if n % 10 != 3] + ["30"], names
    assert sum("differs from most" in text_of(row) for row in rows) == 5
    assert "it holds no entry of a report" in text_of(rows[-1])
    assert str(folder) not in page


def check_limits(folder):
    file = folder / "long"
    event = "15-11-2026 05:03:11\t(1234:5678)\t2026-{:02}-{:02} 03:00 [Update] text\r\n"
    events = "".join(event.format(n % 3 + 1, n % 28 + 1) for n in range(120_000))
    lines = world("sample").splitlines(keepends=True)
    file.write_bytes("".join(lines[:-1] + [events] + lines[-1:]).encode("latin-1"))
    page = run(program, "html", file)
    assert max(table.count("<tr>") for table in page.split("<table")) == 1001
    assert page.count("<li id=r1-") == 100_000
    assert re.search(r"Events: 12\d{4}", page) and re.search(r"11\d{4} more are not shown", page)
    assert ", of the last 60 days" in page and re.search(r"20\d{3} of 12\d{4} lines are not shown", page)


def check_contrast():
    """Of each colour of text upon each behind it, in both schemes, at least 4.5 to 1."""
    def luminance(colour):
        parts = (int(colour[at : at + 2], 16) / 255 for at in (1, 3, 5))
        parts = [part / 12.92 if part <= 0.03928 else ((part + 0.055) / 1.055) ** 2.4 for part in parts]
        return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2]

    style = (project / "tools/report/page/page.css").read_text()
    schemes = re.findall(r":root \{([^}]*--line[^}]*)\}", style)
    assert len(schemes) == 2
    for scheme in schemes:
        colours = {name: luminance(value) for name, value in re.findall(r"--(\w+): (#\w+);", scheme)}
        for text in colours.keys() - {"back", "raised", "line"}:
            for behind in ("back", "raised"):
                light, dark = sorted((colours[text], colours[behind]), reverse=True)
                assert (light + 0.05) / (dark + 0.05) >= 4.5, (text, behind)


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    write_servers(folder / "servers")
    check_overview(folder / "servers")
    check_hostile(folder)
    check_limits(folder)
    for file in sorted((project / "tests/worlds").glob("*/expected/report.txt")):
        report = folder / "report"
        report.write_bytes(world(file.parts[-3]).encode("latin-1"))
        check_report(report, check_structure(run(program, "html", report)).find(".//article"))
    report.write_text("")
    assert run(program, "html", report, status=2) == ""
check_contrast()
