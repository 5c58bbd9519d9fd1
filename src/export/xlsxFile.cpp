#include "export/xlsxFile.h"

#include "export/wholeBook.h"

#include <QFileInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QTemporaryDir>

#include <xlsxwriter.h>

#include <chrono>
#include <future>

#include <clocale>

namespace {

constexpr qint64 kDay = 86400; // seconds
constexpr qsizetype kLettersOfCell = 32767;

/// The library writes numbers as the locale says, and a workbook wants the point.
class PlainNumbers {
public:
    PlainNumbers()
        : m_plain(newlocale(LC_NUMERIC_MASK, "C", duplocale(LC_GLOBAL_LOCALE)))
        , m_before(uselocale(m_plain)) {}
    ~PlainNumbers() {
        uselocale(m_before);
        freelocale(m_plain);
    }
    PlainNumbers(const PlainNumbers&) = delete;
    PlainNumbers& operator=(const PlainNumbers&) = delete;

private:
    locale_t m_plain;
    locale_t m_before;
};

/// The text as a cell can hold it: not too long, and without signs that no workbook can have.
QByteArray cellText(QString text) {
    if (text.size() > kLettersOfCell)
        text = text.left(kLettersOfCell - 1) + u'…';
    for (QChar& sign : text)
        if (sign == QChar(0) || sign == QChar(0xFFFE) || sign == QChar(0xFFFF))
            sign = QChar::ReplacementCharacter;
    // What looks like the name of a sign is not to be read as that sign.
    static const QRegularExpression named(QStringLiteral("_(?=x[0-9A-Fa-f]{4}_)"));
    return text.replace(named, QStringLiteral("_x005F_")).toUtf8();
}

/// A workbook that is being written, a line at a time.
class Book {
public:
    Book(const QByteArray& path, const QByteArray& folder, const ExportTable& table, int linesOfSheet)
        : m_path(path)
        , m_folder(folder)
        , m_table(table)
        , m_linesOfSheet(linesOfSheet) {
        lxw_workbook_options options{LXW_TRUE, m_folder.data(), LXW_FALSE};
        m_book = workbook_new_opt(m_path.constData(), &options);
        m_title = format([](lxw_format* made) {
            format_set_bold(made);
            format_set_font_size(made, 16);
        });
        m_caption = format([](lxw_format* made) {
            format_set_bold(made);
            format_set_bottom(made, LXW_BORDER_THIN);
        });
        m_date = format([](lxw_format* made) { format_set_num_format(made, "yyyy\\-m\\-d"); });
        m_moment = format([](lxw_format* made) { format_set_num_format(made, "yyyy\\-m\\-d h:mm:ss"); });
        m_time = format([](lxw_format* made) { format_set_num_format(made, "h:mm:ss"); });
        addSheet();
    }
    ~Book() {
        if (m_book)
            lxw_workbook_free(m_book);
    }
    Book(const Book&) = delete;
    Book& operator=(const Book&) = delete;

    void writeRow(int row) {
        if (m_line >= m_linesOfSheet) {
            endSheet();
            addSheet();
        }
        for (int column = 0; column < columns(); ++column)
            writeCell(lxw_col_t(column), m_table.cell(row, column));
        ++m_line;
    }
    /// Puts the file together; false where it is not whole.
    bool close() {
        const PlainNumbers numbers;
        endSheet();
        const bool closed = workbook_close(std::exchange(m_book, nullptr)) == LXW_NO_ERROR;
        return m_written && closed && isWholeBook(m_path, m_rowBytes);
    }

private:
    int columns() const { return int(m_table.columns.size()); }

    lxw_format* format(void (*make)(lxw_format*)) {
        lxw_format* made = workbook_add_format(m_book);
        make(made);
        return made;
    }

    void addSheet() {
        const int number = int(m_rowBytes.size()) + 1;
        const QString name = number == 1 ? QStringLiteral("数据") : QStringLiteral("数据%1").arg(number);
        m_sheet = workbook_add_worksheet(m_book, name.toUtf8().constData());
        m_line = 0;
        if (number == 1)
            writeHead();
        for (int column = 0; column < columns(); ++column) {
            const ExportColumn& each = m_table.columns[std::size_t(column)];
            worksheet_set_column(m_sheet, lxw_col_t(column), lxw_col_t(column), each.width, nullptr);
            writeText(lxw_col_t(column), each.caption, m_caption);
        }
        m_captions = m_line++;
        worksheet_freeze_panes(m_sheet, lxw_row_t(m_line), 0);
        worksheet_repeat_rows(m_sheet, lxw_row_t(m_captions), lxw_row_t(m_captions));
        worksheet_set_paper(m_sheet, 9); // A4
        worksheet_fit_to_pages(m_sheet, 1, 0);
    }

    void writeHead() {
        if (!m_table.title.isEmpty()) {
            writeText(0, m_table.title, m_title);
            ++m_line;
        }
        for (qsizetype i = 0; i < m_table.head.size(); ++i)
            writeText(lxw_col_t(i), m_table.head[i], nullptr);
        if (!m_table.head.isEmpty())
            ++m_line;
    }

