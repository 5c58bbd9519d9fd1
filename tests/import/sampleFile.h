#pragma once

#include "import/importSource.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

/// A sample file and what a correct reader sees in it.
struct SampleFile {
    QString name; // as in the expectation, "edge/..." for edge files
    QJsonObject expected;

    QString path() const { return QStringLiteral(SAMPLES "/import/") + name; }
    QString outcome() const { return expected[QStringLiteral("outcome")].toString(); }
    SourceKind kind() const {
        const QString kind = expected[QStringLiteral("kind")].toString();
        return kind == u"dbf"    ? SourceKind::Dbf
               : kind == u"xls"  ? SourceKind::Xls
               : kind == u"mdb"  ? SourceKind::Mdb
               : kind == u"xlsx" ? SourceKind::Xlsx
               : kind == u"csv"  ? SourceKind::Csv
                                 : SourceKind::Txt;
    }
    QJsonArray tables() const { return expected[QStringLiteral("tables")].toArray(); }
};

inline QJsonObject readJson(const QString& path) {
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    return QJsonDocument::fromJson(file.readAll()).object();
}

inline SampleFile sampleFile(const QString& name) {
    return {name, readJson(QStringLiteral(SAMPLES "/import/expected/") + name + QStringLiteral(".json"))};
}
