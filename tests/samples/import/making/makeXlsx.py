#!/usr/bin/python3
"""Makes the .xlsx and .csv samples and what a correct reader sees in them, beside this folder.

needs: python3-openpyxl, libreoffice-calc-nogui, libxlsxwriter-dev and a C compiler. The samples are kept as they were
made once; a later version of a writer may give other bytes.
"""
import datetime
import json
import pathlib
import shutil
import subprocess
import tempfile

import openpyxl
from openpyxl.utils.datetime import CALENDAR_MAC_1904

HERE = pathlib.Path(__file__).resolve().parent
SAMPLES = HERE.parent
EDGE = SAMPLES / "edge"


def office(source, ending, folder):
    """What LibreOffice makes of a file."""
    subprocess.run(["soffice", "--headless", f"-env:UserInstallation=file://{folder}/profile", "--convert-to", ending,
                    "--outdir", str(folder), str(source)], check=True, stdout=subprocess.DEVNULL)
    return pathlib.Path(folder) / (source.stem + "." + ending.split(":")[0])


def table(name, columns, rows):
    return {"name": name, "columns": [{"name": c, "type": "text"} for c in columns], "rows": rows}


def expect(path, kind, tables, **more):
    name = str(path.relative_to(SAMPLES))
    told = {"file": name, "kind": kind, "outcome": "import", **more, "tables": tables}
    out = SAMPLES / "expected" / (name + ".json")
    out.write_text(json.dumps(told, ensure_ascii=False, indent=1) + "\n", encoding="utf-8")


def as_elder(name, elder, kind):
    """The expectation of a file that holds what an elder one holds."""
    told = (SAMPLES / "expected" / (elder + ".json")).read_text(encoding="utf-8")
    told = told.replace(f'"file": "{elder}"', f'"file": "{name}"').replace(f'"kind": "{elder[-3:]}"', f'"kind": "{kind}"')
    (SAMPLES / "expected" / (name + ".json")).write_text(told, encoding="utf-8")


KINDS = ["编号", "数", "文字", "日期", "时刻", "对错", "空"]


def fill(sheet, top, left):
    """Every kind of cell, the table beginning further down and to the right; what a reader sees of them."""
    def put(row, column, value, form=None):
        cell = sheet.cell(top + row, left + column, value)
        if form:
            cell.number_format = form
    for i, name in enumerate(KINDS):
        put(0, i, name)
    put(1, 0, "0012")
    put(1, 1, 0.1 + 0.2)
    put(1, 2, "“引号” <b>&amp;</b>\n第二行")
    put(1, 3, datetime.date(2024, 3, 5))
    put(1, 4, datetime.datetime(2024, 3, 5, 13, 20, 5))
    put(1, 5, True)
    put(2, 0, 13800138000)
    put(2, 1, 1234567.5)
    put(2, 2, "  两端空白 ")
    put(2, 3, 45356, 'yyyy"年"m"月"d"日"')
    put(2, 4, 45356, '0.00"元/day"')
    put(2, 5, False)
    put(4, 0, "隔一行")
    put(4, 1, -1e-7)
    put(4, 2, "𠮷㐂")
    put(4, 3, 45356, "[$-804]aaaa;@")
    put(4, 6, "合并")
    sheet.merge_cells(start_row=top + 4, start_column=left + 4, end_row=top + 4, end_column=left + 5)
    return [["0012", "0.3", "“引号” <b>&amp;</b>\n第二行", "2024-3-5", "2024-3-5 13:20:05", "True", None],
            ["13800138000", "1234567.5", "  两端空白 ", "2024-3-5", "45356", "False", None],
            [None] * 7,
            ["隔一行", "-0.0000001", "𠮷㐂", "45356", None, None, "合并"]]


def make_openpyxl():
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = "各种格"
    rows = fill(sheet, 3, 3)
    hidden = book.create_sheet("藏起来的")
    hidden.sheet_state = "hidden"
    hidden.append(["甲", None, "丙"])
    hidden.append([1, 2, 3])
    book.create_sheet("空表")
    book.save(EDGE / "openpyxl.xlsx")
    tables = [table("各种格", KINDS, rows), table("藏起来的", ["甲", "F2", "丙"], [["1", "2", "3"]]),
              table("空表", [], [])]
    expect(EDGE / "openpyxl.xlsx", "xlsx", tables)


