#!/usr/bin/python3
"""Pages of qbreport html in a browser: as they are parsed, at three widths, and in print.

browser_test.py <qbreport>
"""
import pathlib
import re
import subprocess
import sys
import tempfile

from pages import hostile, parsed, run, text_of, world, write_servers

program = sys.argv[1]
narrow, middle, wide = 320, 768, 2560


def browse(page, *words):
    command = ["chromium-headless-shell", "--no-sandbox", "--disable-gpu", "--hide-scrollbars", *words, page.as_uri()]
    return subprocess.run(command, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, check=True, timeout=60).stdout


def check_parsing(page):
    """The browser's tree has the text of the page's own."""
    tree = parsed(browse(page, "--dump-dom").decode("utf-8"))
    assert text_of(tree).split() == text_of(parsed(page.read_text("utf-8"))).split(), page


def check_widths(page):
    """With every section open nothing is wider than the window. The page itself lets no script run."""
    text = page.read_text("utf-8")
    measured = page.with_suffix(".measured.html")
    text = re.sub("<meta http-equiv[^>]*>", "", text).replace("<details ", "<details open ")
    measured.write_text(text + "<script>document.title = [innerWidth, document.documentElement.scrollWidth]</script>",
                        "utf-8")
    for width in (narrow, middle, wide):
        tree = browse(measured, f"--window-size={width},1000", "--dump-dom").decode("utf-8")
        title = re.search("<title>(.*?)</title>", tree).group(1)
        assert title == f"{width},{width}", (page, title)


def check_print(page):
    """Headings and what tables hold is printed, of closed sections too. Long words may be broken."""
    pdf = page.with_suffix(".pdf")
    browse(page, f"--print-to-pdf={pdf}")
    printed = subprocess.run(["pdftotext", "-raw", pdf, "-"], stdout=subprocess.PIPE, check=True).stdout.decode("utf-8")
    printed = set(re.split(r"\W+", printed))
    for element in parsed(page.read_text("utf-8")).iter():
        if element.tag in ("h2", "h4", "caption", "td"):
            words = {word for word in re.split(r"\W+", text_of(element)) if len(word) < 10}
            assert words <= printed, (page, words - printed)


with tempfile.TemporaryDirectory() as name:
    folder = pathlib.Path(name)
    write_servers(folder / "servers")
    (folder / "sample").write_bytes(world("sample").encode("latin-1"))
    (folder / "wrong").write_bytes(world("notes_ini_as_utf7").encode("latin-1"))
    attack = world("sample").replace("Nordholm", hostile).replace("werkzeug24", "W" * 1_000_000)
    (folder / "hostile").write_bytes(attack.encode("utf-8", "surrogatepass"))
    for report in ("sample", "wrong", "servers", "hostile"):
        shown = folder / f"{report}.html"
        shown.write_text(run(program, "html", folder / report, status=2 if report == "servers" else 0), "utf-8")
        check_parsing(shown)
        check_widths(shown)
        if report != "hostile":
            check_print(shown)
