#pragma once

#include <QString>
#include <QStringList>

#include <exception>
#include <functional>
#include <memory>
#include <vector>

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

/// The rows of a source table, a text a cell, row by row. A null text is no value.
struct SourceRows {
    QStringList columns;
    std::vector<QString> cells;

    int rowCount() const { return columns.isEmpty() ? 0 : int(cells.size() / std::size_t(columns.size())); }
    const QString& cell(int row, int column) const {
        return cells[std::size_t(row) * std::size_t(columns.size()) + std::size_t(column)];
    }
    /// Takes off what is beyond whole rows, and rows without any value at the end.
    void trimEnd();
};

enum class SourceKind { Dbf, Txt, Xls, Mdb };

/// A foreign file as tables by name.
class ImportSource {
public:
    virtual ~ImportSource() = default;
    virtual QStringList tables() = 0;
    /// Throws ImportError.
    virtual SourceRows read(const QString& table) = 0;

    /// Called now and then by a reader that may be long at a table; may be unset.
    std::function<void()> signOfLife;
};

/// Opens a source; the reader of Access files runs in a process of its own. Throws ImportError.
std::unique_ptr<ImportSource> openImportSource(SourceKind kind, const QString& path);

// The readers by themselves, in this process.
std::unique_ptr<ImportSource> openTextSource(const QString& path);
std::unique_ptr<ImportSource> openDbfSource(const QString& path);
std::unique_ptr<ImportSource> openXlsSource(const QString& path);
/// The same from the bytes of a file.
std::unique_ptr<ImportSource> openXlsBytes(const QByteArray& file);
std::unique_ptr<ImportSource> openMdbSource(const QString& path);

/// Bare file name without its last four characters: the one table of a dbf or text source.
QString tableOfFile(const QString& path);

/// Whole contents of a file. Throws ImportError, also for one too large to be a source.
QByteArray contentsOf(const QString& path);

/// Chinese text in the encoding of Windows programs.
QString decodeGbk(const QByteArray& bytes);
bool isUtf8(const QByteArray& bytes);
