/* Writes the same small workbook twice, with a table of shared texts and with texts in their cells; called by makeXlsx.py. */
#include <xlsxwriter.h>

static void fill(lxw_workbook* book, int inlined) {
    lxw_worksheet* sheet = workbook_add_worksheet(book, "写出来的");
    lxw_format* bold = workbook_add_format(book);
    lxw_format* red = workbook_add_format(book);
    lxw_format* day = workbook_add_format(book);
    lxw_format* moment = workbook_add_format(book);
    lxw_datetime first = {2024, 3, 5, 0, 0, 0};
    lxw_datetime second = {2024, 3, 5, 6, 30, 0};
    const char* names[] = {"文字", "数", "日期", "公式", "对错"};
    lxw_col_t i;
    format_set_bold(bold);
    format_set_font_color(red, LXW_COLOR_RED);
    format_set_num_format(day, "[$-804]yyyy\\-m\\-d;@");
    format_set_num_format(moment, "yyyy/m/d h:mm");
    for (i = 0; i < 5; ++i)
        worksheet_write_string(sheet, 0, i, names[i], NULL);
    if (inlined) {
        worksheet_write_string(sheet, 1, 0, "红色和粗体", NULL);
    } else {
        lxw_rich_string_tuple one = {red, "红色"};
        lxw_rich_string_tuple two = {NULL, "和"};
        lxw_rich_string_tuple three = {bold, "粗体"};
        lxw_rich_string_tuple* runs[] = {&one, &two, &three, NULL};
        worksheet_write_rich_string(sheet, 1, 0, runs, NULL);
    }
    worksheet_write_number(sheet, 1, 1, 12.5, NULL);
    worksheet_write_datetime(sheet, 1, 2, &first, day);
    worksheet_write_formula_num(sheet, 1, 3, "=B2*2", NULL, 25);
    worksheet_write_boolean(sheet, 1, 4, 1, NULL);
    worksheet_write_string(sheet, 2, 0, "a_x000D_b", NULL);
    worksheet_write_number(sheet, 2, 1, 0.1, NULL);
    worksheet_write_datetime(sheet, 2, 2, &second, moment);
    worksheet_write_formula_str(sheet, 2, 3, "=\"甲\"&\"乙\"", NULL, "甲乙");
    worksheet_write_boolean(sheet, 2, 4, 0, NULL);
    worksheet_write_string(sheet, 3, 0, "尾", NULL);
    worksheet_write_number(sheet, 3, 1, 1e20, NULL);
    worksheet_write_blank(sheet, 3, 2, day);
}

int main(int argc, char** argv) {
    lxw_workbook_options options = {LXW_TRUE, NULL, LXW_FALSE};
    lxw_workbook* book;
    if (argc != 3)
        return 2;
    book = workbook_new(argv[1]);
    fill(book, 0);
    if (workbook_close(book) != LXW_NO_ERROR)
        return 1;
    book = workbook_new_opt(argv[2], &options);
    fill(book, 1);
    return workbook_close(book) == LXW_NO_ERROR ? 0 : 1;
}
