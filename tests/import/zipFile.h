#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>

#include <utility>
#include <vector>
#include <zip.h>

/// The parts of a ZIP archive by name, in their order.
using ZipContent = std::vector<std::pair<QByteArray, QByteArray>>;

/// Writes an archive; false where that failed.
inline bool writeZip(const QString& path, const ZipContent& content, int method = ZIP_CM_DEFLATE) {
    QFile::remove(path);
    zip_t* archive = zip_open(path.toUtf8().constData(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
    if (!archive)
        return false;
    for (const auto& [name, bytes] : content) {
        zip_source_t* source = zip_source_buffer(archive, bytes.constData(), zip_uint64_t(bytes.size()), 0);
        const zip_int64_t index = zip_file_add(archive, name.constData(), source, ZIP_FL_ENC_UTF_8);
        if (index < 0 || zip_set_file_compression(archive, zip_uint64_t(index), method, 0) != 0)
            return false;
    }
    return zip_close(archive) == 0;
}

inline ZipContent readZip(const QString& path) {
    ZipContent content;
    zip_t* archive = zip_open(path.toUtf8().constData(), ZIP_RDONLY, nullptr);
    for (zip_int64_t i = 0; archive && i < zip_get_num_entries(archive, 0); ++i) {
        zip_stat_t told;
        zip_file_t* part = zip_fopen_index(archive, zip_uint64_t(i), 0);
        if (zip_stat_index(archive, zip_uint64_t(i), 0, &told) != 0 || !part)
            continue;
        QByteArray bytes(qsizetype(told.size), '\0');
        bytes.truncate(qsizetype(std::max<zip_int64_t>(0, zip_fread(part, bytes.data(), told.size))));
        zip_fclose(part);
        content.emplace_back(told.name, bytes);
    }
    if (archive)
        zip_discard(archive);
    return content;
}

/// A workbook of one sheet "s" with these rows (the inside of sheetData), and what else is asked for.
struct XlsxParts {
    QByteArray rows;
    QByteArray strings = {}; // the inside of sst
    QByteArray styles = {};  // the inside of styleSheet
    QByteArray properties = {};
    QByteArray sheetTarget = "worksheets/sheet1.xml";
    QByteArray beforeSheet = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>";

    ZipContent content() const {
        const QByteArray main = "http://schemas.openxmlformats.org/spreadsheetml/2006/main";
        const QByteArray relations = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
        const QByteArray package = "http://schemas.openxmlformats.org/package/2006/relationships";
        const auto relation = [&](const char* id, const char* kind, const QByteArray& target) {
            return "<Relationship Id=\"" + QByteArray(id) + "\" Type=\"" + relations + '/' + kind +
                   "\" Target=\"" + target + "\"/>";
        };
        return {{"_rels/.rels", "<Relationships xmlns=\"" + package + "\">" +
                                    relation("r1", "officeDocument", "xl/workbook.xml") + "</Relationships>"},
                {"xl/workbook.xml",
                 "<workbook xmlns=\"" + main + "\" xmlns:r=\"" + relations + "\"><workbookPr " + properties +
                     "/><sheets><sheet name=\"s\" sheetId=\"1\" r:id=\"r1\"/>" + "</sheets></workbook>"},
                {"xl/_rels/workbook.xml.rels",
                 "<Relationships xmlns=\"" + package + "\">" + relation("r1", "worksheet", sheetTarget) +
                     relation("r2", "styles", "styles.xml") +
                     relation("r3", "sharedStrings", "/xl/sharedStrings.xml") + "</Relationships>"},
                {"xl/styles.xml", "<styleSheet xmlns=\"" + main + "\">" + styles + "</styleSheet>"},
                {"xl/sharedStrings.xml", "<sst xmlns=\"" + main + "\">" + strings + "</sst>"},
                {"xl/worksheets/sheet1.xml", beforeSheet + "<worksheet xmlns=\"" + main + "\"><sheetData>" +
                                                 rows + "</sheetData></worksheet>"}};
    }
};