    void endSheet() {
        if (columns() > 0)
            worksheet_autofilter(m_sheet, lxw_row_t(m_captions), 0,
                                 lxw_row_t(std::max(m_captions, m_line - 1)), lxw_col_t(columns() - 1));
        // The last line is still held back, and the rows pass through a file of the library's own.
        lxw_worksheet_write_single_row(m_sheet);
        FILE* rows = m_sheet->optimize_tmpfile;
        m_written = m_written && rows && fflush(rows) == 0 && ferror(rows) == 0;
        m_rowBytes.push_back(rows ? ftell(rows) : 0);
    }

    void writeText(lxw_col_t column, const QString& text, lxw_format* look) {
        if (!text.isEmpty())
            worksheet_write_string(m_sheet, lxw_row_t(m_line), column, cellText(text).constData(), look);
    }

    void writeNumber(lxw_col_t column, double number, lxw_format* look) {
        worksheet_write_number(m_sheet, lxw_row_t(m_line), column, number, look);
    }

    void writeCell(lxw_col_t column, const CellValue& value) {
        if (const auto* number = std::get_if<double>(&value))
            writeNumber(column, *number, nullptr);
        else if (const auto* integer = std::get_if<qint32>(&value))
            writeNumber(column, *integer, nullptr);
        else if (const auto* moment = std::get_if<Moment>(&value))
            writeMoment(column, *moment);
        else
            writeText(column, fieldText(value), nullptr);
    }

    void writeMoment(lxw_col_t column, const Moment& moment) {
        // Workbooks count days from the same one, but with a 29th of February in 1900, and end with 9999.
        constexpr qint64 kFirst = 61 * kDay;
        constexpr qint64 kBehindLast = 2958466 * kDay;
        const bool timeAlone = moment.seconds >= 0 && moment.seconds < kDay;
        if (!timeAlone && (moment.seconds < kFirst || moment.seconds >= kBehindLast))
            return writeText(column, dateText(moment), nullptr);
        lxw_format* whole = moment.seconds % kDay == 0 ? m_date : m_moment;
        writeNumber(column, double(moment.seconds) / double(kDay), timeAlone ? m_time : whole);
    }

    const QByteArray m_path;
    QByteArray m_folder;
    const ExportTable& m_table;
    const int m_linesOfSheet;
    lxw_workbook* m_book = nullptr;
    lxw_worksheet* m_sheet = nullptr;
    lxw_format* m_title = nullptr;
    lxw_format* m_caption = nullptr;
    lxw_format* m_date = nullptr;
    lxw_format* m_moment = nullptr;
    lxw_format* m_time = nullptr;
    int m_line = 0; // of the sheet, the next one
    int m_captions = 0;
    bool m_written = true;
    std::vector<qint64> m_rowBytes; // of the sheets that have ended
};

/// Puts the book together beside the thread that shows the progress; false where it is not whole.
bool closeMeanwhile(Book& book, int rows, const ExportSteps& steps, bool& goesOn) {
    constexpr std::chrono::milliseconds kGlance(30);
    std::future<bool> closing = std::async(std::launch::async, [&book] { return book.close(); });
    while (closing.wait_for(kGlance) != std::future_status::ready)
        goesOn = (!steps || steps(rows)) && goesOn;
    return closing.get();
}

bool copyInto(QSaveFile& file, const QString& made) {
    constexpr qint64 kBlock = 1 << 20;
    QFile source(made);
    if (!source.open(QIODevice::ReadOnly))
        return false;
    while (!source.atEnd()) {
        const QByteArray block = source.read(kBlock);
        if (block.isEmpty() || file.write(block) != block.size())
            return false;
    }
    // What is still held back reaches the disk here, and commit() does not hear when that fails.
    return file.flush() && file.commit();
}

} // namespace

ExportEnd writeXlsx(const QString& path, const ExportTable& table, const ExportSteps& steps,
                    int linesOfSheet) {
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return ExportEnd::Failed;
    // What passes through files does so beside the target: the folder for passing files may be memory.
    const QTemporaryDir beside(QFileInfo(path).absoluteDir().filePath(QStringLiteral(".导出-XXXXXX")));
    if (!beside.isValid())
        return ExportEnd::Failed;
    const QString made = beside.filePath(QStringLiteral("book.xlsx"));
    const PlainNumbers numbers;
    Book book(QFile::encodeName(made), QFile::encodeName(beside.path()), table, linesOfSheet);
    for (int row = 0; row < table.rows; ++row) {
        book.writeRow(row);
        if (steps && isStep(row) && !steps(row + 1))
            return ExportEnd::Stopped;
    }
    bool goesOn = true;
    const bool whole = closeMeanwhile(book, table.rows, steps, goesOn);
    if (!goesOn)
        return ExportEnd::Stopped;
    return whole && copyInto(file, made) ? ExportEnd::Whole : ExportEnd::Failed;
}
