#pragma once

#include <QDate>
#include <QHash>
#include <QProcess>
#include <QStringList>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <map>

/// A workbook as another program reads it, without the library that wrote it.
class Workbook {
public:
    struct Cell {
        QString type; // "text", "number", "date" or "formula"
        QString text; // as it is stored, a date as its format shows it
    };
    using Sheet = std::map<QString, Cell>; // by place, as "B3"

    explicit Workbook(const QString& path)
        : m_path(path) {
        readFormats();
    }

    /// One part of the file, empty where there is none.
    QByteArray part(const QString& name) const {
        QProcess python;
        python.start(QStringLiteral("python3"),
                     {QStringLiteral("-c"),
                      QStringLiteral("import sys, zipfile\n"
                                     "book = zipfile.ZipFile(sys.argv[1])\n"
                                     "assert book.testzip() is None\n"
                                     "if sys.argv[2] in book.namelist():\n"
                                     "    sys.stdout.buffer.write(book.read(sys.argv[2]))\n"),
                      m_path, name});
        EXPECT_TRUE(python.waitForFinished()) << python.errorString().toStdString();
        EXPECT_EQ(python.exitCode(), 0) << python.readAllStandardError().toStdString();
        return python.readAllStandardOutput();
    }

    /// The cells of a sheet, the sheets from 1.
    Sheet sheet(int number = 1) const {
        Sheet cells;
        QXmlStreamReader xml(part(QStringLiteral("xl/worksheets/sheet%1.xml").arg(number)));
        QString place;
        QString type;
        int style = 0;
        while (!xml.atEnd()) {
            xml.readNext();
            if (!xml.isStartElement())
                continue;
            if (xml.name() == u"c") {
                place = xml.attributes().value(QStringLiteral("r")).toString();
                type = xml.attributes().value(QStringLiteral("t")).toString();
                style = xml.attributes().value(QStringLiteral("s")).toInt();
            } else if (xml.name() == u"f") {
                cells[place] = {QStringLiteral("formula"), xml.readElementText()};
            } else if (xml.name() == u"t") {
                cells[place] = {QStringLiteral("text"), xml.readElementText()};
            } else if (xml.name() == u"v") {
                EXPECT_TRUE(type.isEmpty() || type == u"n") << type.toStdString();
                cells[place] = numberCell(xml.readElementText(), style);
            }
        }
        EXPECT_FALSE(xml.hasError()) << xml.errorString().toStdString();
        return cells;
    }
    /// Widths of the columns, from the first.
    QList<double> widths(int number = 1) const {
        QList<double> found;
        QXmlStreamReader xml(part(QStringLiteral("xl/worksheets/sheet%1.xml").arg(number)));
        while (!xml.atEnd())
            if (xml.readNext() == QXmlStreamReader::StartElement && xml.name() == u"col")
                for (int i = xml.attributes().value(QStringLiteral("min")).toInt();
                     i <= xml.attributes().value(QStringLiteral("max")).toInt(); ++i)
                    found << xml.attributes().value(QStringLiteral("width")).toDouble();
        return found;
    }

private:
    /// A number is a date where its format says so.
    Cell numberCell(const QString& text, int style) const {
        QString format = m_formats.value(style);
        if (format.isEmpty())
            return {QStringLiteral("number"), text};
        format.remove(u'\\').replace(QStringLiteral("-m-"), QStringLiteral("-M-")).replace(u'h', u'H');
        const QDateTime moment = QDateTime(QDate(1899, 12, 30), QTime(0, 0), Qt::UTC)
                                     .addSecs(qint64(text.toDouble() * 86400 + 0.5));
        return {QStringLiteral("date"), moment.toString(format)};
    }
    /// The number formats of the book's own, by the styles of cells.
    void readFormats() {
        QXmlStreamReader xml(part(QStringLiteral("xl/styles.xml")));
        QHash<QString, QString> own;
        bool ofCells = false;
        while (!xml.atEnd()) {
            xml.readNext();
            if (xml.name() == u"cellXfs")
                ofCells = xml.isStartElement();
            else if (xml.isStartElement() && xml.name() == u"numFmt")
                own[xml.attributes().value(QStringLiteral("numFmtId")).toString()] =
                    xml.attributes().value(QStringLiteral("formatCode")).toString();
            else if (xml.isStartElement() && ofCells && xml.name() == u"xf")
                m_formats << own.value(xml.attributes().value(QStringLiteral("numFmtId")).toString());
        }
    }

    QString m_path;
    QStringList m_formats;
};
