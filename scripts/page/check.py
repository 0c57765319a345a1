#!/usr/bin/env python3
"""Looks at pages in a real browser: check.py [--pictures FOLDER] AXE PAGE… prints what is wrong with them, and leaves
pictures of all modes beside them. AXE is the file axe.min.js of axe-core."""

import argparse
import itertools
import json
import shutil
import subprocess
import sys
from pathlib import Path

from browser import Browser

WIDTHS = (360, 1280, 1920)
PAPERS = {"a4": (210, 297), "letter": (215.9, 279.4)}  # millimetres
THEMES = {"light": False, "dark": True}
MOST = 500_000  # bytes of a page

# What the documents show: the page, the width and theme, how far down, and the size of the picture.
SHOWN = {
    "report-year": ("year", 1280, "light", 2280, 0.6),
    "report-year-dark": ("year", 360, "dark", 1500, 0.75),
    "report-recorded": ("recorded", 1280, "dark", 1700, 0.5),
}

AXE = """axe.run(document, {resultTypes: ['violations']}).then(found => found.violations.map(rule =>
    `${rule.id}: ${rule.help}: ` + rule.nodes.slice(0, 3).map(node => node.html.slice(0, 160)).join(' ')))"""
WIDER = """document.documentElement.scrollWidth <= document.documentElement.clientWidth ? [] :
    [...document.querySelectorAll('body *')].filter(each => !each.closest('.scroll') &&
    each.getBoundingClientRect().right > document.documentElement.clientWidth + 1).map(each => each.outerHTML.slice(0, 120))"""
# Text in pictures, whose background axe does not know: each on the shape that was drawn last before it at its middle.
FAINT = """(() => {
    const parts = colour => colour.match(/[\\d.]+/g).slice(0, 3).map(Number);
    const light = colour => parts(colour).map(v => v / 255).map(v => v <= 0.04045 ? v / 12.92 : ((v + 0.055) / 1.055) ** 2.4)
        .reduce((sum, v, i) => sum + v * [0.2126, 0.7152, 0.0722][i], 0);
    const paper = element => { for (; element; element = element.parentElement) {
        const colour = getComputedStyle(element).backgroundColor;
        if (!/, 0\\)$/.test(colour)) return colour; } return 'rgb(255, 255, 255)'; };
    return [...document.querySelectorAll('svg text')].filter(text => getComputedStyle(text).visibility === 'visible').map(text => {
        const box = text.getBoundingClientRect(), x = box.x + box.width / 2, y = box.y + box.height / 2;
        const under = [...text.ownerSVGElement.querySelectorAll('rect, path')].filter(shape =>
            shape.compareDocumentPosition(text) & Node.DOCUMENT_POSITION_FOLLOWING).reverse().find(shape => {
            const on = shape.getBoundingClientRect();
            return on.left <= x && x <= on.right && on.top <= y && y <= on.bottom && getComputedStyle(shape).fill !== 'none'; });
        const [a, b] = [light(getComputedStyle(text).fill), light(under ? getComputedStyle(under).fill : paper(text))];
        return [(Math.max(a, b) + 0.05) / (Math.min(a, b) + 0.05), text.outerHTML]; })
        .filter(([contrast]) => contrast < 4.5).slice(0, 3).map(([contrast, text]) => `contrast ${contrast.toFixed(2)}: ${text}`);
})()"""


def problems(browser, axe, url, in_tables):
    """What is wrong with a page as it is shown now; axe takes long over long tables, which look alike in all modes."""
    found = [f"fetches {other}" for other in browser.requests if other != url]
    found += [f"the browser says: {text}" for text in browser.complaints]
    browser.evaluate(axe)
    for is_open in (False, True):
        browser.evaluate(f"document.querySelectorAll('details').forEach(each => each.open = {json.dumps(is_open)})")
        found += [f"wider than its window: {each}" for each in browser.evaluate(WIDER)]
        if in_tables or not is_open:
            found += browser.evaluate(AXE) + browser.evaluate(FAINT)
    return found


def on_screen(browser, axe, page):
    """What is wrong in a window, by mode."""
    for width, (theme, dark) in itertools.product(WIDTHS, THEMES.items()):
        mode = f"{page.stem}-{width}-{theme}"
        browser.show(page.as_uri(), width, 900, dark)
        browser.picture(page.with_name(f"{mode}.png"))
        yield from ((mode, each) for each in problems(browser, axe, page.as_uri(), width == WIDTHS[0]))


def on_paper(browser, axe, page):
    """What is wrong when it is printed, by mode. Paper is white in both themes."""
    for (paper, (width, height)), (theme, dark) in itertools.product(PAPERS.items(), THEMES.items()):
        mode = f"{page.stem}-{paper}-{theme}"
        browser.show(page.as_uri(), round(width / 25.4 * 96) - 106, 900, dark, "print")  # without the margins
        yield from ((mode, each) for each in problems(browser, axe, page.as_uri(), False))
        browser.show(page.as_uri(), 1280, 900, dark, "")
        pdf = page.with_name(f"{mode}.pdf")
        browser.print_to(pdf, width, height)
        subprocess.run(("pdftoppm", "-r", "60", "-png", pdf, pdf.with_suffix("")), check=True)


def look(browser, axe, page):
    if page.stat().st_size > MOST:
        yield page.stem, f"{page.stat().st_size} bytes, more than {MOST}"
    yield from on_screen(browser, axe, page)
    yield from on_paper(browser, axe, page)


def make_pictures(browser, pages, folder):
    for name, (page, width, theme, height, scale) in SHOWN.items():
        browser.show(next(each for each in pages if each.stem == page).as_uri(), width, 900, THEMES[theme])
        browser.picture(folder / f"{name}.png", height, scale)
    shutil.copy(pages[0].with_name("year-a4-light-1.png"), folder / "report-year-printed.png")


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--pictures", type=Path)
    parser.add_argument("axe", type=Path)
    parser.add_argument("pages", type=Path, nargs="+")
    asked = parser.parse_args()
    pages = [page.resolve() for page in asked.pages]
    browser = Browser()
    try:
        axe = asked.axe.read_text(encoding="utf-8")
        found = [each for page in pages for each in look(browser, axe, page)]
        if asked.pictures:
            make_pictures(browser, pages, asked.pictures)
    finally:
        browser.close()
    for mode, problem in found:
        print(f"{mode}: {problem}")
    print(f"{len(pages)} pages in {len(WIDTHS) * 2 + len(PAPERS) * 2} modes each: {len(found)} faults")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
