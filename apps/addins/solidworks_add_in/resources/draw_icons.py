#!/usr/bin/env python3
"""Draws the icon strips toolbar.bmp and toolbar_monochrome.bmp; run it in this folder after a change.

An icon is a list of layers, each a shape and a colour, painted in order. A shape is a function that returns
whether a point (x, y), each from 0 to 32, is inside it.
"""
import math
import struct

SIZE, SAMPLES = 32, 4
BACKGROUND = (192, 192, 192)  # the host shows this colour as transparent
BLUE, NAVY, SKY = (36, 104, 184), (22, 50, 92), (150, 196, 236)
GREEN, RED, ORANGE, YELLOW = (44, 140, 68), (200, 52, 44), (228, 128, 32), (250, 204, 84)
WHITE, GREY, DARK = (255, 255, 255), (136, 144, 152), (56, 64, 72)


def box(x0, y0, x1, y1):
    return lambda x, y: x0 <= x <= x1 and y0 <= y <= y1


def disc(cx, cy, r):
    return lambda x, y: math.hypot(x - cx, y - cy) <= r


def ring(cx, cy, r, width):
    return lambda x, y: abs(math.hypot(x - cx, y - cy) - r) <= width / 2


def arc(cx, cy, r, width, start, end):
    """A part of a ring, clockwise from `start` to `end` in degrees, 0 being to the right."""
    def inside(x, y):
        angle = math.degrees(math.atan2(y - cy, x - cx)) % 360
        return abs(math.hypot(x - cx, y - cy) - r) <= width / 2 and (angle - start) % 360 <= (end - start) % 360
    return inside


def polygon(*points):
    def inside(x, y):
        result = False
        for (xa, ya), (xb, yb) in zip(points, points[1:] + points[:1]):
            if (ya > y) != (yb > y) and x < (xb - xa) * (y - ya) / (yb - ya) + xa:
                result = not result
        return result
    return inside


def line(x0, y0, x1, y1, width):
    def inside(x, y):
        dx, dy = x1 - x0, y1 - y0
        t = max(0, min(1, ((x - x0) * dx + (y - y0) * dy) / (dx * dx + dy * dy)))
        return math.hypot(x - x0 - t * dx, y - y0 - t * dy) <= width / 2
    return inside


def any_of(*shapes):
    return lambda x, y: any(shape(x, y) for shape in shapes)


def arrow_right(x0, y, x1, width=3):
    return any_of(box(x0, y - width / 2, x1 - 4, y + width / 2),
                  polygon((x1 - 6, y - 5), (x1, y), (x1 - 6, y + 5)))


def arrow_down(x, y0, y1, width=3):
    return any_of(box(x - width / 2, y0, x + width / 2, y1 - 4),
                  polygon((x - 5, y1 - 6), (x, y1), (x + 5, y1 - 6)))


def check(x, y, size):
    return any_of(line(x, y, x + size * 0.4, y + size * 0.45, 2),
                  line(x + size * 0.4, y + size * 0.45, x + size, y - size * 0.45, 2))


def sheet(x0, y0, x1, y1):
    return [(box(x0, y0, x1, y1), NAVY), (box(x0 + 1.3, y0 + 1.3, x1 - 1.3, y1 - 1.3), WHITE)]


def rows(x0, x1, *ys):
    return [(line(x0, y, x1, y, 1.6), GREY) for y in ys]


def door(colour):
    return [(box(3, 3, 17, 29), NAVY), (box(5, 5, 15, 29), colour), (disc(12.6, 17.5, 1.3), NAVY)]


def folder(top):
    return [(polygon((2, top), (11, top), (14, top + 3), (28, top + 3), (28, 28), (2, 28)), ORANGE),
            (polygon((2, top + 7), (28, top + 7), (28, 28), (2, 28)), YELLOW)]


def magnifier(cx, cy, r):
    d = r * 0.7071
    return [(line(cx + d, cy + d, cx + d + 6, cy + d + 6, 3.6), DARK), (disc(cx, cy, r + 1), NAVY),
            (disc(cx, cy, r - 1.2), SKY)]


def cube(cx, cy, r, colours):
    dx = r * 0.9
    top = polygon((cx, cy - r), (cx + dx, cy - r / 2), (cx, cy), (cx - dx, cy - r / 2))
    left = polygon((cx - dx, cy - r / 2), (cx, cy), (cx, cy + r), (cx - dx, cy + r / 2))
    right = polygon((cx + dx, cy - r / 2), (cx, cy), (cx, cy + r), (cx + dx, cy + r / 2))
    return list(zip((top, left, right), colours))


def login():
    return door(SKY) + [(polygon((30, 13.5), (24, 13.5), (24, 10), (17, 16), (24, 22), (24, 18.5), (30, 18.5)), GREEN)]


def logout():
    return door(SKY) + [(polygon((18, 13.5), (24, 13.5), (24, 10), (31, 16), (24, 22), (24, 18.5), (18, 18.5)), RED)]


def data_selector():
    return folder(5) + magnifier(19, 19, 6)


def check_out_list():
    return sheet(5, 2, 27, 30) + rows(15, 23, 9, 16, 23) + [(check(8, y, 4.5), GREEN) for y in (9, 16, 23)]


def workflow():
    return [(line(7, 8, 24, 8, 2), DARK), (line(25, 8, 25, 24, 2), DARK), (line(8, 24, 24, 24, 2), DARK),
            (polygon((17, 4.5), (17, 11.5), (21, 8)), DARK), (polygon((16, 20.5), (16, 27.5), (12, 24)), DARK),
            (box(2, 4, 12, 12), GREEN), (box(20.5, 3, 30, 13), BLUE), (disc(7, 24, 5), ORANGE),
            (box(20.5, 20, 30, 28), BLUE)]


