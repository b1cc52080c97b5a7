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

from pages import hostile, parsed, project, report_of, run, text_of, words_of, world, write_servers

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
    assert head.index("Content-Security-Policy") < head.index("style") and "default-src 'none'" in page
    assert all(cell.get("scope") in ("row", "col") for cell in tree.iter("th"))
    labels = re.findall(r'\.(\w+) td:nth-child\((\d+)\)::before { content: "(.*?): "', page)
    for table in tree.iterfind(".//table[@class]"):  # narrow windows show a label in place of the heading
        headings = enumerate((text_of(cell) for cell in table.iterfind(".//th[@scope='col']")), 1)
        shown = [label[1:] for label in labels if label[0] in table.get("class")]
        assert shown == [(str(number), heading) for number, heading in headings][1:]
    return tree


def check_report(file, *words):
    """What an article tells of the report in a file, beside what json tells."""
    report = json.loads(run(program, "json", file, *words))
    article = check_structure(run(program, "html", file, *words)).find(".//article")
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
    wrong = {finding["section"] for finding in report["findings"] if finding["severity"] != "note"}
    assert {section.get("data-section") for section in article.iterfind(".//details[@open]")} == wrong
    for bars in article.iterfind(".//ul[@class='bars']"):
        numbers = [int(words_of(bar).split()[-1]) for bar in bars]
        widths = [int(part.get("width")) for part in bars.iter() if part.get("width")]
        assert widths == [1000 * number // max(numbers + [1]) for number in numbers], (numbers, widths)
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
    for character in "\u061c\u200e\u200f\u202a\u202e\u2066\u2069\ufdd0\ufffe\U0001ffff":
        escaped = escaped.replace(character, f"\\u{ord(character):0{6 if ord(character) > 0xFFFF else 4}X}")
    assert escaped in text_of(trees[1].find(".//article"))
    assert parsed(run(program, "html", "--title", "</title>\t&", harmless)).find(".//h1").text == "</title>\\x09&"


def check_words(folder):
    file = folder / "report"
    for row in (project / "tests/tools/report/pages.txt").read_text("utf-8").splitlines()[1:]:
        text, words = row.split("\t")
        file.write_text(report_of(text.replace("\\n", "\n").replace("\\t", "\t")), "utf-8")
        shown = words_of(parsed(run(program, "html", file)).find(".//article"))
        assert all(part in shown for part in words.split(" | ")), (words, shown)


def check_servers(folder):
    """Rows of the overview, where servers have several reports, no name, and little that is usual."""
    start = ("@STARTING LOG\n@SYSTEM ENVIRONMENT:\n\t\t\t\t\tServerName={}\n"
             "@SERVERPROFILE:\n\t\t\t\t\tDomino version({})\n\t\t\t\t\tVRX version({})\n")
    texts = [start.format("X", "e", "").replace("@", "<") + "@FILE CHECK:\n\t\t\t\t\tx was not found.\n",
             start.format("x", "d", "o"),
             start.format("n", "d", "v") + "@Testing Get VRX events:\n" + "@Now [Insert Error] x\n" * 2,
             start.format("w", "d", "v") + "\t\t\t\t\tCore version(c)\n@Could not count users: x\n"
             "@\n\n\tQUELLBRIGHT CONFIGURATION\n\tConfigurationName...: a\n"
             "@Testing Get VRX events:\n@Now [Insert Error] x\n",
             start.format("", "e", ""), start.format("", "", "")]
    texts = [report_of(text + "@Done Testing Get VRX events.\n") for text in texts] + ["none"]
    files = [folder / f"u{number}" for number in range(len(texts))]
    for file, text in zip(files, texts):
        file.write_text(text)
    files[5] = "-"
    tree = parsed(run(program, "html", *files, status=2, given=texts[5].encode()))
    assert [words_of(row) for row in tree.find(".//table[@class='wide overview']/tbody")] == [
        "w 2026-11-15 05:03:11 d c v a 0 1 1 users (1), event (1)", "n 2026-11-15 05:03:11 d v 0 0 2 event (2)",
        "standard input 2026-11-15 05:03:11 0 0 0", "u4 2026-11-15 05:03:11 e differs from most 0 0 0",
        "x 2026-11-15 05:03:11 d o 0 0 0", "X 2026-11-15 05:03:10 e differs from most 1 0 0 file-missing (1)",
        "u6 ✗ not read : it holds no entry of a report"]
    assert "5 servers in 6 reports, and 1 report could not be read" in words_of(tree)
    page = run(program, "html", *files[:1] * 700, *files[6:] * 600, status=2)
    assert page.split("</table>")[0].count("<tr>") == 1001 and page.count("not read</span>") == 500
    assert "<p>300 more are not shown" in page


def check_overview(folder):
    page = run(program, "html", folder, status=2)
    run(program, "html", folder, "-o", folder.parent / "page", status=2)
    assert (folder.parent / "page").read_bytes() == page.encode("utf-8")
    rows = list(check_structure(page).find(".//table[@class='wide overview']/tbody"))
    names = [re.search(r"\d\d", text_of(row[0])).group() for row in rows]
    assert names == ["03", "13", "23"] + [f"{n:02}" for n in range(30) if n % 10 != 3] + ["30"], names
    assert sum("differs from most" in text_of(row) for row in rows) == 5
    assert "it holds no entry of a report" in text_of(rows[-1])
    assert str(folder) not in page


def check_limits(folder):
    file, many = folder / "long", folder / "many"
    event = "15-11-2026 05:03:11\t(1234:5678)\t2026-{:02}-{:02} 03:00 [Update] text\r\n"
    events = "".join(event.format(n % 3 + 1, n % 28 + 1) for n in range(120_000))
    lines = world("sample").splitlines(keepends=True)
    lines = lines[:-1] + events.splitlines(keepends=True) + [report_of("@Now [Insert Error] x\n")] * 1_100 + lines[-1:]
    file.write_bytes("".join(lines).encode("latin-1"))
    update = "\t\t\t\t\ts\n\t\t\t\t\t\tDate:\t\t{}-01-01\n\t\t\t\t\t\tItem:\t\ti\n"
    text = report_of("@Could not count users: x\n@y\n" * 1_002 + "@IMPORTING:\n\t\tIMPORT RESULT:1\n\t\tCreated...: 0\n"
                     "\t\tMESSAGES:\n" + "\t\t\tFilepath not set.\n" * 1_002 + "@INSTALLED UPDATES:\n" +
                     "".join(update.format(3001 - n) for n in range(1_002)))
    many.write_text(text + "".join(f"15-11-2026 05:03:11\t({n}:1)\tx\n" for n in range(1_001)))
    page = run(program, "html", file, many)
    assert max(table.count("<tr>") for table in page.split("<table")) == 1001
    assert page.count("<li id=r") == 100_000 and page.count("<li id=r2-") == many.read_text().count("\n")
    assert f"<li id=r1-{len(lines) - 1}>" in page and f"<li id=r1-{len(lines) - 1_102} value=" in page
    assert re.search(r"Events: 12\d{4}", page) and re.search(r"12\d{4} more are not shown", page)
    assert ", of the last 60 days; 34289 events of 26 days before are not shown" in page
    left = len(lines) - page.count("<li id=r1-")
    assert f"<p>{left} of {len(lines)} lines are not shown" in page and page.count("id=overview") == 1
    article = page.split("<article id=r2>")[1].split("</article>")[0]
    for text in ("<details data-section=filtered-users", "<li data-code=users", "<li>Filepath"):
        assert article.count(text) == 1000, text
    shown = " ".join(re.sub("<[^>]*>", " ", article).split())
    for expected in ("Could not count users: x 2 more are not shown.", "set. 2 more are not shown. Installed",
                     "Server 2000-01-01 i s", "2999-01-01 i s 2 more are not shown.",
                     "Filtered users: 2 more of these sections are not shown.", "2 more runs are not shown. Report"):
        assert expected in shown, expected


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
    check_words(folder)
    check_servers(folder)
    check_hostile(folder)
    check_limits(folder)
    report = folder / "report"
    for file in sorted((project / "tests/worlds").glob("*/expected/report.txt")):
        report.write_bytes(world(file.parts[-3]).encode("latin-1"))
        check_report(report)
    report.write_text(report_of("@FILE CHECK:\n\t\t\t\t\tqbse.dll was not found.\n"))
    check_report(report, "--offline")
    run(program, "check", "--offline", "--fail-on", "error", report, status=0)
    report.write_text("")
    assert run(program, "html", report, status=2) == ""
check_contrast()
