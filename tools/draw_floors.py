#!/usr/bin/env python3
"""Draws docs/floors.svg from src/floors.txt.   draw_floors.py [--check]

A paragraph of the list is a card with a box for each folder; a card stands on the ones it includes, and the adapters of
the ports stand beside all that must not know them. With --check nothing is written: it ends with 1 when the picture is
out of date."""
import os
import re
import sys
from html import escape

sys.dont_write_bytecode = True
from floors import read_floors  # noqa: E402

TOP = os.path.dirname(os.path.dirname(os.path.abspath(__file__)))
PICTURE = os.path.join(TOP, 'docs/floors.svg')

WIDTH, MARGIN, GAP, PAD = 1280, 28, 12, 14
HOUSE = 730  # the width of the floors; the adapters have the rest
BOX, BOX_GAP, LINE = 28, 8, 17
FONT = "font-family=\"'Segoe UI', 'Helvetica Neue', 'DejaVu Sans', Arial, sans-serif\""
# Fill of the card, line of the card and its boxes.
COLOURS = [('#e6f0fb', '#5b8fc7'), ('#eef1f5', '#8a97a8'), ('#e9f5ea', '#6aa56f'), ('#fdf3e1', '#d3a04a'),
           ('#fbe9e7', '#cf7c6c'), ('#f1ebf8', '#9679bd'), ('#e8f4f4', '#5a9c9c')]


