#pragma once

#include "import/sourceFile.h"

#include <QString>

#include <optional>

/// The memo file beside a table.
struct MemoFile {
    SourceFile file;
    bool isFoxPro = false; // else of dBase
};

/// Where the memo file beside a dBase or FoxPro table is; empty where there is none.
QString memoPathOf(const QString& tablePath);
bool isFoxProMemo(const QString& path);

/// The memos of a table. Without their file every memo is empty.
class DbfMemo {
public:
    explicit DbfMemo(const std::optional<MemoFile>& memos);
    /// Bytes of the memo that begins at a block; empty where the file does not hold it.
    QByteArray text(quint32 block) const;

private:
    QByteArray foxPro(quint32 block) const;
    QByteArray dBase(quint32 block) const;

    std::optional<MemoFile> m_memos;
    QByteArray m_file; // its bytes
};