def make_1904():
    book = openpyxl.Workbook()
    book.epoch = CALENDAR_MAC_1904
    sheet = book.active
    sheet.title = "一九零四"
    sheet.append(["日期", "数"])
    sheet.append([datetime.date(2024, 3, 5), 43894])
    sheet.append([datetime.datetime(1904, 1, 1, 6, 0, 0), 0.25])
    book.save(EDGE / "openpyxl1904.xlsx")
    expect(EDGE / "openpyxl1904.xlsx", "xlsx", [table("一九零四", ["日期", "数"],
                                                      [["2024-3-5", "43894"], ["1904-1-1 6:00:00", "0.25"]])])


def make_office(folder):
    """Formulas with their stored results, by a program that works them out."""
    book = openpyxl.Workbook()
    sheet = book.active
    sheet.title = "算出来的"
    sheet.append(["数", "文字", "对错", "错", "日期", "原样"])
    sheet.append(["=1/4", '="甲"&"乙"', "=1>0", "=1/0", "=DATE(2024,3,5)", "纸"])
    sheet["E2"].number_format = "yyyy-mm-dd"
    sheet.append(["=SUM(1,2.5)", '=""', "=1<0", "=NA()", "=E2+1", 7])
    sheet["E3"].number_format = "yyyy-mm-dd"
    plain = pathlib.Path(folder) / "office.xlsx"
    book.save(plain)
    target = pathlib.Path(folder) / "out"
    target.mkdir()
    shutil.copy(office(plain, "xlsx", target), EDGE / "office.xlsx")
    expect(EDGE / "office.xlsx", "xlsx", [table("算出来的", ["数", "文字", "对错", "错", "日期", "原样"],
                                                [["0.25", "甲乙", "True", None, "2024-3-5", "纸"],
                                                 ["3.5", "", "False", None, "2024-3-6", "7"]])])


def make_writer(folder):
    program = pathlib.Path(folder) / "write"
    subprocess.run(["cc", "-o", str(program), str(HERE / "makeXlsx.c"), "-lxlsxwriter"], check=True)
    subprocess.run([str(program), str(EDGE / "writer.xlsx"), str(EDGE / "writerInline.xlsx")], check=True)
    columns = ["文字", "数", "日期", "公式", "对错"]
    rows = [["红色和粗体", "12.5", "2024-3-5", "25", "True"], ["a\rb", "0.1", "2024-3-5 6:30:00", "甲乙", "False"],
            ["尾", "1E+20", None, None, None]]
    for name in ("writer.xlsx", "writerInline.xlsx"):
        expect(EDGE / name, "xlsx", [table("写出来的", columns, rows)])


def make_main(folder):
    for name in ("customers", "orders", "products"):
        shutil.copy(office(SAMPLES / f"{name}.xls", "xlsx", folder), SAMPLES / f"{name}.xlsx")
        as_elder(f"{name}.xlsx", f"{name}.xls", "xlsx")
    text = (SAMPLES / "customers.txt").read_bytes().decode("gb18030")
    (SAMPLES / "customers.csv").write_bytes(text.encode("utf-8-sig"))
    as_elder("customers.csv", "customers.txt", "csv")
    rows = [["编号", "名称"], ["1", "甲,乙"], ["2", "丙;丁"], ["3", '戊"己']]
    for name, sign in (("semicolon", ";"), ("tab", "\t"), ("comma", ",")):
        def field(text):
            return '"' + text.replace('"', '""') + '"' if sign in text or '"' in text else text
        path = EDGE / f"{name}.csv"
        path.write_bytes("".join(sign.join(map(field, row)) + "\r\n" for row in rows).encode("gb18030"))
        expect(path, "csv", [table(name, rows[0], rows[1:])])


with tempfile.TemporaryDirectory() as scratch:
    make_openpyxl()
    make_1904()
    make_office(scratch)
    make_writer(scratch)
    make_main(scratch)