def code():
    bars = [(4, 2), (7.5, 1), (10, 3), (14.5, 1), (17, 2), (20.5, 1), (23, 3), (27.5, 1)]
    return [(box(1.5, 4, 30.5, 28), WHITE)] + [(box(x, 6, x + w, 22), DARK) for x, w in bars] + \
        [(box(x, 24, x + 2, 26), BLUE) for x in (4, 9, 14, 19, 24)]


def query():
    return magnifier(13, 13, 9.5) + [(arc(13, 11, 3.4, 2, 180, 90), NAVY), (line(13, 14.4, 13, 15.6, 2), NAVY),
                                     (disc(13, 18.6, 1.3), NAVY)]


def tray():
    return (any_of(box(4, 20, 7, 29), box(25, 20, 28, 29), box(4, 26, 28, 29)), NAVY)


def import_current():
    return sheet(10, 2, 22, 15) + [tray(), (arrow_down(16, 9, 24, 4), GREEN)]


def import_lot():
    return sheet(3, 2, 12, 13) + sheet(20, 2, 29, 13) + sheet(11, 2, 21, 13) + \
        [tray(), (arrow_down(11, 12, 24), GREEN), (arrow_down(21, 12, 24), GREEN)]


def create_material():
    plus = any_of(box(19, 23, 30, 26.5), box(22.8, 19.2, 26.2, 30.3))
    return cube(14, 14, 12, (SKY, BLUE, NAVY)) + [(disc(24.5, 24.7, 7.3), WHITE), (plus, GREEN)]


def temporary_material():
    return cube(14, 14, 12, (WHITE, (214, 220, 226), GREY)) + \
        [(disc(23.5, 23.5, 8), NAVY), (disc(23.5, 23.5, 6.4), WHITE), (line(23.5, 19, 23.5, 23.5, 1.8), NAVY),
         (line(23.5, 23.5, 27, 25, 1.8), NAVY)]


def tasks():
    return [(box(4, 4, 28, 30), ORANGE), (box(7, 7, 25, 28), WHITE), (box(11, 2, 21, 7), NAVY),
            (check(9.5, 14, 6), GREEN)] + rows(18, 23, 14) + [(ring(12, 22.5, 2.4, 1.6), BLUE)] + rows(18, 23, 22.5)


def backfill():
    return cube(9, 10, 8, (SKY, BLUE, NAVY)) + sheet(15, 12, 29, 30) + rows(18, 26, 21, 25.5) + \
        [(arc(15, 16, 9, 3, 270, 340), ORANGE), (polygon((18.5, 12.5), (28.5, 12.5), (23.5, 18.5)), ORANGE)]


def change_item():
    return sheet(3, 2, 22, 28) + rows(7, 18, 8, 12.5, 17) + \
        [(polygon((27, 12), (31, 16), (19, 28), (14, 29.5), (15.5, 24)), ORANGE),
         (polygon((27, 12), (31, 16), (28.6, 18.4), (24.6, 14.4)), RED),
         (polygon((14, 29.5), (15, 26), (17.5, 28.5)), DARK)]


def spare_part():
    teeth = [line(16 - 13 * math.cos(a), 16 - 13 * math.sin(a), 16 + 13 * math.cos(a), 16 + 13 * math.sin(a), 5.5)
             for a in (0, math.pi / 4, math.pi / 2, math.pi * 3 / 4)]
    return [(any_of(*teeth), GREY), (disc(16, 16, 10.5), GREY), (disc(16, 16, 4.5), WHITE)]


def spare_link():
    return [(ring(11, 16, 6.5, 3.4), BLUE), (ring(21, 16, 6.5, 3.4), NAVY), (arc(11, 16, 6.5, 3.4, 310, 20), BLUE)]


# In the order of "ImageListIndex" in View.json. The last two are spare, for future items.
ICONS = (login, logout, data_selector, check_out_list, workflow, code, query, import_current, import_lot,
         create_material, temporary_material, tasks, backfill, change_item, spare_part, spare_link)


def grey(colour):
    level = round(0.299 * colour[0] + 0.587 * colour[1] + 0.114 * colour[2])
    return (level, level, level)


def pixel(layers, column, row, paint):
    total = [0, 0, 0]
    for sub_row in range(SAMPLES):
        for sub_column in range(SAMPLES):
            x, y = column + (sub_column + 0.5) / SAMPLES, row + (sub_row + 0.5) / SAMPLES
            hit = next((colour for shape, colour in reversed(layers) if shape(x, y)), None)
            for channel, value in enumerate(BACKGROUND if hit is None else paint(hit)):
                total[channel] += value
    return [round(value / SAMPLES ** 2) for value in total]


def write_strip(path, paint):
    icons = [icon() for icon in ICONS]
    pixels = bytearray()
    for row in reversed(range(SIZE)):  # a bitmap begins with its lowest row; a pixel is blue, green, red
        for layers in icons:
            for column in range(SIZE):
                pixels += bytes(reversed(pixel(layers, column, row, paint)))
    offset = 14 + 40
    header = struct.pack('<2sIHHI', b'BM', offset + len(pixels), 0, 0, offset)
    info = struct.pack('<IiiHHIIiiII', 40, SIZE * len(icons), SIZE, 1, 24, 0, len(pixels), 0, 0, 0, 0)
    with open(path, 'wb') as file:
        file.write(header + info + pixels)


write_strip('toolbar.bmp', lambda colour: colour)
write_strip('toolbar_monochrome.bmp', grey)
