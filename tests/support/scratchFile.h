#pragma once

#include "recordset/connection.h"
#include "recordset/recordset.h"

#include <QFile>
#include <QTemporaryDir>

#include <memory>

/// A database file of its own in a folder that goes with the object.
class ScratchFile {
public:
    explicit ScratchFile(const QString& schema = {}) {
        QFile file(path());
        if (!file.open(QIODevice::WriteOnly))
            qFatal("no scratch file");
        file.close();
        m_connection = std::make_unique<Connection>(path());
        if (!schema.isEmpty())
            m_connection->execute(schema);
    }

    QString path() const { return m_folder.filePath(QStringLiteral("scratch.mdb")); }
    Connection& connection() { return *m_connection; }

    RecordsetPtr open(const QString& source) {
        auto recordset = std::make_shared<Recordset>(*m_connection);
        recordset->Open(source);
        return recordset;
    }

    /// One column of a query, joined by ",", read by a statement of the storage engine itself.
    QString stored(const QString& sql) {
        QStringList texts;
        Statement statement = m_connection->prepare(sql);
        while (statement.step())
            texts << (statement.isNull(0) ? QStringLiteral("Null") : statement.text(0));
        return texts.join(u',');
    }

    void run(const QString& source) { runStatement(*m_connection, source); }

private:
    QTemporaryDir m_folder;
    std::unique_ptr<Connection> m_connection;
};

/// The values of one field over the whole view, joined by ",". Leaves the position.
inline QString column(const RecordsetPtr& recordset, const QString& field) {
    QStringList texts;
    const int index = recordset->fieldIndex(field);
    for (int i = 0; i < recordset->RecordCount(); ++i) {
        const CellValue value = recordset->valueAt(i, index);
        texts << (isNull(value) ? QStringLiteral("Null") : toText(value));
    }
    return texts.join(u',');
}
