#pragma once

#include "import/dbfMemo.h"
#include "import/sourceFile.h"
#include "import/sourceRows.h"

#include <exception>
#include <optional>

/// A file that cannot be read as what its ending says, and why, in the user's words.
class ImportError : public std::exception {
public:
    explicit ImportError(QString text)
        : m_text(std::move(text))
        , m_what(m_text.toUtf8()) {}
    const QString& text() const { return m_text; }
    const char* what() const noexcept override { return m_what.constData(); }

private:
    QString m_text;
    QByteArray m_what;
};

/// Reads the tables of one foreign file. What it reads may be made to harm it: the program lets it work only
/// behind walls.
class TableReader {
public:
    virtual ~TableReader() = default;
    /// A file that is one table by itself has one without a name.
    virtual QStringList tables() { return {QString()}; }
    /// Throws ImportError, perhaps after rows that do not count then.
    virtual void read(const QString& table, RowSink& sink) = 0;
};

// The readers of the kinds, in this process. They throw ImportError.
std::unique_ptr<TableReader> textReader(const SourceFile& file);
std::unique_ptr<TableReader> dbfReader(const SourceFile& file, const std::optional<MemoFile>& memos = {});
std::unique_ptr<TableReader> xlsReader(const SourceFile& file);
std::unique_ptr<TableReader> xlsxReader(const SourceFile& file);
std::unique_ptr<TableReader> mdbReader(const SourceFile& file);

/// Loads what a reader would fetch from other files when it is at work, and keeps it.
void loadTextConverters();
/// The same for the Access file that will be read.
void loadMdbConverters(const SourceFile& file);

/// Chinese text in the encoding of Windows programs.
QString decodeGbk(const QByteArray& bytes);
