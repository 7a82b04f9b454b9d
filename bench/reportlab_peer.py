#!/usr/bin/python3
"""The peer of bench_engine: ReportLab drawing the same facility-invoice page (title, both address
blocks, the boxed amount, the framed 25-row table of Japanese names and amounts, an embedded
Japanese TrueType font), one page per billing facility.

Usage: /usr/bin/python3 reportlab_peer.py PAGES OUT.pdf
Prints one line: "reportlab pages=N seconds=S bytes=B".
"""
import random
import sys
import time

from reportlab.lib.pagesizes import A4
from reportlab.lib.units import mm
from reportlab.pdfbase import pdfmetrics
from reportlab.pdfbase.ttfonts import TTFont
from reportlab.pdfgen import canvas

GOTHIC = "/usr/share/fonts/opentype/ipaexfont-gothic/ipaexg.ttf"
MINCHO = "/usr/share/fonts/opentype/ipaexfont-mincho/ipaexm.ttf"
FAMILY = ["佐藤", "鈴木", "高橋", "田中", "伊藤", "渡辺", "山本", "中村", "小林", "加藤", "吉田", "山田"]
GIVEN = ["花子", "太郎", "一郎", "幸子", "美智子", "博", "清", "和子", "節子", "茂"]
COLUMNS = [0, 12, 82, 96, 124, 152, 186]  # mm from the left margin


def money(v):
    return "{:,}".format(v)


def page(c, n, rnd):
    H = A4[1]
    left = 12 * mm

    def y(v):  # mm from the top margin, to PDF points from the bottom
        return H - 12 * mm - v * mm

    def text(x, top, h, s, font="G", size=9, align="left", width=0):
        c.setFont(font, size)
        base = y(top + h / 2) - size * 0.35
        if align == "center":
            c.drawCentredString(left + (x + width / 2) * mm, base, s)
        elif align == "right":
            c.drawRightString(left + (x + width) * mm, base, s)
        else:
            c.drawString(left + x * mm, base, s)

    facility = "特別養護老人ホーム さくら苑 第%d" % n
    text(0, 0, 12, "請　求　書", "M", 24, "center", 186)
    c.setLineWidth(0.5 * mm)
    c.line(left + 63 * mm, y(12.5), left + 123 * mm, y(12.5))
    text(126, 15, 5, "発行日　2024年6月5日", align="right", width=60)
    text(0, 20, 5, "〒166-0001")
    text(0, 25, 5, "東京都杉並区阿佐谷北1-2-%d" % n)
    text(0, 30, 5, "さくらビル2F")
    text(0, 37, 8, facility, "M", 13)
    text(83, 37, 8, "御中", "M", 13)
    c.setLineWidth(0.3 * mm)
    c.line(left, y(45.5), left + 95 * mm, y(45.5))
    text(0, 49, 5, "2024年5月分　施術費")
    text(0, 54, 5, "下記のとおりご請求申し上げます。")
    text(108, 24, 6, "株式会社ほほえみ", "M", 11)
    text(108, 30, 4.5, "〒160-0022", size=8)
    text(108, 34.5, 4.5, "東京都新宿区新宿1-1-1", size=8)
    text(108, 41, 6, "ほほえみ鍼灸院", "M", 11)
    text(108, 47, 4.5, "〒167-0051", size=8)
    text(108, 51.5, 4.5, "東京都杉並区荻窪5-6-7", size=8)

    rows = []
    for r in range(25):
        if r < 20:
            rows.append(("さくら苑 %d号館" % r, rnd.randint(1, 30), rnd.randint(10000, 2000000), rnd.randint(1000, 200000), ""))
        else:
            rows.append(("さくら苑(自費)", 0, 0, rnd.randint(1000, 200000), rnd.choice(FAMILY) + " " + rnd.choice(GIVEN) + " 様"))
    total = sum(r[3] for r in rows)
    c.setLineWidth(0.6 * mm)
    c.rect(left, y(76), 95 * mm, 13 * mm)
    c.setFillGray(0.9)
    c.setLineWidth(0.3 * mm)
    c.rect(left, y(76), 30 * mm, 13 * mm, fill=1)
    c.setFillGray(0)
    text(0, 63, 13, "ご請求金額", align="center", width=30)
    text(32, 63, 13, "¥" + money(total) + "-", "G", 15, "right", 60)

    c.setFillGray(0.9)
    c.rect(left, y(88), 186 * mm, 7 * mm, fill=1)
    c.setFillGray(0)
    for x in COLUMNS[1:-1]:
        c.line(left + x * mm, y(81), left + x * mm, y(88))
    for title, x, w in [("項番", 0, 12), ("施術施設名", 12, 70), ("人数", 82, 14), ("施術合計", 96, 28), ("負担額", 124, 28), ("備考", 152, 34)]:
        text(x, 81, 7, title, align="center", width=w)
    c.setLineWidth(0.2 * mm)
    for r, (name, people, amount, share, remark) in enumerate(rows):
        top = 88 + r * 7
        c.rect(left, y(top + 7), 186 * mm, 7 * mm)
        for x in COLUMNS[1:-1]:
            c.line(left + x * mm, y(top), left + x * mm, y(top + 7))
        text(0, top, 7, str(r + 1), align="center", width=12)
        text(13.5, top, 7, name)
        if people:
            text(82, top, 7, money(people), align="right", width=12.5)
            text(96, top, 7, money(amount), align="right", width=26.5)
        text(124, top, 7, money(share), align="right", width=26.5)
        text(153.5, top, 7, remark, size=8)
    text(0, 272, 4, "1 / 1", align="center", width=186)
    c.showPage()


def main():
    pages = int(sys.argv[1])
    out = sys.argv[2]
    pdfmetrics.registerFont(TTFont("G", GOTHIC))
    pdfmetrics.registerFont(TTFont("M", MINCHO))
    rnd = random.Random(1)
    start = time.perf_counter()
    c = canvas.Canvas(out, pagesize=A4)
    for n in range(pages):
        page(c, n, rnd)
    c.save()
    seconds = time.perf_counter() - start
    import os

    print("reportlab pages=%d seconds=%.3f bytes=%d" % (pages, seconds, os.path.getsize(out)))


if __name__ == "__main__":
    main()