class Card:
    def __init__(self, name, words, folders):
        self.name, self.words, self.folders = name, words, folders
        top = os.path.commonpath(folders)
        self.labels = [os.path.basename(f) if f == top else os.path.relpath(f, top) if top else f for f in folders]
        self.is_adapter = all(re.match(r'platform/\w+/', f) for f in folders)

    def box_width(self):
        return max(text_width(label) for label in self.labels) + 16

    def columns_for(self, rows):
        return -(-len(self.labels) // rows)

    def least_width(self, rows):
        columns = self.columns_for(rows)
        return max(columns * self.box_width() + (columns - 1) * BOX_GAP, text_width(self.name, 15), 96) + 2 * PAD

    def fit(self, width, columns):
        """Settles how wide the card is, and with that how high it has to be."""
        self.width, self.columns = width, columns
        self.lines = wrapped(self.words, width - 2 * PAD)
        rows = self.columns_for(columns)
        self.height = 2 * PAD + LINE * (1 + len(self.lines)) + 8 + rows * BOX + (rows - 1) * BOX_GAP
        return self


def text_width(text, size=13):
    """Near enough for every sans serif face."""
    return size * sum(0.32 if c in "ijlrtf.,:;'/ " else 0.9 if c in 'mwMW' else 0.6 for c in text)


def wrapped(text, width):
    lines = ['']
    for word in text.split():
        longer = f'{lines[-1]} {word}'.strip()
        if lines[-1] and text_width(longer) > width:
            lines.append(word)
        else:
            lines[-1] = longer
    return lines


def read_cards(path):
    cards = []
    for paragraph in open(path).read().split('\n\n'):
        folders = re.findall(r'^([\w/]+):', paragraph, re.M)
        comment = re.search(r'^# ([^:]+): (.+)$', paragraph, re.M)
        if folders and not comment:
            sys.exit(f'{path}: the paragraph of {folders[0]} has no comment "# Name: words" above it')
        if folders:
            cards.append(Card(comment[1], comment[2], folders))
    return cards


def bands_of(cards, allowed):
    """Cards that include nothing of each other share a band."""
    bands = []
    for card in cards:
        below = set().union(*(allowed[f] for f in card.folders))
        if bands and not any(below & set(other.folders) for other in bands[-1]):
            bands[-1].append(card)
        else:
            bands.append([card])
    return bands


def fit_band(band, width):
    """As few rows of boxes as the width allows; what is left over goes to the columns alike."""
    room = width - GAP * (len(band) - 1)
    rows = next(r for r in range(1, 99) if sum(c.least_width(r) for c in band) <= room)
    columns = [card.columns_for(rows) for card in band]
    spare = (room - sum(card.least_width(rows) for card in band)) / sum(columns)
    for card, count in zip(band, columns):
        card.fit(card.least_width(rows) + spare * count, count)
    return max(card.height for card in band)


def text(x, y, words, size=13, weight=400, colour='#3b4252', anchor='start'):
    return (f'<text x="{x:.0f}" y="{y:.0f}" font-size="{size}" font-weight="{weight}" fill="{colour}" '
            f'text-anchor="{anchor}">{escape(words)}</text>')


def rectangle(x, y, width, height, radius, fill, line, extra=''):
    return (f'<rect x="{x:.0f}" y="{y:.0f}" width="{width:.0f}" height="{height:.0f}" rx="{radius}" fill="{fill}" '
            f'stroke="{line}"{extra}/>')


def draw_card(card, x, y, height, colours):
    fill, line = colours
    yield rectangle(x, y, card.width, height, 10, fill, line)
    yield text(x + PAD, y + PAD + 12, card.name, 15, 700, '#232936')
    for number, words in enumerate(card.lines):
        yield text(x + PAD, y + PAD + 12 + LINE * (number + 1), words, 13, 400, '#5a6475')
    width = (card.width - 2 * PAD - (card.columns - 1) * BOX_GAP) / card.columns
    top = y + PAD + LINE * (1 + len(card.lines)) + 8
    for number, label in enumerate(card.labels):
        left = x + PAD + number % card.columns * (width + BOX_GAP)
        at = top + number // card.columns * (BOX + BOX_GAP)
        yield rectangle(left, at, width, BOX, 6, '#ffffff', line)
        yield text(left + width / 2, at + 18.5, label, 13, 400, '#232936', 'middle')


def draw_bands(bands, heights, x, bottom, colours):
    """From the ground up."""
    for band, height, colour in zip(bands, heights, colours):
        bottom -= height
        left = x
        for card in band:
            yield from draw_card(card, left, bottom, height, colour)
            left += card.width + GAP
        bottom -= GAP


def picture():
    path = os.path.join(TOP, 'src/floors.txt')
    allowed, _ = read_floors(path)
    cards = read_cards(path)
    wing = [card for card in cards if card.is_adapter]
    roof = cards[-1]
    bands = bands_of([card for card in cards if not card.is_adapter and card is not roof], allowed)
    inner = WIDTH - 2 * MARGIN - HOUSE - 3 * GAP
    heights = [fit_band(band, HOUSE) for band in bands]
    wing_heights = [fit_band([card], inner) for card in wing]
    roof_height = fit_band([roof], WIDTH - 2 * MARGIN)
    head = PAD + 3 * LINE + 4  # of the wing, above its cards
    house = sum(heights) + GAP * (len(bands) - 1)
    beside = sum(wing_heights) + GAP * len(wing) + head
    whole = max(house, beside)
    heights = [height + (whole - house) / len(bands) for height in heights]
    wing_heights = [height + (whole - beside) / len(wing) for height in wing_heights]

    title = 70
    ground = title + roof_height + GAP + whole
    wing_x = MARGIN + HOUSE + GAP
    svg = [f'<svg xmlns="http://www.w3.org/2000/svg" width="{WIDTH}" height="{ground + MARGIN:.0f}" '
           f'viewBox="0 0 {WIDTH} {ground + MARGIN:.0f}" {FONT}>',
           '<!-- Drawn by tools/draw_floors.py from src/floors.txt. -->',
           rectangle(0, 0, WIDTH, ground + MARGIN, 0, '#fbfcfd', 'none'),
           text(MARGIN, 36, 'The floors of the house', 22, 700, '#232936'),
           text(MARGIN, 57, 'Every box is a folder. What a card includes stands below it or within it: src/floors.txt says what, '
                            'and a test compares every include.', 13, 400, '#5a6475')]
    svg += draw_bands([[roof]], [roof_height], MARGIN, title + roof_height, COLOURS[6:])
    svg += draw_bands(bands, heights, MARGIN, ground, COLOURS)
    svg.append(rectangle(wing_x, ground - whole, inner + 2 * GAP, whole, 10, '#f4f6f9', '#8a97a8',
                         ' stroke-dasharray="5 4"'))
    svg.append(text(wing_x + GAP, ground - whole + PAD + 12, 'Adapters of the ports', 15, 700, '#232936'))
    known = 'They include ports and text. Programs and tests know them, and replays the scripted ones.'
    for number, words in enumerate(wrapped(known, inner)):
        svg.append(text(wing_x + GAP, ground - whole + PAD + 12 + LINE * (number + 1), words, 13, 400, '#5a6475'))
    svg += draw_bands([[card] for card in wing], wing_heights, wing_x + GAP, ground - GAP, [COLOURS[0]] * len(wing))
    return '\n'.join(svg + ['</svg>', ''])


if __name__ == '__main__':
    drawn = picture()
    if '--check' not in sys.argv[1:]:
        open(PICTURE, 'w').write(drawn)
    elif not os.path.exists(PICTURE) or open(PICTURE).read() != drawn:
        sys.exit('docs/floors.svg is out of date: run tools/draw_floors.py')
