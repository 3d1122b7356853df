#!/usr/bin/env python3
"""Writes zelkam_test.ttf, whose metrics are round numbers on every machine.

Each glyph is half an em wide, the ascent is three quarters of an em and the descent one quarter:
at 16 points a letter is 8 wide and a line 16 high. Letters are drawn as plain boxes; the Hebrew
ones are lower, so that a picture tells which script stands where. Needs python3-fonttools; only
run again to change the font.
"""
import os

from fontTools.fontBuilder import FontBuilder
from fontTools.pens.ttGlyphPen import TTGlyphPen

UNITS = 1024
ADVANCE = UNITS // 2


def box(top):
    pen = TTGlyphPen(None)
    pen.moveTo((64, 0))
    pen.lineTo((64, top))
    pen.lineTo((448, top))
    pen.lineTo((448, 0))
    pen.closePath()
    return pen.glyph()


def main():
    latin = list(range(0x21, 0x7F))
    hebrew = list(range(0x5D0, 0x5EB))
    glyphs = {".notdef": box(640), "space": TTGlyphPen(None).glyph(), "ellipsis": box(128)}
    characters = {0x20: "space", 0x2026: "ellipsis"}
    for code in latin + hebrew:
        name = f"uni{code:04X}"
        glyphs[name] = box(640 if code in latin else 320)
        characters[code] = name

    font = FontBuilder(UNITS, isTTF=True)
    font.setupGlyphOrder(list(glyphs))
    font.setupCharacterMap(characters)
    font.setupGlyf(glyphs)
    font.setupHorizontalMetrics({name: (ADVANCE, 0) for name in glyphs})
    font.setupHorizontalHeader(ascent=768, descent=-256, lineGap=0)
    font.setupOS2(sTypoAscender=768, sTypoDescender=-256, sTypoLineGap=0, usWinAscent=768,
                  usWinDescent=256, fsSelection=0x40)
    font.setupNameTable({"familyName": "Zelkam Test", "styleName": "Regular"})
    font.setupPost()
    font.updateHead(created=0, modified=0)
    font.save(os.path.join(os.path.dirname(os.path.abspath(__file__)), "zelkam_test.ttf"))


main()
