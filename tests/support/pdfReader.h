#pragma once

#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QString>
#include <QStringList>
#include <QXmlStreamReader>

#include <vector>

/// A piece of text on a page of a PDF file, in millimetres from the page's top left corner.
struct PdfWord {
    double x = 0;
    double y = 0;
    QString text;
};

inline QByteArray outputOf(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

/// Every word of one page of a PDF with its place, as another program reads it.
inline std::vector<PdfWord> pdfWords(const QString& path, int page) {
    constexpr double millimetresPerPoint = 25.4 / 72;
    const QString number = QString::number(page);
    std::vector<PdfWord> words;
    QXmlStreamReader xml(
        outputOf(QStringLiteral("pdftotext"), {QStringLiteral("-bbox"), QStringLiteral("-f"), number,
                                               QStringLiteral("-l"), number, path, QStringLiteral("-")}));
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement)
            continue;
        if (xml.name() != u"word")
            continue;
        const auto place = xml.attributes();
        PdfWord word;
        word.x = place.value(QStringLiteral("xMin")).toDouble() * millimetresPerPoint;
        word.y = place.value(QStringLiteral("yMin")).toDouble() * millimetresPerPoint;
        word.text = xml.readElementText();
        words.push_back(word);
    }
    return words;
}

inline int pdfPages(const QString& path) {
    static const QRegularExpression pages(QStringLiteral("Pages:\\s+(\\d+)"));
    return pages.match(QString::fromUtf8(outputOf(QStringLiteral("pdfinfo"), {path}))).captured(1).toInt();
}

/// The text of one page, a blank between words.
inline QString pdfText(const QString& path, int page) {
    return QString::fromUtf8(
               outputOf(QStringLiteral("pdftotext"),
                        {QStringLiteral("-layout"), QStringLiteral("-f"), QString::number(page),
                         QStringLiteral("-l"), QString::number(page), path, QStringLiteral("-")}))
        .simplified();
}

/// The tables of a PDF that say which characters its glyphs stand for, one behind the other.
inline QByteArray pdfCharacterNames(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray pdf = file.readAll();
    QByteArray names;
    for (qsizetype at = pdf.indexOf("begincmap"); at >= 0; at = pdf.indexOf("begincmap", at + 1))
        names += pdf.mid(at, pdf.indexOf("endcmap", at) - at);
    return names;
}
