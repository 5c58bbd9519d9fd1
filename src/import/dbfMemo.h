#pragma once

#include <QByteArray>
#include <QString>

/// The memo file beside a dBase or FoxPro table. Without one every memo is empty.
class DbfMemo {
public:
    explicit DbfMemo(const QString& tablePath);
    /// Bytes of the memo that begins at a block; empty where the file does not hold it.
    QByteArray text(quint32 block) const;

private:
    QByteArray foxPro(quint32 block) const;
    QByteArray dBase(quint32 block) const;

    QByteArray m_file;
    bool m_isFoxPro = false;
};
